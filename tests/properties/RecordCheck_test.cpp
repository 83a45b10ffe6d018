// RecordCheck agrees with reading: what it calls good is read whole, what it refuses is not.
#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/properties/RecordCheck.h>
#include <MRCommon/streams/StreamEncoding.h>

#include "examples/WorkSpaceVersion.h"
#include "support/Allocations.h"
#include "support/GoldenRecords.h"
#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <memory>
#include <random>
#include <string>

using namespace quarn;

namespace {

/// A FILE in memory, which has no descriptor.
class MemoryFile {
public:
    explicit MemoryFile(Bytes& content) : file_(fmemopen(content.data(), content.size(), "rb")) {}
    ~MemoryFile() { std::fclose(file_); }
    MemoryFile(MemoryFile const&) = delete;
    MemoryFile& operator=(MemoryFile const&) = delete;
    operator std::FILE*() const { return file_; }

private:
    std::FILE* file_;
};

std::unique_ptr<Ppty> make(std::string const& className) {
    return std::unique_ptr<Ppty>(static_cast<Ppty*>(QN_MetaClassBase::find(className.c_str())->metaNew()));
}

/// A record on one of the two stream kinds, or a variant's.
template <class Stream> struct PropertyRecord {
    std::unique_ptr<Ppty> ppty;
    RecordCheck check(Stream& stream) const { return checkRecord(*ppty, stream); }
    void read(Stream& stream) const { ppty->readFrom(stream); }
};

struct VariantRecord {
    ItemVariant variant;
    RecordCheck check(FileStreamRaw& stream) const { return checkVariantRecord(stream); }
    void read(FileStreamRaw& stream) { variant.readFrom(stream); }
};

template <class Stream, class Record, class Act>
void withRecord(Record record, std::FILE* file, Act const& act) {
    Stream stream(file);
    act(record, stream);
}

/// Calls `act(record, stream)` for what the file's name says.
template <class Act> void withRecord(GoldenRecord const& golden, std::FILE* file, Act const& act) {
    if (golden.className() == "ItemVariant")
        withRecord<FileStreamRaw>(VariantRecord(), file, act);
    else if (golden.isRaw())
        withRecord<FileStreamRaw>(PropertyRecord<FileStreamRaw>{make(golden.className())}, file, act);
    else
        withRecord<FileStreamEndian>(PropertyRecord<FileStreamEndian>{make(golden.className())}, file, act);
}

/// Returns whether every byte was delivered, without asking for more than the file's bytes account for: 16 bytes of
/// memory for a string, which takes at least 4 in the file.
template <class Record, class Stream> bool readsWhole(Record& record, Stream& stream, std::size_t size) {
    AllocationLimit const limit(4 * size + 64);
    try {
        record.read(stream);
    } catch (std::bad_alloc const&) {
        return false;
    }
    return !stream.failed();
}

/// Expects what must hold for any bytes at all, and returns whether the record is good.
bool isGoodAsReadingFinds(GoldenRecord const& golden, std::FILE* file, std::size_t size,
                          std::string const& what) {
    bool isGood = false;
    withRecord(golden, file, [&](auto& record, auto& stream) {
        RecordCheck const check = record.check(stream);
        isGood = check.good();
        ASSERT_EQ(std::ftell(file), 0) << what;
        ASSERT_EQ(check.good(), check.message().empty() && check.field.empty() && check.size == check.offset)
            << what;
        bool const isWhole = readsWhole(record, stream, size);
        if (check.reason == RecordCheck::Unterminated || check.reason == RecordCheck::UnknownTag) return;
        ASSERT_EQ(check.good(), isWhole) << what << ": " << check.message();
        if (isWhole) {
            ASSERT_EQ(static_cast<unsigned long long>(std::ftell(file)), check.offset) << what;
        }
    });
    return isGood;
}

RecordCheck checkedRaw(char const* className, Bytes const& record) {
    TempFile file(record);
    FileStreamRaw stream(file);
    return checkRecord(*make(className), stream);
}

RecordCheck checkedEndian(char const* className, Bytes const& record) {
    TempFile file(record);
    FileStreamEndian stream(file);
    return checkRecord(*make(className), stream);
}

RecordCheck checkedVariant(Bytes const& record) {
    TempFile file(record);
    FileStreamRaw stream(file);
    return checkVariantRecord(stream);
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
        withRecord(golden, file, [&](auto& record, auto& stream) {
            RecordCheck const check = record.check(stream);
            if (golden.has("ItemVariant-13")) return expectFault(check, RecordCheck::UnknownTag, "tag", 3);
            EXPECT_TRUE(check.good()) << golden.fileName << ": " << check.message();
            EXPECT_EQ(check.size, golden.record.size()) << golden.fileName;
            EXPECT_EQ(check.offset, golden.record.size() + 3) << golden.fileName;
            EXPECT_EQ(std::ftell(file), 3) << golden.fileName;
        });
    }
}

TEST(RecordCheck, AgreesWithReadingOnRecordsCutAtEveryByte) {
    for (GoldenRecord const& golden : goldenRecords()) {
        WorkSpaceVersion const version(golden.workSpaceVersion());
        for (std::size_t length = 0; length < golden.record.size(); ++length) {
            TempFile file(Bytes(golden.record.begin(), golden.record.begin() + static_cast<long>(length)));
            EXPECT_FALSE(isGoodAsReadingFinds(golden, file, length, golden.fileName + " cut"));
        }
    }
}

TEST(RecordCheck, AgreesWithReadingOnRecordsDamagedAtRandom) {
    std::mt19937 random(11);
    auto const below = [&](std::size_t limit) { return random() % limit; };
    int good = 0, bad = 0;
    for (GoldenRecord const& golden : goldenRecords()) {
        WorkSpaceVersion const version(golden.workSpaceVersion());
        for (int i = 0; i < 1000 && !HasFatalFailure(); ++i) {
            Bytes damaged = golden.record;
            for (std::size_t n = 1 + below(4); n != 0; --n)
                damaged[below(damaged.size())] = static_cast<unsigned char>(below(2) ? below(8) : below(256));
            if (below(4) == 0) damaged.resize(below(damaged.size()) + 1);
            MemoryFile const file(damaged);
            ++(isGoodAsReadingFinds(golden, file, damaged.size(), golden.fileName + " damaged") ? good : bad);
        }
    }
    EXPECT_GT(good, 10000);
    EXPECT_GT(bad, 10000);
}

TEST(RecordCheck, JudgesRecordsAlikeWhereverTheBufferOfTheFileEnds) {
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::tmpfile(), &std::fclose);
    ASSERT_NE(file, nullptr);
    FileStreamRaw stream(file.get());
    constexpr unsigned int count = 700; // several buffers, and records of many sizes
    for (unsigned int i = 0; i < count; ++i)
        PptyString(std::string(i % 37, 'n').c_str(), std::string(i % 411, 'v').c_str()).writeTo(stream);
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
        ASSERT_EQ(check.size, 10 + i % 37 + i % 411);
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

TEST(RecordCheck, AgreesWithReadingAfterACharacterWasPushedBack) {
    TempFile file(hex("02000000 6100 00000000"));
    FileStreamRaw stream(file);
    std::fgetc(file);
    std::ungetc(5, file); // a name that is too long, unless the file itself is looked at
    PptyInt ppty;
    bool const isGood = checkRecord(ppty, stream).good();
    ppty.readFrom(stream);
    EXPECT_NE(isGood, stream.failed());
}

TEST(RecordCheck, NamesTheFirstFaultyField) {
    using R = RecordCheck;
    Bytes const named = hex("02000000 6100");
    auto const after = [&](char const* digits) {
        Bytes record = named;
        for (unsigned char const byte : hex(digits)) record.push_back(byte);
        return record;
    };
    expectFault(checkedRaw("PptyInt", {}), R::EndsEarly, "name", 0);
    expectFault(checkedRaw("PptyInt", hex("FFFFFFFF")), R::SizeBeyondFile, "name", 0);
    expectFault(checkedRaw("PptyInt", hex("02000000 6161 00000000")), R::Unterminated, "name", 0);
    expectFault(checkedRaw("PptyInt", after("000000")), R::EndsEarly, "value", 6);
    expectFault(checkedRaw("PptyString", after("03000000 6100")), R::SizeBeyondFile, "value", 6);
    expectFault(checkedRaw("RIntPpty", after("00000000")), R::EndsEarly, "maximum", 10);
    expectFault(checkedRaw("RIntPpty", after("00000000 00000000")), R::EndsEarly, "minimum", 14);
    expectFault(checkedRaw("PptyArrayString", after("02000000 00000000")), R::SizeBeyondFile, "value", 6);
    expectFault(checkedRaw("PptyArrayString", after("02000000 00000000 01000000 61")), R::Unterminated,
                "value[1]", 14);
    Bytes const choice = after("02000000 00000000 14000000 01000000 00000000 02000000 00000000");
    expectFault(checkedRaw("PptyEnum", choice), R::SizeBeyondFile, "values", 26);
    expectFault(checkedRaw("PptyEnum", Bytes(choice.begin(), choice.begin() + 17)), R::EndsEarly, "index",
                14);
    expectFault(checkedEndian("PptyArrayString", hex("00000002 6100 00000001 00000002 6161")),
                R::Unterminated, "value[0]", 10);
    EXPECT_TRUE(checkedEndian("PptyInt", hex("00000002 6100")).good()) << "the name alone";
    expectFault(checkedVariant(hex("0D000000")), R::UnknownTag, "tag", 0);
    expectFault(checkedVariant(hex("0D0000")), R::EndsEarly, "tag", 0);
    expectFault(checkedVariant(hex("0C000000 00000000 000000")), R::EndsEarly, "index", 8);
    EXPECT_TRUE(checkedVariant(hex("00000000")).good());

    EXPECT_EQ(checkedRaw("PptyInt", after("00")).message(), "value at byte 6: the data ends inside it");
}

TEST(RecordCheck, JudgesEnumerationsByTheVersionOfTheWorkSpace) {
    Bytes const record = hex("02000000 6100 00000000 00000000 00000000 00000000");
    EXPECT_EQ(checkedRaw("PptyEnum", record).size, 22u) << "a layout number of 0, then the old layout";
    WorkSpaceVersion const version(5087);
    EXPECT_EQ(checkedRaw("PptyEnum", record).size, 18u);
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

TEST(CheckableRecord, IsNotNeededForTheFieldsOfTheBase) {
    Bytes const record = hex("02000000 6100 00000000 00000000 00000000 0E010000");
    EXPECT_EQ(checked<FileStreamRaw>(Calm(), record).size, 18u);
    EXPECT_EQ(checked<FileStreamRaw>(Silent(), record).size, 6u);
}
