#include <MRCommon/streams/FileStreamRaw.h>

namespace quarn {

FileStreamRaw::FileStreamRaw(std::FILE* file) : FileStream(file) {}

FileStreamRaw::~FileStreamRaw() = default;

} // namespace quarn
