// QNCPUInfo: its fixed answers and its one line of output.
#include <MRCommon/system/QNCPUInfo.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

struct WithoutProcessor : QNCPUInfo {
    WithoutProcessor() { logicalPerPackage = 0; }
    int vendor() const { return vendorCode; }
};

} // namespace

TEST(QNCPUInfo, ReturnsFixedAnswers) {
    testing::internal::CaptureStdout();
    QNCPUInfo const& info = QNCPUInfo::instance();
    EXPECT_EQ(&info, &QNCPUInfo::instance());
    EXPECT_FALSE(info.isMTCPU());
    EXPECT_EQ(info.numLogicalPerPackage(), 1u);
    EXPECT_EQ(info.numCoresPerPackage(), 1u);
    EXPECT_EQ(info.totalLogicalProcessors(), 0u);
    EXPECT_EQ(info.numProcessingPackages(), 0u);
    EXPECT_EQ(info.getAPIC_ID(), 0u);
    EXPECT_EQ(info.printAPICInfo(), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(QNCPUInfo, PrintsALineIfThereIsNoProcessor) {
    WithoutProcessor const info;
    testing::internal::CaptureStdout();
    EXPECT_EQ(info.numCoresPerPackage(), 0u);
    EXPECT_EQ(info.printAPICInfo(), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "else\nelse\n");
}

TEST(QNCPUInfo, MatchesNoVendor) { EXPECT_EQ(WithoutProcessor().vendor(), 0); }

static_assert(!std::is_copy_constructible_v<QNCPUInfo> && !std::is_copy_assignable_v<QNCPUInfo>);
