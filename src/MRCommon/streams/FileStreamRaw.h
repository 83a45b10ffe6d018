// FileStreamRaw: the stream kind for records with values. Everything, 32-bit integers included, passes through
// `read` and `write` in the byte order of the machine.
//     FileStreamRaw out(file);
//     property.writeTo(out);
#ifndef MRCOMMON_STREAMS_FILESTREAMRAW_H
#define MRCOMMON_STREAMS_FILESTREAMRAW_H

#include <MRCommon/Export.h>
#include <MRCommon/streams/FileStream.h>

#include <cstdio>

namespace quarn {

class MRCOMMON_API FileStreamRaw : public FileStream {
public:
    explicit FileStreamRaw(std::FILE* file = nullptr); ///< borrows the FILE
    ~FileStreamRaw() override;
};

} // namespace quarn

#endif
