// Records: what properties and variants write and read, as bytes.
//     EXPECT_EQ(recordOf(PptyBool("a", true)), hex("02000000 6100 01"));
//     EXPECT_TRUE(read(property, hex("02000000 6100 01")));       // false for a short read
#ifndef MRCOMMON_TESTS_PROPERTIES_RECORDS_H
#define MRCOMMON_TESTS_PROPERTIES_RECORDS_H

#include <MRCommon/streams/FileStreamRaw.h>

#include "support/TempFile.h"
#include "support/Written.h"

#include <string>

template <class Stream = quarn::FileStreamRaw, class Object> Bytes recordOf(Object const& object) {
    std::string const record = written<Stream>(object);
    return {record.begin(), record.end()};
}

template <class Stream = quarn::FileStreamRaw, class Object> bool read(Object& object, Bytes const& record) {
    TempFile file(record);
    Stream stream(file);
    object.readFrom(stream);
    return !stream.failed();
}

#endif
