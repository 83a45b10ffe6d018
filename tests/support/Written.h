// Written: the bytes that records are written as.
//     written<FileStreamRaw>(PptyBool("a", true))       // "\2\0\0\0a\0\1"
#ifndef MRCOMMON_TESTS_SUPPORT_WRITTEN_H
#define MRCOMMON_TESTS_SUPPORT_WRITTEN_H

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>

template <class Stream, class Record> std::string written(Record const& record) {
    char* bytes = nullptr;
    std::size_t size = 0;
    std::FILE* const file = open_memstream(&bytes, &size);
    if (file == nullptr) throw std::bad_alloc();
    Stream stream(file);
    record.writeTo(stream);
    std::fclose(file);
    std::unique_ptr<char, void (*)(void*)> const owned(bytes, &std::free);
    return {bytes, size};
}

#endif
