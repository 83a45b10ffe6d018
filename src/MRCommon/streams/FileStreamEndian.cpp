#include <MRCommon/streams/FileStreamEndian.h>

namespace quarn {

FileStreamEndian::FileStreamEndian(std::FILE* file) : FileStream(file) {}

FileStreamEndian::~FileStreamEndian() = default;

} // namespace quarn
