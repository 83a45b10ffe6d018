// withStream: a record's stream on a FILE, of the kind that the caller asked for.
#ifndef MRCOMMON_PYTHON_STREAMS_H
#define MRCOMMON_PYTHON_STREAMS_H

#include <MRCommon/streams/FileStreamEndian.h>
#include <MRCommon/streams/FileStreamRaw.h>

#include <cstdio>

template <class Act> auto withStream(std::FILE* file, bool endian, Act const& act) {
    if (endian) {
        quarn::FileStreamEndian stream(file);
        return act(stream);
    }
    quarn::FileStreamRaw stream(file);
    return act(stream);
}

#endif
