// qn_fileio: byte order, counts and the current stream.
#include <qn_fileio/qn_fileio.h>

#include <MRCommon/streams/StreamEncoding.h>

#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <cstdio>

using namespace quarn;

TEST(QnFileio, WritesIntegersBigEndian) {
    TempFile file;
    unsigned int u[2] = {0x01020304, 0xFFFFFFFE};
    int i[2] = {-2, 1};
    EXPECT_EQ(WriteUInt(u, 2, file), 2u);
    EXPECT_EQ(WriteInt(i, 2, file), 2u);
    EXPECT_EQ(file.bytes(), hex("01020304 FFFFFFFE FFFFFFFE 00000001"));
    file.rewind();
    unsigned int readU[2] = {};
    int readI[3] = {0, 0, 77};
    EXPECT_EQ(ReadUInt(readU, 2, file), 2u);
    EXPECT_EQ(ReadInt(readI, 3, file), 2u) << "the file ends after the second";
    EXPECT_EQ(readU[0], 0x01020304u);
    EXPECT_EQ(readU[1], 0xFFFFFFFEu);
    EXPECT_TRUE(readI[0] == -2 && readI[1] == 1 && readI[2] == 77);
}

TEST(QnFileio, UsesTheCurrentStreamIfNoneIsGiven) {
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
    encoding::writeU32(nowhere, 9); // integers of a stream without a FILE
    SetCurrentStream(nullptr);
    EXPECT_EQ(file.bytes(), hex("00000007 6162 00000009"));
}

TEST(QnFileio, CountsOnlyWhatWasTransferredCompletely) {
    TempFile file(hex("00000001 0000"));
    unsigned int values[2] = {7, 7};
    EXPECT_EQ(ReadUInt(values, 2, file), 1u) << "half an integer is none";
    EXPECT_TRUE(values[0] == 1 && values[1] == 7);
    file.rewind();
    unsigned char bytes[9] = {};
    EXPECT_EQ(ReadBuffer(bytes, 4, 2, file), 1u) << "elements, not bytes";

    std::FILE* const full = std::fopen("/dev/full", "w");
    ASSERT_NE(full, nullptr);
    std::setvbuf(full, nullptr, _IONBF, 0);
    int numbers[2] = {1, 2};
    EXPECT_EQ(WriteUInt(values, 2, full), 0u);
    EXPECT_EQ(WriteInt(numbers, 2, full), 0u);
    EXPECT_EQ(WriteBuffer(bytes, 4, 2, full), 0u);
    std::fclose(full);
}
