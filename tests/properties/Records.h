// Records: what properties and variants write and read, as bytes.
//     EXPECT_EQ(recordOf(PptyBool("a", true)), hex("02000000 6100 01"));
//     EXPECT_TRUE(read(property, hex("02000000 6100 01")));       // false for a short read
#ifndef MRCOMMON_TESTS_PROPERTIES_RECORDS_H
#define MRCOMMON_TESTS_PROPERTIES_RECORDS_H

#include <MRCommon/streams/FileStreamRaw.h>

#include "support/TempFile.h"

template <class Stream = quarn::FileStreamRaw, class Object> Bytes recordOf(Object const& object) {
    TempFile file;
    Stream stream(file);
    object.writeTo(stream);
    return file.bytes();
}

template <class Stream = quarn::FileStreamRaw, class Object> bool read(Object& object, Bytes const& record) {
    TempFile file(record);
    Stream stream(file);
    object.readFrom(stream);
    return !stream.failed();
}

#endif
