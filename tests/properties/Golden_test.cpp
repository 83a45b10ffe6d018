// Every kind and layout against files kept in tests/properties/golden, made without the library.
#include <MRCommon/properties/MetaClasses.h>

#include "examples/WorkSpaceVersion.h"
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
bool read(Ppty& ppty, std::FILE* file, bool raw) {
    if (raw) {
        FileStreamRaw stream(file);
        ppty.readFrom(stream);
        return !stream.failed();
    }
    FileStreamEndian stream(file);
    ppty.readFrom(stream);
    return !stream.failed();
}

Bytes written(Ppty const& ppty, bool raw) {
    TempFile file;
    if (raw) {
        FileStreamRaw stream(file);
        ppty.writeTo(stream);
    } else {
        FileStreamEndian stream(file);
        ppty.writeTo(stream);
    }
    return file.bytes();
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
        EXPECT_EQ(written(*ppty, golden.isRaw()), golden.record) << golden.fileName;
    }
}

TEST(Golden, VariantsAreReadAndRewrittenToTheSameBytes) {
    for (GoldenRecord const& golden : goldenRecords(true)) {
        TempFile in(golden.record), out;
        FileStreamRaw from(in), to(out);
        ItemVariant variant;
        variant.readFrom(from);
        variant.writeTo(to);
        EXPECT_EQ(out.bytes(), golden.record) << golden.fileName;
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
