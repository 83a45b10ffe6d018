// FileStreamRaw: the stream kind on which everything, 32-bit integers included, lies in the byte order of the
// machine and travels through `read` and `write`. Records with values use it.
//     FileStreamRaw out(file);
//     property.writeTo(out);
#ifndef MRCOMMON_STREAMS_FILESTREAMRAW_H
#define MRCOMMON_STREAMS_FILESTREAMRAW_H

#include <MRCommon/streams/FileStream.h>

namespace quarn {

class MRCOMMON_API FileStreamRaw : public FileStream {
public:
    explicit FileStreamRaw(std::FILE* file = nullptr); ///< borrows the FILE
    ~FileStreamRaw() override;
};

} // namespace quarn

#endif
