// FileStreamEndian: the stream kind on which single 32-bit integers have one byte order on every machine:
// they go to the FILE through qn_fileio, everything else through `read` and `write` as plain bytes.
//     FileStreamEndian out(file);
//     property.writeTo(out);            // of most kinds the name alone: meant, see Ppty
// Without a FILE the integers go to the current stream of qn_fileio.
#ifndef MRCOMMON_STREAMS_FILESTREAMENDIAN_H
#define MRCOMMON_STREAMS_FILESTREAMENDIAN_H

#include <MRCommon/streams/FileStream.h>

namespace quarn {

class MRCOMMON_API FileStreamEndian : public FileStream {
public:
    explicit FileStreamEndian(std::FILE* file = nullptr); ///< borrows the FILE
    ~FileStreamEndian() override;
};

} // namespace quarn

#endif
