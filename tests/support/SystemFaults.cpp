#include "support/SystemFaults.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

/// Returns the function of this name that the program would call without this file.
template <class Function> Function next(char const* name) {
    void* const found = dlsym(RTLD_NEXT, name);
    Function function;
    std::memcpy(&function, &found, sizeof function);
    return function;
}

struct Fault {
    std::atomic<bool> isArmed{std::getenv("CALL_COUNT") != nullptr};
    long nth = std::getenv("FAILING_CALL") == nullptr ? -1 : std::atol(std::getenv("FAILING_CALL"));
    SystemFaults::Kind kind = SystemFaults::Fail;
    int reason = ENOSPC;
    std::atomic<long> calls{0};
    std::atomic<bool> hasStruck{false};

    ~Fault() {
        char const* const path = std::getenv("CALL_COUNT");
        if (path == nullptr) return;
        int const file =
            next<int (*)(char const*, int, ...)>("open")(path, O_WRONLY | O_CREAT | O_TRUNC, 0666);
        std::string const text = std::to_string(calls);
        if (next<ssize_t (*)(int, void const*, std::size_t)>("write")(file, text.data(), text.size()) < 0)
            std::abort();
    }
};

Fault& fault() {
    static Fault only; // on first use, since libraries make calls before the constructors of this file
    return only;
}

/// Counts a call, and returns whether it is to fail; errno is then set.
bool strikes() {
    if (!fault().isArmed || fault().calls++ != fault().nth) return false;
    fault().hasStruck = true;
    if (fault().kind == SystemFaults::Kill) _exit(SystemFaults::killed);
    errno = fault().reason;
    return fault().kind == SystemFaults::Fail;
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

/// Reports a failure of a call that was made all the same, as the system closes files.
int closed(bool hasFailed, int result, int failure) {
    if (hasFailed) errno = fault().reason;
    return hasFailed ? failure : result;
}

} // namespace

SystemFaults::SystemFaults(int nth, Kind kind, int reason) {
    fault().calls = 0;
    fault().hasStruck = false;
    fault().nth = nth;
    fault().kind = kind;
    fault().reason = reason;
    fault().isArmed = true;
}

SystemFaults::~SystemFaults() { fault().isArmed = false; }

bool SystemFaults::struck() const { return fault().hasStruck; }

extern "C" {

int open(char const* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    mode_t const mode = flags & O_CREAT ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return strikes() ? -1 : next<int (*)(char const*, int, ...)>("open")(path, flags, mode);
}

int fchmod(int descriptor, mode_t mode) noexcept {
    return strikes() ? -1 : next<int (*)(int, mode_t)>("fchmod")(descriptor, mode);
}

ssize_t write(int descriptor, void const* bytes, std::size_t size) {
    auto const writeOn = next<ssize_t (*)(int, void const*, std::size_t)>("write");
    Fault const& f = fault();
    if (f.isArmed && f.kind == SystemFaults::Kill && f.calls == f.nth) writeOn(descriptor, bytes, size / 2);
    if (strikes()) return -1;
    bool const isShort = f.isArmed && f.kind == SystemFaults::ShortWrites;
    return writeOn(descriptor, bytes, isShort ? std::min<std::size_t>(size, 1000) : size);
}

ssize_t read(int descriptor, void* bytes, std::size_t size) {
    return strikes() ? -1 : next<ssize_t (*)(int, void*, std::size_t)>("read")(descriptor, bytes, size);
}

int fsync(int) { return strikes() ? -1 : 0; } // the power stays on, and thousands of flushes take minutes

int close(int descriptor) {
    bool const fails = strikes();
    return closed(fails, next<int (*)(int)>("close")(descriptor), -1);
}

int fclose(std::FILE* file) {
    bool const fails = strikes();
    return closed(fails, next<int (*)(std::FILE*)>("fclose")(file), EOF);
}

int rename(char const* from, char const* to) noexcept {
    return strikes() ? -1 : next<int (*)(char const*, char const*)>("rename")(from, to);
}

std::FILE* fopen(char const* path, char const* mode) {
    return strikes() ? nullptr : next<std::FILE* (*)(char const*, char const*)>("fopen")(path, mode);
}

std::FILE* fdopen(int descriptor, char const* mode) noexcept {
    return strikes() ? nullptr : next<std::FILE* (*)(int, char const*)>("fdopen")(descriptor, mode);
}

std::size_t fwrite(void const* bytes, std::size_t size, std::size_t count, std::FILE* file) {
    auto const writeOn = next<std::size_t (*)(void const*, std::size_t, std::size_t, std::FILE*)>("fwrite");
    if (fileno(file) < 0 || !strikes()) return writeOn(bytes, size, count, file); // memory is not a disk
    FullDisk const full(file);
    return writeOn(bytes, size, count, file) == count && flush(file) == 0 ? count : 0;
}

int fflush(std::FILE* file) {
    if (file == nullptr || fileno(file) < 0 || !strikes()) return flush(file);
    FullDisk const full(file);
    std::fputc(' ', file); // there may be nothing left to flush
    return flush(file);
}

int mkdir(char const* path, mode_t mode) noexcept {
    return strikes() ? -1 : next<int (*)(char const*, mode_t)>("mkdir")(path, mode);
}
}
