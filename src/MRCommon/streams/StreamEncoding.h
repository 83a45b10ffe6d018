// StreamEncoding: the encodings of the values in a record, for both stream kinds.
//
//            on FileStreamRaw                      on FileStreamEndian
//   U32      4 bytes, order of the machine         one WriteUInt or ReadUInt on the FILE
//   I32      4 bytes, order of the machine         one WriteInt or ReadInt on the FILE
//   STR      U32 size, the NUL counted, then that many bytes: "ab" is 03 00 00 00  61 62 00 on a raw stream
//   STRARRAY U32 count, then each STR
//
// A length, a count and a value are one call each. Reading fills existing objects, whose buffers only ever grow.
// Lengths are trusted and no step checks the stream: call its failed() or finish() at the end. Integers that a file
// does not deliver are 0; missing bytes keep what the buffer held, and are 0 in a new buffer.
#ifndef MRCOMMON_STREAMS_STREAMENCODING_H
#define MRCOMMON_STREAMS_STREAMENCODING_H

#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>
#include <MRCommon/streams/FileStreamEndian.h>
#include <MRCommon/streams/FileStreamRaw.h>
#include <qn_fileio/qn_fileio.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>

namespace quarn {

namespace detail {

/// Zeroes `byteCount` bytes, but writes to no page of a large block that is zero already: memory fresh from the
/// system is, and is not committed until it is written. So a damaged length commits little more than was read.
/// Memory checkers that track uninitialised bytes report the comparison, which decides nothing else. A function of its
/// own, so that their reports name it.
MRCOMMON_HIDDEN [[gnu::noinline]] inline void zeroBytes(void* memory, std::size_t byteCount) noexcept {
    static constexpr std::array<unsigned char, 4096> zeros{};
    auto* bytes = static_cast<unsigned char*>(memory);
    for (; byteCount > 16 * zeros.size(); bytes += zeros.size(), byteCount -= zeros.size())
        if (std::memcmp(bytes, zeros.data(), zeros.size()) != 0) std::memset(bytes, 0, zeros.size());
    std::memset(bytes, 0, byteCount); // smaller blocks are not worth looking at
}

} // namespace detail

/// The single encodings, for property kinds of a host or plug-in.
namespace MRCOMMON_HIDDEN encoding {

///@{
/// Write one integer of 32 bits.
inline void writeU32(FileStreamRaw& stream, unsigned int value) { stream.write(&value, sizeof value); }
inline void writeU32(FileStreamEndian& stream, unsigned int value) { WriteUInt(&value, 1, stream.file()); }
inline void writeI32(FileStreamRaw& stream, int value) { stream.write(&value, sizeof value); }
inline void writeI32(FileStreamEndian& stream, int value) { WriteInt(&value, 1, stream.file()); }
///@}

///@{
/// Read one integer of 32 bits; return 0 if the file ends before or inside it.
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

/// True for the types that these functions transfer as memory blocks: elements that own nothing.
template <class List>
constexpr bool isBlock =
    std::is_trivially_copyable_v<std::remove_pointer_t<decltype(std::declval<List&>().data())>>;

/// Writes the elements of a string or of a list of plain values as one block; makes no call for an empty one.
template <class Stream, class List> void writeBlock(Stream& stream, List const& list) {
    static_assert(isBlock<List>,
                  "only plain values have their content in the block; write others one by one");
    if (!list.empty()) stream.write(list.data(), list.size() * sizeof(*list.data()));
}

/// Sets a container to `count` elements for reading: a buffer with room is kept, a smaller one is replaced. Returns
/// whether it was replaced: nothing was copied then, and plain elements are uninitialised.
template <class List> bool resizeForRead(List& list, unsigned int count) {
    bool const replaced = count > list.capacity();
    if (replaced) list.reserve(count, false);
    list.setSize(count);
    return replaced;
}

/// Reads `count` elements of a string or of a list of plain values as one block. What the file does not deliver
/// into a new buffer is zeroed, so that no stray memory gets into a text.
template <class Stream, class List> void readBlock(Stream& stream, List& list, unsigned int count) {
    static_assert(isBlock<List>, "only plain values have their content in the block; read others one by one");
    bool const isNew = resizeForRead(list, count);
    if (count == 0) return;
    std::size_t const byteCount = count * sizeof(*list.data());
    if (isNew) list.setSize(0); // the elements are uninitialised until the stream's `read` returns
    std::size_t const delivered = stream.read(list.data(), byteCount);
    if (isNew)
        detail::zeroBytes(reinterpret_cast<unsigned char*>(list.data()) + delivered, byteCount - delivered);
    list.setSize(count);
}

/// Writes one STR.
template <class Stream> void writeStr(Stream& stream, QN_String const& text) {
    writeU32(stream, text.size());
    writeBlock(stream, text);
}

/// Reads one STR, into the buffer of `text` if it has room.
template <class Stream> void readStr(Stream& stream, QN_String& text) {
    readBlock(stream, text, readU32(stream));
}

/// Writes one STRARRAY.
template <class Stream> void writeStrArray(Stream& stream, Array<QN_String> const& list) {
    writeU32(stream, list.size());
    for (QN_String const& text : list) writeStr(stream, text);
}

} // namespace encoding

/// Reads one STRARRAY into an existing list, whose strings serve as buffers, and returns the stream. A plain
/// FileStream is not accepted: only its two kinds know the byte order of a count. If memory runs out, std::bad_alloc is
/// thrown; the list may then contain strings from before and can be read again.
template <class Stream, class = std::enable_if_t<std::is_base_of_v<FileStreamRaw, Stream> ||
                                                 std::is_base_of_v<FileStreamEndian, Stream>>>
MRCOMMON_HIDDEN Stream& operator>>(Stream& stream, Array<QN_String>& list) {
    encoding::resizeForRead(list, encoding::readU32(stream));
    for (QN_String& text : list) encoding::readStr(stream, text);
    return stream;
}

} // namespace quarn

#endif
