// Every kind and layout against files kept in tests/properties/golden, made without the library.
#include <MRCommon/properties/MetaClasses.h>

#include "examples/WorkSpaceVersion.h"
#include "properties/Records.h"
#include "support/Allocations.h"
#include "support/GoldenRecords.h"
#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace quarn;

namespace {

std::vector<GoldenRecord> goldenRecords(bool variants) {
    std::vector<GoldenRecord> records;
    for (GoldenRecord& golden : ::goldenRecords())
        if ((golden.className() == "ItemVariant") == variants) records.push_back(std::move(golden));
    EXPECT_GE(records.size(), variants ? 14u : 50u);
    return records;
}

/// A property of the class in the file name, made by the registry.
class Made {
public:
    explicit Made(GoldenRecord const& golden)
        : metaClass_(QN_MetaClassBase::find(golden.className().c_str())), object_(metaClass_->metaNew()) {}
    ~Made() { metaClass_->metaDelete(object_); }
    Made(Made const&) = delete;
    Made& operator=(Made const&) = delete;
    Ppty* operator->() const { return static_cast<Ppty*>(object_); }
    Ppty& operator*() const { return *static_cast<Ppty*>(object_); }

private:
    QN_MetaClassBase const* metaClass_;
    void* object_;
};

/// Returns false for a short read.
bool read(Ppty& ppty, std::FILE* file, bool isRaw) {
    FileStreamRaw raw(file);
    FileStreamEndian endian(file);
    isRaw ? ppty.readFrom(raw) : ppty.readFrom(endian);
    return isRaw ? !raw.failed() : !endian.failed();
}

} // namespace

TEST(Golden, RecordsAreReadAndRewrittenToTheSameBytes) {
    for (GoldenRecord const& golden : goldenRecords(false)) {
        WorkSpaceVersion const version(golden.workSpaceVersion());
        Made ppty(golden);
        TempFile file(golden.record);
        EXPECT_TRUE(read(*ppty, file, golden.isRaw())) << golden.fileName;
        EXPECT_EQ(std::ftell(file), static_cast<long>(golden.record.size())) << golden.fileName;
        if (golden.isOldLayout()) continue; // it is read, never written
        EXPECT_EQ(golden.isRaw() ? recordOf(*ppty) : recordOf<FileStreamEndian>(*ppty), golden.record)
            << golden.fileName;
    }
}

TEST(Golden, VariantsAreReadAndRewrittenToTheSameBytes) {
    for (GoldenRecord const& golden : goldenRecords(true)) {
        TempFile file(golden.record);
        FileStreamRaw stream(file);
        ItemVariant variant;
        variant.readFrom(stream);
        EXPECT_EQ(recordOf(variant), golden.record) << golden.fileName;
    }
}

TEST(Golden, RereadingARecordOfTheSameSizesAllocatesNothing) {
    for (GoldenRecord const& golden : goldenRecords(false)) {
        WorkSpaceVersion const version(golden.workSpaceVersion());
        Made ppty(golden);
        TempFile file(golden.record);
        read(*ppty, file, golden.isRaw());
        file.rewind();
        AllocationCounter count;
        read(*ppty, file, golden.isRaw());
        EXPECT_EQ(count.made(), 0) << golden.fileName;
    }
}

TEST(Ppty, TakesVariantsOfEveryKindAndKeepsItsValueIfOneHasNone) {
    std::vector<GoldenRecord> const records = goldenRecords(false);
    for (GoldenRecord const& record : records) {
        Made const property(record);
        std::string const before = property->toStr().c_str();
        for (GoldenRecord const& other : records) {
            ItemVariant none = Made(other)->getVariantValue();
            none.deleteValue();
            property->setValue(none);
            EXPECT_EQ(property->toStr(), before.c_str()) << record.fileName << " from " << other.fileName;
            bool const isTaken = Made(record)->setValue(Made(other)->getVariantValue());
            EXPECT_TRUE(isTaken || record.className() == "PptyEnum")
                << record.fileName << " from " << other.fileName;
        }
    }
}
