#include <MRCommon/properties/detail/RecordBytes.h>

#include <sys/stat.h>

#include <cstring>

namespace quarn::detail {

namespace {

/// Returns the number of bytes in the FILE, or the current position if it cannot be found out.
unsigned long long sizeOf(std::FILE* file, unsigned long long position) {
    struct stat status;
    int const descriptor = fileno(file);
    if (descriptor >= 0 && fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode))
        return static_cast<unsigned long long>(status.st_size);
    off_t const end = fseeko(file, 0, SEEK_END) == 0 ? ftello(file) : -1; // such as a FILE in memory
    bool const isBack = fseeko(file, static_cast<off_t>(position), SEEK_SET) == 0;
    return end < 0 || !isBack ? position : static_cast<unsigned long long>(end);
}

} // namespace

FileBytes::FileBytes(std::FILE* file)
    : file_(file), start_(file == nullptr ? -1 : ftello(file)), at_(static_cast<unsigned long long>(start_)) {
}

FileBytes::~FileBytes() {
    if (isMoved_) putBack();
}

bool FileBytes::putBack() {
    isMoved_ = false;
    return fseeko(file_, static_cast<off_t>(start_), SEEK_SET) == 0;
}

unsigned long long FileBytes::end() {
    if (!end_) end_ = sizeOf(file_, at_);
    return *end_;
}

bool FileBytes::read(void* buffer, std::size_t count) {
    isMoved_ = true;
    std::size_t const delivered = std::fread(buffer, 1, count, file_);
    at_ += delivered;
    return delivered == count;
}

bool FileBytes::skip(unsigned long long count) {
    isMoved_ = true;
    at_ += count;
    return fseeko(file_, static_cast<off_t>(at_), SEEK_SET) == 0;
}

bool MemoryBytes::read(void* buffer, std::size_t count) {
    if (count > left_) return false;
    std::memcpy(buffer, next_, count);
    return skip(count);
}

bool MemoryBytes::skip(unsigned long long count) {
    next_ += count;
    left_ -= static_cast<std::size_t>(count);
    return true;
}

} // namespace quarn::detail
