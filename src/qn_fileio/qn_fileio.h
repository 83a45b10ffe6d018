// qn_fileio: 32-bit integers and byte blocks on standard I/O streams.
//     unsigned int n = 258;
//     WriteUInt(&n, 1, file);           // 00 00 01 02: big-endian on every machine
//
// Every function takes a pointer to the first element, a count and a FILE, and returns the number of elements that
// were transferred completely; the others stay unchanged. A null FILE means the current stream; without one,
// nothing is transferred. The FILE belongs to the caller. The current stream is process-wide and not thread-safe.
#ifndef QN_FILEIO_QN_FILEIO_H
#define QN_FILEIO_QN_FILEIO_H

#include <MRCommon/Export.h>

#include <cstdio>

///@{
/// Transfer `count` integers, four bytes each, the most significant first.
QN_FILEIO_API unsigned long ReadUInt(unsigned int* values, unsigned long count, std::FILE* file);
QN_FILEIO_API unsigned long WriteUInt(unsigned int* values, unsigned long count, std::FILE* file);
QN_FILEIO_API unsigned long ReadInt(int* values, unsigned long count, std::FILE* file);
QN_FILEIO_API unsigned long WriteInt(int* values, unsigned long count, std::FILE* file);
///@}

///@{
/// Transfer `count` elements of `elementSize` bytes, unchanged.
QN_FILEIO_API unsigned long ReadBuffer(void* buffer, unsigned long elementSize, unsigned long count,
                                       std::FILE* file);
QN_FILEIO_API unsigned long WriteBuffer(void const* buffer, unsigned long elementSize, unsigned long count,
                                        std::FILE* file);
///@}

///@{
/// Set and return the stream that a null FILE means; null at first and after SetCurrentStream(nullptr). The stream
/// is borrowed: unset it before the FILE is closed.
QN_FILEIO_API void SetCurrentStream(std::FILE* file);
QN_FILEIO_API std::FILE* CurrentStream();
///@}

#endif
