// RecordCheck agrees with reading: what it calls good is read whole, what it refuses is not.
#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/properties/RecordCheck.h>
#include <MRCommon/streams/StreamEncoding.h>

#include "examples/WorkSpaceVersion.h"
#include "support/Allocations.h"
#include "support/Cases.h"
#include "support/GoldenRecords.h"
#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

using namespace quarn;

namespace {

std::unique_ptr<Ppty> make(std::string const& className) {
    return std::unique_ptr<Ppty>(static_cast<Ppty*>(QN_MetaClassBase::find(className.c_str())->metaNew()));
}

/// Checks a record of a class on one of the stream kinds, or a variant's.
RecordCheck checked(std::string const& className, bool isRaw, std::FILE* file) {
    FileStreamRaw raw(file);
    FileStreamEndian endian(file);
    if (className == "ItemVariant") return checkVariantRecord(raw);
    return isRaw ? checkRecord(*make(className), raw) : checkRecord(*make(className), endian);
}

void expectFault(RecordCheck const& check, RecordCheck::Reason reason, char const* field,
                 unsigned long long offset) {
    EXPECT_EQ(check.reason, reason) << check.message();
    EXPECT_EQ(check.field, field);
    EXPECT_EQ(check.offset, offset) << check.field;
    EXPECT_EQ(check.size, 0u);
    EXPECT_FALSE(check.good());
}

} // namespace

TEST(RecordCheck, CallsEveryGoldenRecordGoodAndMeasuresIt) {
    for (GoldenRecord const& golden : goldenRecords()) {
        WorkSpaceVersion const version(golden.workSpaceVersion());
        TempFile file(hex("AA BB CC"));
        std::fseek(file, 0, SEEK_END);
        std::fwrite(golden.record.data(), 1, golden.record.size(), file);
        std::fwrite("follows", 1, 7, file);
        std::fseek(file, 3, SEEK_SET);
        RecordCheck const check = checked(golden.className(), golden.isRaw(), file);
        EXPECT_EQ(std::ftell(file), 3) << golden.fileName;
        if (golden.has("ItemVariant-13")) {
            expectFault(check, RecordCheck::UnknownTag, "tag", 3);
            continue;
        }
        EXPECT_TRUE(check.good() && check.message().empty()) << golden.fileName << ": " << check.message();
        EXPECT_EQ(check.size, golden.record.size()) << golden.fileName;
        EXPECT_EQ(check.offset, golden.record.size() + 3) << golden.fileName;
    }
}

TEST(RecordCheck, JudgesRecordsAlikeWhereverTheBufferOfTheFileEnds) {
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::tmpfile(), &std::fclose);
    ASSERT_NE(file, nullptr);
    FileStreamRaw stream(file.get());
    constexpr unsigned int count = 700; // several buffers, and records of many sizes
    for (unsigned int i = 0; i < count; ++i)
        PptyString(std::string(i % 37, 'n').c_str(), std::string(i * i % 3001, 'v').c_str()).writeTo(stream);
    encoding::writeStr(stream, QN_String("last"));
    encoding::writeU32(stream, 1000); // a value that is missing
    std::rewind(file.get());
    PptyString pattern;
    for (unsigned int i = 0; i < count; ++i) {
        long const start = std::ftell(file.get());
        RecordCheck const check = checkRecord(pattern, stream);
        ASSERT_TRUE(check.good()) << i << ": " << check.message();
        ASSERT_EQ(std::ftell(file.get()), start);
        pattern.readFrom(stream);
        ASSERT_EQ(static_cast<unsigned long long>(std::ftell(file.get())), check.offset);
        ASSERT_EQ(check.size, 10 + i % 37 + i * i % 3001);
    }
    long const start = std::ftell(file.get());
    for (int again = 0; again < 2; ++again) { // with bytes read ahead, and without
        RecordCheck const check = checkRecord(pattern, stream);
        EXPECT_EQ(check.reason, RecordCheck::SizeBeyondFile);
        EXPECT_EQ(check.field, "value");
        EXPECT_EQ(check.offset, static_cast<unsigned long long>(start) + 9);
        EXPECT_EQ(std::ftell(file.get()), start);
        EXPECT_FALSE(stream.failed());
    }
}

TEST(RecordCheck, LooksAtTheFileRatherThanAtAPushedBackCharacter) {
    TempFile file(hex("02000000 6100 00000000"));
    FileStreamRaw stream(file);
    std::fgetc(file);
    std::ungetc(5, file); // a name that is too long
    PptyInt ppty;
    EXPECT_TRUE(checkRecord(ppty, stream).good());
    ppty.readFrom(stream);
    EXPECT_FALSE(stream.failed());
}

TEST(RecordCheck, NamesTheFirstFaultyField) {
    char const* const reasons[] = {"Good", "EndsEarly", "SizeBeyondFile", "Unterminated", "UnknownTag"};
    for (Case const& c : casesOf("NamesTheFirstFaultyField")) {
        RecordCheck const check = checked(c[0], c[1] == "raw", TempFile(hex(c[2])));
        EXPECT_EQ(reasons[check.reason], c[3]) << c.place << ": " << check.message();
        EXPECT_EQ(check.field, c[4]) << c.place;
        EXPECT_EQ(check.offset, c.count(5)) << c.place;
        EXPECT_EQ(check.size, check.good() ? check.offset : 0) << c.place;
        EXPECT_EQ(check.good(), check.message().empty()) << c.place;
    }
    EXPECT_EQ(checked("PptyInt", true, TempFile(hex("02000000 6100 00"))).message(),
              "value at byte 6: the data ends inside it");
}

TEST(RecordCheck, AcceptsALongFieldThatEndsWithTheFile) {
    Bytes record = hex("02000000 6100 02000000 00000000 00000000 00000000 2C010000");
    record.resize(record.size() + 300 * sizeof(int));
    EXPECT_EQ(checked("PptyEnum", true, TempFile(record)).size, record.size());
}

TEST(RecordCheck, JudgesEnumerationsByTheVersionOfTheWorkSpace) {
    Bytes const record = hex("02000000 6100 00000000 00000000 00000000 00000000");
    auto const sizeOf = [](Bytes const& bytes) { return checked("PptyEnum", true, TempFile(bytes)).size; };
    EXPECT_EQ(sizeOf(record), 22u) << "a layout number of 0, then the old layout";
    WorkSpaceVersion const version(5087);
    EXPECT_EQ(sizeOf(record), 18u);
}

TEST(RecordCheck, ReadsNothingWhereThePositionIsUnknown) {
    FileStreamRaw none;
    EXPECT_EQ(checkRecord(PptyInt(), none).reason, RecordCheck::NotSeekable);
    int ends[2] = {};
    ASSERT_EQ(pipe(ends), 0);
    std::FILE* const in = fdopen(ends[0], "rb");
    ASSERT_EQ(write(ends[1], "\1", 1), 1);
    FileStreamRaw stream(in);
    EXPECT_EQ(checkVariantRecord(stream).reason, RecordCheck::NotSeekable);
    EXPECT_FALSE(checkVariantRecord(stream).message().empty());
    EXPECT_EQ(std::fgetc(in), 1);
    EXPECT_FALSE(stream.failed());
    std::fclose(in);
    close(ends[1]);
}

TEST(RecordCheck, ChangesNeitherPropertyNorStream) {
    PptyArrayString const pattern("layers", {"sea", "foam"});
    TempFile file(hex("02000000 6100 01000000 0000F000"));
    FileStreamRaw stream(file);
    AllocationCounter count;
    EXPECT_EQ(checkRecord(pattern, stream).field, "value[0]");
    EXPECT_EQ(count.made(), 0) << "neither for the size nor for the fault";
    EXPECT_EQ(pattern.getVariantValue().as<Array<QN_String>>()->size(), 2u);
    EXPECT_FALSE(stream.failed());
}

// ---------------------------------------------------------------------------
// Classes of a host's own

namespace {

/// A wind with a bearing and a list of gusts, stored on both stream kinds.
class Wind : public RFloatPpty, public CheckableRecord {
public:
    using RFloatPpty::RFloatPpty;
    unsigned int getType() const override { return 77; } // says nothing about the base

    void checkRawFields(RecordFields& fields) const override { checkFields(fields); }
    void checkEndianFields(RecordFields& fields) const override { checkFields(fields); }

private:
    static void checkFields(RecordFields& fields) {
        unsigned int gusts = 0;
        fields.i32("bearing");
        fields.u32("gusts", &gusts);
        for (unsigned int i = 0; i < gusts && fields.good(); ++i) fields.bytes("gust", 8);
        EXPECT_EQ(fields.bytes("nothing", 0), fields.good());
    }
};

/// Adds a list of places to the record.
class Storm : public Wind {
    void checkRawFields(RecordFields& fields) const override {
        Wind::checkRawFields(fields);
        fields.strArray("places");
        fields.block("strengths", 2);
    }
};

/// Derives from an abstract class that stores a name alone.
class Silent : public BasePpty<float, Ppty::TYPE_FLOAT> {
public:
    Silent() : BasePpty("silent") {}
    Ppty* clone() const override { return nullptr; }
    Ppty* cloneWithNewName(QN_String const&) const override { return nullptr; }
    QN_String toStr() const override { return {}; }
};

/// Has more fields than it declares.
struct Calm : RFloatPpty {};

/// Cannot find out its fields.
struct Eye : Wind {
    void checkRawFields(RecordFields& fields) const override {
        fields.i32("bearing");
        throw std::runtime_error("nothing moves");
    }
};

template <class Stream> RecordCheck checked(Ppty const& pattern, Bytes const& record) {
    TempFile file(record);
    Stream stream(file);
    return checkRecord(pattern, stream);
}

} // namespace

TEST(CheckableRecord, HasItsFieldsCheckedAfterThoseOfItsBase) {
    Bytes const raw = hex("02000000 6100 00000000 00000000 00000000 0E010000 01000000 0000000000000000");
    Bytes const endian = hex("00000002 6100 0000010E 00000002 0000000000000000");
    EXPECT_EQ(checked<FileStreamRaw>(Wind(), raw).size, raw.size());
    expectFault(checked<FileStreamEndian>(Wind(), endian), RecordCheck::EndsEarly, "gust", 22);
    expectFault(checked<FileStreamRaw>(Storm(), raw), RecordCheck::EndsEarly, "places", 34);
    Bytes more = raw;
    for (unsigned char const byte : hex("01000000 00000000 02000000 000000")) more.push_back(byte);
    expectFault(checked<FileStreamRaw>(Storm(), more), RecordCheck::SizeBeyondFile, "strengths", 42);
    more.push_back(0);
    EXPECT_EQ(checked<FileStreamRaw>(Storm(), more).size, more.size());
}

TEST(RecordCheck, AcceptsLongStringsAndLists) {
    Bytes text = hex("02000000 6100 50C30000");
    text.resize(text.size() + 50000);
    EXPECT_EQ(checked<FileStreamRaw>(PptyString("a"), text).size, text.size());
    Bytes record = hex("02000000 6100 2C010000");
    for (int i = 0; i < 300; ++i) record.insert(record.end(), {1, 0, 0, 0, 0});
    EXPECT_EQ(checked<FileStreamRaw>(PptyArrayString("a"), record).size, record.size());
}

TEST(CheckableRecord, MayThrow) {
    TempFile file(hex("02000000 6100 00000000 00000000 00000000 0E010000"));
    FileStreamRaw stream(file);
    EXPECT_THROW(checkRecord(Eye(), stream), std::runtime_error);
    EXPECT_EQ(std::ftell(file), 0);
}

TEST(CheckableRecord, IsNotNeededForTheFieldsOfTheBase) {
    Bytes const record = hex("02000000 6100 00000000 00000000 00000000 0E010000");
    EXPECT_EQ(checked<FileStreamRaw>(Calm(), record).size, 18u);
    EXPECT_EQ(checked<FileStreamRaw>(Silent(), record).size, 6u);
}
