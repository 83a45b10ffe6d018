// StreamEncoding: the values that records are made of, written once for both stream kinds.
//
//            on FileStreamRaw                      on FileStreamEndian
//   U32      4 bytes, order of the machine         one WriteUInt or ReadUInt on the FILE
//   I32      4 bytes, order of the machine         one WriteInt or ReadInt on the FILE
//   STR      U32 size, the NUL counted, then that many bytes: "ab" is 03 00 00 00  61 62 00 on a raw stream
//   STRARRAY U32 count, then each STR
//
// A length, a count and a value are one call each. Reading fills existing objects, whose buffers only ever grow.
// Lengths are trusted; nothing is checked on the way: ask the stream's failed() at the end. Integers that a file no
// longer delivers are 0, bytes keep what the buffer held, zeros where it is new.
#ifndef MRCOMMON_STREAMS_STREAMENCODING_H
#define MRCOMMON_STREAMS_STREAMENCODING_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/streams/FileStreamEndian.h>
#include <MRCommon/streams/FileStreamRaw.h>
#include <qn_fileio/qn_fileio.h>

#include <cstring>
#include <type_traits>

namespace quarn {

/// The encodings one by one, for property kinds of a caller's own.
namespace MRCOMMON_HIDDEN encoding {

///@{
/// One integer of 32 bits.
inline void writeU32(FileStreamRaw& stream, unsigned int value) { stream.write(&value, sizeof value); }
inline void writeU32(FileStreamEndian& stream, unsigned int value) { WriteUInt(&value, 1, stream.file()); }
inline void writeI32(FileStreamRaw& stream, int value) { stream.write(&value, sizeof value); }
inline void writeI32(FileStreamEndian& stream, int value) { WriteInt(&value, 1, stream.file()); }
///@}

///@{
/// One integer of 32 bits; 0 where the file ends before it.
inline unsigned int readU32(FileStreamRaw& stream) {
    unsigned int value = 0;
    stream.read(&value, sizeof value);
    return value;
}

inline unsigned int readU32(FileStreamEndian& stream) {
    unsigned int value = 0;
    ReadUInt(&value, 1, stream.file());
    return value;
}

inline int readI32(FileStreamRaw& stream) {
    int value = 0;
    stream.read(&value, sizeof value);
    return value;
}

inline int readI32(FileStreamEndian& stream) {
    int value = 0;
    ReadInt(&value, 1, stream.file());
    return value;
}
///@}

/// The elements of a string or of a list of plain values as one block; an empty one makes no call.
template <class Stream, class List> void writeBlock(Stream& stream, List const& list) {
    if (!list.empty()) stream.write(list.data(), list.size() * sizeof(*list.data()));
}

/// Brings a container to `count` elements for reading: a buffer with room is kept, a smaller one replaced.
template <class List> bool resizeForRead(List& list, unsigned int count) {
    bool const replaced = count > list.capacity();
    if (replaced) list.reserve(count, false);
    list.setSize(count);
    return replaced;
}

/// Reads `count` elements of a string or of a list of plain values as one block. A new buffer starts as
/// zeros, so that a file that ends early cannot bring stray memory into a text.
template <class Stream, class List> void readBlock(Stream& stream, List& list, unsigned int count) {
    if (resizeForRead(list, count)) std::memset(list.data(), 0, count * sizeof(*list.data()));
    if (count != 0) stream.read(list.data(), count * sizeof(*list.data()));
}

/// One STR.
template <class Stream> void writeStr(Stream& stream, QN_String const& text) {
    writeU32(stream, text.size());
    writeBlock(stream, text);
}

/// One STR, into the buffer of `text` when it has room.
template <class Stream> void readStr(Stream& stream, QN_String& text) {
    readBlock(stream, text, readU32(stream));
}

/// One STRARRAY.
template <class Stream> void writeStrArray(Stream& stream, Array<QN_String> const& list) {
    writeU32(stream, list.size());
    for (QN_String const& text : list) writeStr(stream, text);
}

} // namespace encoding

/// Reads one STRARRAY into an existing list, whose strings serve as buffers, and returns the stream.
template <class Stream, class = std::enable_if_t<std::is_base_of_v<FileStream, Stream>>>
MRCOMMON_HIDDEN Stream& operator>>(Stream& stream, Array<QN_String>& list) {
    encoding::resizeForRead(list, encoding::readU32(stream));
    for (QN_String& text : list) encoding::readStr(stream, text);
    return stream;
}

} // namespace quarn

#endif
