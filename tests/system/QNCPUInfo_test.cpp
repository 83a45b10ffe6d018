// QNCPUInfo: its fixed answers and its one line of output.
#include <MRCommon/system/QNCPUInfo.h>

#include <gtest/gtest.h>

namespace {

struct WithoutProcessor : QNCPUInfo {
    WithoutProcessor() { logicalPerPackage = 0; }
    int vendor() const { return vendorCode; }
};

} // namespace

TEST(QNCPUInfo, GivesFixedAnswers) {
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

TEST(QNCPUInfo, PrintsALineWhereThereIsNoProcessor) {
    WithoutProcessor const info;
    testing::internal::CaptureStdout();
    EXPECT_EQ(info.numCoresPerPackage(), 0u);
    EXPECT_EQ(info.printAPICInfo(), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "else\nelse\n");
    EXPECT_EQ(info.vendor(), 0) << "no vendor is ever found";
}
