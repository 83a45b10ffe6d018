// How each type of value is stored in a record on a raw stream, for both variants and properties.
#ifndef MRCOMMON_PROPERTIES_DETAIL_VALUEENCODING_H
#define MRCOMMON_PROPERTIES_DETAIL_VALUEENCODING_H

#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/properties/detail/VariantKinds.h>
#include <MRCommon/streams/FileStreamRaw.h>
#include <MRCommon/streams/StreamEncoding.h>

namespace quarn::detail {

/// Writes a number, vector or colour with one call, its bytes as in memory.
template <class T> void writeValue(FileStreamRaw& stream, T const& value) {
    static_assert(isTriviallyCopyable<T>);
    stream.write(&value, sizeof value);
}

inline void writeValue(FileStreamRaw& stream, bool const& value) {
    unsigned char const byte = value ? 1 : 0;
    stream.write(&byte, 1);
}

inline void writeValue(FileStreamRaw& stream, QN_String const& value) { encoding::writeStr(stream, value); }

inline void writeValue(FileStreamRaw& stream, Array<QN_String> const& value) {
    encoding::writeStrArray(stream, value);
}

inline void writeValue(FileStreamRaw& stream, Tuple2<QN_String, int> const& value) {
    encoding::writeStr(stream, value.first);
    encoding::writeI32(stream, value.second);
}

/// Reads straight into the value. Bytes that the file does not deliver stay as they were.
template <class T> void readValue(FileStreamRaw& stream, T& value) {
    static_assert(isTriviallyCopyable<T>);
    stream.read(&value, sizeof value);
}

inline void readValue(FileStreamRaw& stream, bool& value) {
    unsigned char byte = value ? 1 : 0;
    stream.read(&byte, 1);
    value = byte != 0;
}

inline void readValue(FileStreamRaw& stream, QN_String& value) { encoding::readStr(stream, value); }

inline void readValue(FileStreamRaw& stream, Array<QN_String>& value) { stream >> value; }

inline void readValue(FileStreamRaw& stream, Tuple2<QN_String, int>& value) {
    encoding::readStr(stream, value.first);
    value.second = encoding::readI32(stream);
}

} // namespace quarn::detail

#endif
