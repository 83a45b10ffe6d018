// StreamEncoding: the bytes of both stream kinds, the sizes of calls, and files that end early.
#include <MRCommon/streams/StreamEncoding.h>

#include "support/Allocations.h"
#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

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

TEST(StreamEncoding, WritesStringListsOnBothKinds) {
    Array<QN_String> list{"", "bc"};
    QN_String none;
    none.reserve(0, false);
    list.push_back(none);
    Calls calls;
    EXPECT_EQ(written<FileStreamRaw>(list, &calls), hex("03000000 01000000 00 03000000 626300 00000000"));
    EXPECT_EQ(calls, (Calls{4, 4, 1, 4, 3, 4})) << "a length is a write of its own, a text one write";
    EXPECT_EQ(written<FileStreamEndian>(list, &calls), hex("00000003 00000001 00 00000003 626300 00000000"));
    EXPECT_EQ(calls, (Calls{1, 3})) << "integers bypass the stream's own write";
    EXPECT_EQ(written<FileStreamRaw>({}), hex("00000000"));
}

TEST(StreamEncoding, ReadsIntoExistingBuffers) {
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

TEST(StreamEncoding, ReadsEmptyStringsFromAFileThatEndsEarly) {
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

TEST(StreamEncoding, ReadsZeroIntegersAfterTheEnd) {
    TempFile file(hex("0102"));
    FileStreamRaw raw(file);
    FileStreamEndian endian(file);
    EXPECT_EQ(encoding::readU32(endian), 0u);
    EXPECT_EQ(encoding::readI32(endian), 0);
    EXPECT_EQ(encoding::readU32(raw), 0u);
    EXPECT_EQ(encoding::readI32(raw), 0);
    EXPECT_TRUE(raw.failed());
}

TEST(StreamEncoding, ZeroesWhatTheFileDidNotDeliverIntoANewBuffer) {
    for (unsigned int const count : {5u, 3000u}) {
        // The heap has just been full of other bytes, and hands them out again.
        delete[] static_cast<char*>(std::memset(new char[4 * count], 'x', 4 * count));
        TempFile file(hex("0100000002000000"));
        RecordingStream<FileStreamRaw> stream(file);
        Array<int> list;
        encoding::readBlock(stream, list, count);
        EXPECT_EQ(list.size(), count);
        EXPECT_TRUE(list[0] == 1 && list[1] == 2);
        EXPECT_TRUE(std::all_of(list.begin() + 2, list.end(), [](int i) { return i == 0; })) << count;
        EXPECT_EQ(stream.calls, Calls{4 * count});
    }
}

TEST(StreamEncoding, KeepsWhatTheFileDidNotDeliverInAnOldBuffer) {
    TempFile file(hex("01000000"));
    RecordingStream<FileStreamRaw> stream(file);
    Array<int> list{7, 8, 9};
    int const* const buffer = list.data();
    encoding::readBlock(stream, list, 3);
    EXPECT_EQ(list.data(), buffer) << "there is room for exactly three";
    EXPECT_TRUE(list[0] == 1 && list[1] == 8 && list[2] == 9);
    encoding::readBlock(stream, list, 0);
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(stream.calls, Calls{12}) << "no elements, no call";
}

TEST(StreamEncoding, ShowsNoUninitialisedElementIfReadingThrows) {
    struct Throwing : FileStreamRaw {
        std::size_t read(void*, std::size_t) override { throw std::runtime_error("cancelled"); }
    } stream;
    Array<int> list{1};
    EXPECT_THROW(encoding::readBlock(stream, list, 9), std::runtime_error);
    EXPECT_TRUE(list.empty());
}

namespace {

template <class Stream, class = void> constexpr bool canReadLists = false;
template <class Stream>
constexpr bool canReadLists<
    Stream, std::void_t<decltype(std::declval<Stream&>() >> std::declval<Array<QN_String>&>())>> = true;

} // namespace

TEST(StreamEncoding, ReadsListsFromTheTwoKindsOnly) {
    static_assert(canReadLists<FileStreamRaw> && canReadLists<RecordingStream<FileStreamEndian>>);
    static_assert(!canReadLists<FileStream> && !canReadLists<int>);
    static_assert(encoding::isBlock<QN_String> && encoding::isBlock<Array<int> const>);
    static_assert(!encoding::isBlock<Array<QN_String>>, "their pointers must not be overwritten");
}
