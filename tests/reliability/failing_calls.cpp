// Preloaded before a program, counts its calls that open, write, close or rename files and makes one of them fail as on
// a full disk. The C library's own calls do not count.
//     LD_PRELOAD=libfailing_calls.so FAILING_CALL=12 CALL_COUNT=count.txt program
//         FAILING_CALL   the number of the failing call, from 0; none without it
//         CALL_COUNT     the file that gets the number of calls when the program ends
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

/// Returns the function of this name that the program would call without this library.
template <class Function> Function next(char const* name) {
    void* const found = dlsym(RTLD_NEXT, name);
    Function function;
    std::memcpy(&function, &found, sizeof function);
    return function;
}

class Calls {
public:
    /// Counts a call and returns whether it is to fail; errno is then set.
    bool fails() {
        bool const isIt = count_++ == failing_;
        if (isIt) errno = ENOSPC;
        return isIt;
    }

    ~Calls() {
        char const* const path = std::getenv("CALL_COUNT");
        if (path == nullptr) return;
        int const file =
            next<int (*)(char const*, int, ...)>("open")(path, O_WRONLY | O_CREAT | O_TRUNC, 0666);
        std::string const text = std::to_string(count_);
        if (next<ssize_t (*)(int, void const*, std::size_t)>("write")(file, text.data(), text.size()) < 0)
            std::abort();
    }

private:
    static long failing() {
        char const* const number = std::getenv("FAILING_CALL");
        return number == nullptr ? -1 : std::atol(number);
    }

    std::atomic<long> count_{0};
    long failing_ = failing();
};

bool fails() {
    static Calls calls; // on first use, since other libraries make calls before the constructors of this one
    return calls.fails();
}

int flush(std::FILE* file) { return next<int (*)(std::FILE*)>("fflush")(file); }

/// Puts a full disk below a FILE during its life, so that the C library notices a failure of its own.
class FullDisk {
public:
    explicit FullDisk(std::FILE* file) : descriptor_(fileno(file)), kept_(dup(descriptor_)) {
        int const full = next<int (*)(char const*, int, ...)>("open")("/dev/full", O_WRONLY);
        dup2(full, descriptor_);
        next<int (*)(int)>("close")(full);
    }
    ~FullDisk() {
        int const reason = errno;
        dup2(kept_, descriptor_);
        next<int (*)(int)>("close")(kept_);
        errno = reason;
    }
    FullDisk(FullDisk const&) = delete;
    FullDisk& operator=(FullDisk const&) = delete;

private:
    int descriptor_, kept_;
};

} // namespace

extern "C" {

int open(char const* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    mode_t const mode = flags & O_CREAT ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return fails() ? -1 : next<int (*)(char const*, int, ...)>("open")(path, flags, mode);
}

std::FILE* fopen(char const* path, char const* mode) {
    return fails() ? nullptr : next<std::FILE* (*)(char const*, char const*)>("fopen")(path, mode);
}

std::FILE* fdopen(int descriptor, char const* mode) noexcept {
    return fails() ? nullptr : next<std::FILE* (*)(int, char const*)>("fdopen")(descriptor, mode);
}

std::size_t fwrite(void const* bytes, std::size_t size, std::size_t count, std::FILE* file) {
    auto const writeOn = next<std::size_t (*)(void const*, std::size_t, std::size_t, std::FILE*)>("fwrite");
    if (fileno(file) < 0 || !fails()) return writeOn(bytes, size, count, file); // memory is not a disk
    FullDisk const full(file);
    return writeOn(bytes, size, count, file) == count && flush(file) == 0 ? count : 0;
}

ssize_t write(int descriptor, void const* bytes, std::size_t size) {
    return fails() ? -1 : next<ssize_t (*)(int, void const*, std::size_t)>("write")(descriptor, bytes, size);
}

int fflush(std::FILE* file) {
    if (file == nullptr || fileno(file) < 0 || !fails()) return flush(file);
    FullDisk const full(file);
    std::fputc(' ', file); // there may be nothing left to flush
    return flush(file);
}

// Closed all the same, as the system does.
int fclose(std::FILE* file) {
    bool const isFailing = fails();
    int const result = next<int (*)(std::FILE*)>("fclose")(file);
    if (isFailing) errno = ENOSPC;
    return isFailing ? EOF : result;
}

int close(int descriptor) {
    bool const isFailing = fails();
    int const result = next<int (*)(int)>("close")(descriptor);
    if (isFailing) errno = ENOSPC;
    return isFailing ? -1 : result;
}

int fsync(int descriptor) { return fails() ? -1 : next<int (*)(int)>("fsync")(descriptor); }

int fchmod(int descriptor, mode_t mode) noexcept {
    return fails() ? -1 : next<int (*)(int, mode_t)>("fchmod")(descriptor, mode);
}

int rename(char const* from, char const* to) noexcept {
    return fails() ? -1 : next<int (*)(char const*, char const*)>("rename")(from, to);
}

int mkdir(char const* path, mode_t mode) noexcept {
    return fails() ? -1 : next<int (*)(char const*, mode_t)>("mkdir")(path, mode);
}
}
