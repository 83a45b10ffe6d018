// FileStream: transfers, and when a stream says that something went wrong.
#include <MRCommon/streams/FileStreamEndian.h>
#include <MRCommon/streams/FileStreamRaw.h>

#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <type_traits>

using namespace quarn;

TEST(FileStream, HasTheFileAsItsFirstMember) {
    TempFile file;
    FileStreamRaw raw(file);
    std::FILE* first = nullptr;
    std::memcpy(&first, reinterpret_cast<char const*>(&raw) + sizeof(void*), sizeof first);
    EXPECT_EQ(first, raw.file());
    static_assert(!std::is_copy_constructible_v<FileStreamRaw> && !std::is_copy_assignable_v<FileStreamRaw>);
}

TEST(FileStream, RemembersAShortRead) {
    TempFile file(hex("0102"));
    FileStreamRaw raw(file);
    unsigned char buffer[4] = {9, 9, 9, 9};
    EXPECT_EQ(raw.read(buffer, 2), 2u);
    EXPECT_FALSE(raw.failed());
    EXPECT_EQ(raw.read(buffer, 4), 0u);
    EXPECT_EQ(buffer[3], 9) << "what was not delivered stays";
    file.rewind(); // clears the end-of-file flag of the FILE
    EXPECT_TRUE(raw.failed());
}

TEST(FileStream, FailsWhileItsFileIsInError) {
    std::FILE* const file = std::fopen("/dev/null", "r");
    ASSERT_NE(file, nullptr);
    FileStreamRaw const raw(file);
    EXPECT_FALSE(raw.failed());
    EXPECT_EQ(std::fputc('x', file), EOF); // opened for reading
    EXPECT_TRUE(raw.failed());
    std::clearerr(file);
    EXPECT_FALSE(raw.failed()) << "no transfer of the stream's own came up short";
    std::fclose(file);
}

TEST(FileStream, TransfersNothingWithoutAFile) {
    FileStreamEndian none;
    EXPECT_FALSE(none.failed());
    EXPECT_TRUE(none.finish());
    char byte = 'a';
    EXPECT_EQ(none.read(&byte, 1), 0u);
    EXPECT_TRUE(none.failed());
    FileStreamRaw other;
    EXPECT_EQ(other.write(&byte, 1), 0u);
    EXPECT_TRUE(other.failed());
    EXPECT_FALSE(other.finish());
}

TEST(FileStream, FinishSaysWhetherTheLastBytesWereWritten) {
    std::FILE* const full = std::fopen("/dev/full", "w");
    ASSERT_NE(full, nullptr);
    FileStreamRaw stream(full);
    EXPECT_EQ(stream.write("small", 5), 5u);
    EXPECT_FALSE(stream.failed()) << "the bytes are in the buffer of the C library";
    EXPECT_FALSE(stream.finish());
    std::clearerr(full);
    EXPECT_TRUE(stream.failed()) << "the stream itself remembers";
    std::fclose(full);

    TempFile file;
    FileStreamEndian good(file);
    EXPECT_EQ(good.write("ab", 2), 2u);
    EXPECT_TRUE(good.finish());
    EXPECT_FALSE(good.failed());
    EXPECT_EQ(file.bytes(), hex("6162"));
}
