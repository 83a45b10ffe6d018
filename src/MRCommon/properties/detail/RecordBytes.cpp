#include <MRCommon/properties/detail/RecordBytes.h>

#include <sys/stat.h>
#ifdef __GLIBC__
#include <stdio_ext.h>
#endif

#include <array>

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

/// Returns the bytes from the position on that the C library has read already; none if that is not known.
std::string_view readAhead([[maybe_unused]] std::FILE* file) {
#ifdef __GLIBC__
    if (file != nullptr && __freading(file) != 0)
        return {file->_IO_read_ptr, static_cast<std::size_t>(file->_IO_read_end - file->_IO_read_ptr)};
#endif
    return {};
}

} // namespace

FileBytes::FileBytes(std::FILE* file)
    : RecordBytes(readAhead(file)), file_(file), start_(file == nullptr ? -1 : ftello(file)),
      filePosition_(static_cast<unsigned long long>(start_)), endInMemory_(filePosition_ + inMemory_.size()) {
}

FileBytes::~FileBytes() { putBack(); }

/// Also clears the mark of an end that was reached.
bool FileBytes::putBack() {
    if (!isMoved_) return true;
    isMoved_ = false;
    return fseeko(file_, static_cast<off_t>(start_), SEEK_SET) == 0;
}

unsigned long long FileBytes::end() {
    if (!end_) {
        moveTo(at());
        end_ = sizeOf(file_, at());
    }
    return *end_;
}

/// Moves the FILE, and leaves the bytes that were read ahead.
bool FileBytes::moveTo(unsigned long long position) {
    inMemory_ = {};
    endInMemory_ = position;
    if (filePosition_ == position) return true;
    isMoved_ = true;
    filePosition_ = position;
    return fseeko(file_, static_cast<off_t>(position), SEEK_SET) == 0;
}

bool FileBytes::readOn(void* buffer, std::size_t count) {
    if (!moveTo(at())) return false;
    isMoved_ = true;
    std::size_t const delivered = std::fread(buffer, 1, count, file_);
    endInMemory_ += delivered;
    filePosition_ += delivered;
    return delivered == count;
}

/// Short fields are read, which costs less than moving the position of a FILE.
bool FileBytes::skipOn(unsigned long long count) {
    std::array<char, 256> unused;
    if (count <= unused.size()) return readOn(unused.data(), static_cast<std::size_t>(count));
    unsigned long long const position = at();
    return position <= end() && count <= end() - position && moveTo(position + count);
}

} // namespace quarn::detail
