// Memory: records in files that exist in memory only.
//     MemoryFile file(bytes);          // to read from
//     written<FileStreamRaw>(record)   // the bytes that a record is written as
#ifndef MRCOMMON_FUZZ_MEMORY_H
#define MRCOMMON_FUZZ_MEMORY_H

#include "Input.h"

#include <MRCommon/streams/FileStreamEndian.h>
#include <MRCommon/streams/FileStreamRaw.h>

#include <memory>

/// A file to read from. No file can be made of no bytes.
class MemoryFile {
public:
    explicit MemoryFile(std::string_view bytes)
        : file_(fmemopen(const_cast<char*>(bytes.data()), bytes.size(), "rb")) {
        require(file_ != nullptr, "a file can be made of memory");
    }
    ~MemoryFile() { std::fclose(file_); }
    MemoryFile(MemoryFile const&) = delete;
    MemoryFile& operator=(MemoryFile const&) = delete;

    std::FILE* get() const { return file_; }
    unsigned long long position() const { return static_cast<unsigned long long>(std::ftell(file_)); }

private:
    std::FILE* file_;
};

template <class Stream, class Record> std::string written(Record const& record) {
    char* bytes = nullptr;
    std::size_t size = 0;
    std::FILE* const file = open_memstream(&bytes, &size);
    require(file != nullptr, "a file can be made of memory");
    Stream stream(file);
    record.writeTo(stream);
    std::fclose(file);
    std::unique_ptr<char, void (*)(void*)> const owned(bytes, &std::free);
    return {bytes, size};
}

#endif
