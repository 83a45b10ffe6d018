#include <MRCommon/streams/FileStream.h>

namespace quarn {

namespace {

// A field is a few bytes, and locking the FILE for each of them would cost as much as its transfer.
#ifdef __GLIBC__
std::size_t readBytes(void* buffer, std::size_t byteCount, std::FILE* file) {
    return fread_unlocked(buffer, 1, byteCount, file);
}
std::size_t writeBytes(void const* buffer, std::size_t byteCount, std::FILE* file) {
    return fwrite_unlocked(buffer, 1, byteCount, file);
}
#else
std::size_t readBytes(void* buffer, std::size_t byteCount, std::FILE* file) {
    return std::fread(buffer, 1, byteCount, file);
}
std::size_t writeBytes(void const* buffer, std::size_t byteCount, std::FILE* file) {
    return std::fwrite(buffer, 1, byteCount, file);
}
#endif

} // namespace

FileStream::~FileStream() = default;

std::size_t FileStream::read(void* buffer, std::size_t byteCount) {
    return recordTransfer(file_ == nullptr ? 0 : readBytes(buffer, byteCount, file_), byteCount);
}

std::size_t FileStream::write(void const* buffer, std::size_t byteCount) {
    return recordTransfer(file_ == nullptr ? 0 : writeBytes(buffer, byteCount, file_), byteCount);
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
