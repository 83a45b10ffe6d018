// FileStreamEndian: the stream kind whose 32-bit integers have the same byte order on every machine.
//     FileStreamEndian out(file);
//     property.writeTo(out);            // intentional: most kinds write only their name here, see Ppty
// The integers go to the FILE through qn_fileio, which fixes the byte order (writeU32 and its siblings in
// StreamEncoding.h choose it by the stream's type); all other bytes pass through `read` and `write`, unchanged.
// Without a FILE the integers go to the current stream of qn_fileio.
#ifndef MRCOMMON_STREAMS_FILESTREAMENDIAN_H
#define MRCOMMON_STREAMS_FILESTREAMENDIAN_H

#include <MRCommon/Export.h>
#include <MRCommon/streams/FileStream.h>

#include <cstdio>

namespace quarn {

class MRCOMMON_API FileStreamEndian : public FileStream {
public:
    explicit FileStreamEndian(std::FILE* file = nullptr); ///< borrows the FILE
    ~FileStreamEndian() override;
};

} // namespace quarn

#endif
