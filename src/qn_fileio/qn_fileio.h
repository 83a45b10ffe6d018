// qn_fileio: 32-bit integers and byte blocks on standard I/O streams.
//     unsigned int n = 258;
//     WriteUInt(&n, 1, file);           // 00 00 01 02: big-endian on every machine
//
// Every function takes a pointer to the first element, a count and a FILE, and returns the number of elements
// transferred; elements that were not transferred are left as they were. A null FILE stands for the current
// stream; with none set nothing is transferred. The FILE stays the caller's. The current stream is one for
// the process and is not guarded against use from several threads.
#ifndef QN_FILEIO_QN_FILEIO_H
#define QN_FILEIO_QN_FILEIO_H

#include <MRCommon/Export.h>

#include <cstdio>

///@{
/// `count` integers, each four bytes, the most significant first.
QN_FILEIO_API unsigned long ReadUInt(unsigned int* values, unsigned long count, std::FILE* file);
QN_FILEIO_API unsigned long WriteUInt(unsigned int* values, unsigned long count, std::FILE* file);
QN_FILEIO_API unsigned long ReadInt(int* values, unsigned long count, std::FILE* file);
QN_FILEIO_API unsigned long WriteInt(int* values, unsigned long count, std::FILE* file);
///@}

///@{
/// `count` elements of `elementSize` bytes, as they lie in memory.
QN_FILEIO_API unsigned long ReadBuffer(void* buffer, unsigned long elementSize, unsigned long count,
                                       std::FILE* file);
QN_FILEIO_API unsigned long WriteBuffer(void const* buffer, unsigned long elementSize, unsigned long count,
                                        std::FILE* file);
///@}

///@{
/// The stream that a null FILE stands for; null at first and again after SetCurrentStream(nullptr).
/// Borrowed: unset it before the FILE is closed.
QN_FILEIO_API void SetCurrentStream(std::FILE* file);
QN_FILEIO_API std::FILE* CurrentStream();
///@}

#endif
