// The two stream kinds, the encodings on them, and the integer functions below: bytes and the sizes of calls.
#include <MRCommon/streams/StreamEncoding.h>

#include "support/Allocations.h"
#include "support/TempFile.h"

#include <gtest/gtest.h>

using namespace quarn;
using Calls = std::vector<std::size_t>;

namespace {

template <class Stream> Bytes written(Array<QN_String> const& list, Calls* calls = nullptr) {
    TempFile file;
    RecordingStream<Stream> stream(file);
    encoding::writeStrArray(stream, list);
    EXPECT_FALSE(stream.failed());
    if (calls != nullptr) *calls = stream.calls;
    return file.bytes();
}

} // namespace

TEST(FileIo, WritesIntegersBigEndian) {
    TempFile file;
    unsigned int u[2] = {258, 0xFFFFFFFE};
    int i[2] = {-2, 1};
    EXPECT_EQ(WriteUInt(u, 2, file), 2u);
    EXPECT_EQ(WriteInt(i, 2, file), 2u);
    EXPECT_EQ(file.bytes(), hex("00000102 FFFFFFFE FFFFFFFE 00000001"));
    file.rewind();
    unsigned int readU[2] = {};
    int readI[3] = {0, 0, 77};
    EXPECT_EQ(ReadUInt(readU, 2, file), 2u);
    EXPECT_EQ(ReadInt(readI, 3, file), 2u) << "the file ends behind the second";
    EXPECT_EQ(readU[0], 258u);
    EXPECT_EQ(readU[1], 0xFFFFFFFEu);
    EXPECT_TRUE(readI[0] == -2 && readI[1] == 1 && readI[2] == 77);
}

TEST(FileIo, UsesTheCurrentStreamWhereNoneIsGiven) {
    unsigned int value = 7;
    char text[3] = "ab";
    EXPECT_EQ(CurrentStream(), nullptr);
    EXPECT_EQ(WriteUInt(&value, 1, nullptr) + ReadUInt(&value, 1, nullptr), 0u);
    EXPECT_EQ(WriteBuffer(text, 1, 2, nullptr) + ReadBuffer(text, 1, 2, nullptr), 0u);
    EXPECT_EQ(value, 7u);
    TempFile file;
    SetCurrentStream(file);
    EXPECT_EQ(WriteUInt(&value, 1, nullptr), 1u);
    EXPECT_EQ(WriteBuffer(text, 2, 1, nullptr), 1u) << "elements, not bytes";
    FileStreamEndian nowhere;
    encoding::writeU32(nowhere, 9); // integers of a stream without a FILE go to the current stream
    SetCurrentStream(nullptr);
    EXPECT_EQ(file.bytes(), hex("00000007 6162 00000009"));
}

TEST(Streams, KeepTheFileFirstAndTellWhetherTheyFailed) {
    TempFile file(hex("0102"));
    FileStreamRaw raw(file);
    std::FILE* first = nullptr;
    std::memcpy(&first, reinterpret_cast<char const*>(&raw) + sizeof(void*), sizeof first);
    EXPECT_EQ(first, raw.file());
    unsigned char buffer[4] = {9, 9, 9, 9};
    EXPECT_EQ(raw.read(buffer, 2), 2u);
    EXPECT_FALSE(raw.failed());
    EXPECT_EQ(raw.read(buffer, 4), 0u);
    EXPECT_TRUE(raw.failed());
    FileStreamEndian none;
    EXPECT_FALSE(none.failed());
    EXPECT_EQ(none.write("x", 1), 0u);
    EXPECT_TRUE(none.failed());
}

TEST(Encoding, OfStringListsOnBothKinds) {
    Array<QN_String> list{"", "bc"};
    QN_String none;
    none.reserve(0, false);
    list.push_back(none);
    Calls calls;
    EXPECT_EQ(written<FileStreamRaw>(list, &calls), hex("03000000 01000000 00 03000000 626300 00000000"));
    EXPECT_EQ(calls, (Calls{4, 4, 1, 4, 3, 4})) << "a length is a write of its own, a text one write";
    EXPECT_EQ(written<FileStreamEndian>(list, &calls), hex("00000003 00000001 00 00000003 626300 00000000"));
    EXPECT_EQ(calls, (Calls{1, 3})) << "integers pass by the stream's own write";
    EXPECT_EQ(written<FileStreamRaw>({}), hex("00000000"));
}

TEST(Encoding, ReadsIntoExistingBuffers) {
    Bytes const record = written<FileStreamRaw>({"ab", "c"});
    TempFile file(record);
    FileStreamRaw stream(file);
    Array<QN_String> list{"a longer text", "second", "third"};
    char const* const buffer = list[0].data();
    AllocationCounter count;
    stream >> list;
    EXPECT_EQ(count.made(), 0);
    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(list.capacity(), 3u);
    EXPECT_EQ(list[0].data(), buffer);
    EXPECT_EQ(list[0].size(), 3u);
    EXPECT_EQ(list[0].capacity(), 14u);
    EXPECT_STREQ(list[1].c_str(), "c");
    EXPECT_FALSE(stream.failed());
}

TEST(Encoding, OfAFileThatEndsEarlyGivesEmptyOnes) {
    TempFile file(hex("00000002 00000002 6100"));
    FileStreamEndian stream(file);
    Array<QN_String> list{"x", "y", "z"};
    Array<QN_String> more{"x"};
    stream >> list >> more;
    EXPECT_EQ(list.size(), 2u);
    EXPECT_STREQ(list[0].c_str(), "a");
    EXPECT_EQ(list[1].size(), 0u);
    EXPECT_EQ(more.size(), 0u);
    EXPECT_TRUE(stream.failed());
}
