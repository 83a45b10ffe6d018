#include "RecordFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace {

/// Creates a file that nobody else has: the name is unique to the process and the attempt.
OpenFile createBeside(std::string const& path, std::string& temporary) {
    for (int attempt = 0;; ++attempt) {
        temporary = path + "." + std::to_string(getpid()) + "-" + std::to_string(attempt) + ".part";
        int const descriptor = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0) return OpenFile(fdopen(descriptor, "wb"));
        if (errno != EEXIST) throw FileError(path, "cannot be created: " + systemReason());
    }
}

} // namespace

SignalsDelayed::SignalsDelayed() {
    sigset_t signals;
    sigemptyset(&signals);
    for (int const signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, signal);
    sigprocmask(SIG_BLOCK, &signals, &previous_);
}

SignalsDelayed::~SignalsDelayed() { sigprocmask(SIG_SETMASK, &previous_, nullptr); }

std::string systemReason() { return std::strerror(errno); }

OpenFile openToRead(std::string const& path) {
    OpenFile file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr) throw FileError(path, systemReason());
    return file;
}

std::string contentOf(std::FILE* file, std::size_t most) {
    std::string content;
    char block[65536];
    while (content.size() < most) {
        std::size_t const count = std::fread(block, 1, std::min(sizeof block, most - content.size()), file);
        if (std::ferror(file) != 0) throw std::runtime_error(systemReason());
        if (count == 0) break;
        content.append(block, count);
    }
    return content;
}

std::string bytesOf(WriteFile const& write) {
    struct Memory { // the C library writes its address and size whenever the file is flushed
        char* data = nullptr;
        std::size_t size = 0;
        ~Memory() { std::free(data); }
    } memory;
    OpenFile const file(open_memstream(&memory.data, &memory.size));
    if (file == nullptr) throw std::bad_alloc();
    if (!write(file.get())) throw std::bad_alloc();
    return {memory.data, memory.size};
}

long writeWhole(std::string const& path, WriteFile const& write) {
    SignalsDelayed const delayed;
    std::string temporary;
    OpenFile file = createBeside(path, temporary);
    try {
        if (file == nullptr) throw FileError(path, "cannot be created: " + systemReason());
        if (!write(file.get())) throw FileError(path, "cannot be written: " + systemReason());
        long const bytes = std::ftell(file.get());
        if (std::fclose(file.release()) != 0 || std::rename(temporary.c_str(), path.c_str()) != 0)
            throw FileError(path, "cannot be written: " + systemReason());
        return bytes;
    } catch (...) {
        std::remove(temporary.c_str());
        throw;
    }
}
