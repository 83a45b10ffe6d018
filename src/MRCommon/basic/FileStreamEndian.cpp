#include <MRCommon/basic/FileStreamEndian.h>

namespace quarn {

FileStreamEndian::FileStreamEndian(std::FILE* file) : FileStream(file) {}

FileStreamEndian::~FileStreamEndian() = default;

} // namespace quarn
