#include "support/SystemFaults.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {

bool isArmed = false;
int callsLeft = 0;
bool hasStruck = false;
SystemFaults::Kind faultKind;
int faultReason = 0;

/// Whether the fault strikes this call.
bool strikes() {
    if (!isArmed || hasStruck) return false;
    if (callsLeft-- > 0) return false;
    hasStruck = true;
    if (faultKind == SystemFaults::Kill) _exit(SystemFaults::killed);
    errno = faultReason;
    return faultKind == SystemFaults::Fail;
}

/// The function of this name that the program would call without this file.
template <class Function> Function next(char const* name) {
    void* const found = dlsym(RTLD_NEXT, name);
    Function function;
    std::memcpy(&function, &found, sizeof function);
    return function;
}

} // namespace

SystemFaults::SystemFaults(int nth, Kind kind, int reason) {
    callsLeft = nth;
    hasStruck = false;
    faultKind = kind;
    faultReason = reason;
    isArmed = true;
}

SystemFaults::~SystemFaults() { isArmed = false; }

bool SystemFaults::struck() const { return hasStruck; }

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
    if (isArmed && faultKind == SystemFaults::Kill && callsLeft == 0) writeOn(descriptor, bytes, size / 2);
    if (strikes()) return -1;
    bool const isShort = isArmed && faultKind == SystemFaults::ShortWrites;
    return writeOn(descriptor, bytes, isShort ? std::min<std::size_t>(size, 1000) : size);
}

ssize_t read(int descriptor, void* bytes, std::size_t size) {
    return strikes() ? -1 : next<ssize_t (*)(int, void*, std::size_t)>("read")(descriptor, bytes, size);
}

int fsync(int) { return strikes() ? -1 : 0; } // the power stays on, and thousands of flushes take minutes

int close(int descriptor) {
    bool const fails = strikes();
    int const reason = errno;
    int const result = next<int (*)(int)>("close")(descriptor);
    if (fails) errno = reason;
    return fails ? -1 : result;
}

int rename(char const* from, char const* to) noexcept {
    return strikes() ? -1 : next<int (*)(char const*, char const*)>("rename")(from, to);
}
}
