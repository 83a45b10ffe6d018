// Failures: what ends a call that runs without the interpreter's lock, and becomes an exception of Python's later.
#ifndef MRCOMMON_PYTHON_FAILURES_H
#define MRCOMMON_PYTHON_FAILURES_H

#include <MRCommon/properties/RecordCheck.h>

#include <string>

/// A call of the system that failed; becomes the OSError that fits `number`, which is an errno.
struct SystemError {
    int number;
    std::string path;
};

/// A record that cannot be read; becomes a RecordError.
struct RecordFault {
    RecordFault(std::string message, unsigned long long offset, char const* reason);
    explicit RecordFault(quarn::RecordCheck const& check);

    std::string message, field;
    unsigned long long offset;
    char const* reason;
    std::string path; ///< empty for bytes in memory
};

/// Lets both arrive in Python, and failed conversions of elements as TypeError.
void registerFailures();

#endif
