// Memory: records in files that exist in memory only.
//     MemoryFile file(bytes);          // to read from
#ifndef MRCOMMON_FUZZ_MEMORY_H
#define MRCOMMON_FUZZ_MEMORY_H

#include "Input.h"
#include "support/Written.h"

#include <MRCommon/streams/FileStreamEndian.h>
#include <MRCommon/streams/FileStreamRaw.h>

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

#endif
