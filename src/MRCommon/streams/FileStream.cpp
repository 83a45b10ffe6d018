#include <MRCommon/streams/FileStream.h>

namespace quarn {

FileStream::~FileStream() = default;

std::size_t FileStream::read(void* buffer, std::size_t byteCount) {
    return recordTransfer(file_ == nullptr ? 0 : std::fread(buffer, 1, byteCount, file_), byteCount);
}

std::size_t FileStream::write(void const* buffer, std::size_t byteCount) {
    return recordTransfer(file_ == nullptr ? 0 : std::fwrite(buffer, 1, byteCount, file_), byteCount);
}

bool FileStream::finish() {
    if (file_ != nullptr && std::fflush(file_) != 0) shortTransfer_ = true;
    return !failed();
}

std::size_t FileStream::recordTransfer(std::size_t transferred, std::size_t wanted) {
    if (transferred < wanted) shortTransfer_ = true;
    return transferred;
}

} // namespace quarn
