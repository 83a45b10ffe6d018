#include "Output.h"

#include "RecordFile.h"

#include <cstdarg>
#include <cstdio>

namespace {

void check(bool written) {
    if (!written) throw FileError("standard output", systemReason());
}

} // namespace

void print(char const* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    int const count = std::vprintf(format, arguments);
    va_end(arguments);
    check(count >= 0);
}

void finishOutput() { check(std::fflush(stdout) == 0); }
