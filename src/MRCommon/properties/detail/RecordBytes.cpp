#include <MRCommon/properties/detail/RecordBytes.h>

#include <sys/stat.h>
#include <unistd.h>

namespace quarn::detail {

/// What a FILE has read ahead of its position.
struct ReadAhead {
    long long position; // -1 if the FILE has none
    std::string_view bytes;
};

namespace {

/// Returns the position that ftello returns, and the bytes only if it is known without that call, which takes as long as
/// half a check: if the FILE has a descriptor whose offset it keeps, and no characters that were pushed back.
ReadAhead readAhead(std::FILE* file) {
    if (file == nullptr) return {-1, {}};
#ifdef __GLIBC__
    if (file->_IO_read_ptr < file->_IO_read_end && file->_fileno >= 0 && file->_offset >= 0 &&
        file->_IO_save_base == nullptr) {
        auto const size = file->_IO_read_end - file->_IO_read_ptr;
        return {file->_offset - size, {file->_IO_read_ptr, static_cast<std::size_t>(size)}};
    }
#endif
    return {ftello(file), {}};
}

/// Returns the number of bytes in the FILE, or -1 if only the FILE itself can find it out.
long long sizeOfRegular(std::FILE* file) {
    struct stat status;
    int const descriptor = fileno(file);
    bool const isRegular = descriptor >= 0 && fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    return isRegular ? status.st_size : -1;
}

} // namespace

FileBytes::FileBytes(std::FILE* file) : FileBytes(file, readAhead(file)) {}

FileBytes::FileBytes(std::FILE* file, ReadAhead const& ahead)
    : RecordBytes(static_cast<unsigned long long>(ahead.position), ahead.bytes), file_(file),
      isReadAhead_(!ahead.bytes.empty()), endInMemory_(start() + ahead.bytes.size()) {}

unsigned long long FileBytes::end() {
    if (!end_) {
        long long size = sizeOfRegular(file_);
        if (size < 0) { // such as a FILE in memory
            isMoved_ = true;
            size = fseeko(file_, 0, SEEK_END) == 0 ? ftello(file_) : -1;
        }
        end_ = size < 0 ? at() : static_cast<unsigned long long>(size);
    }
    return *end_;
}

bool FileBytes::moveTo(unsigned long long position) {
    return fseeko(file_, static_cast<off_t>(position), SEEK_SET) == 0;
}

/// Copies as many of the bytes from an offset on as there are and have room, and returns their number.
std::size_t FileBytes::copyAt(unsigned long long position) {
    if (isReadAhead_) {
        ssize_t const delivered =
            pread(fileno(file_), copied_.data(), copied_.size(), static_cast<off_t>(position));
        return delivered < 0 ? 0 : static_cast<std::size_t>(delivered);
    }
    isMoved_ = true;
    return moveTo(position) ? std::fread(copied_.data(), 1, copied_.size(), file_) : 0;
}

/// Copies the next bytes, with those of them that are in memory already.
void FileBytes::copyNext() {
    unsigned long long const position = at();
    inMemory_ = {copied_.data(), copyAt(position)};
    endInMemory_ = position + inMemory_.size();
}

bool FileBytes::readOn(void* buffer, std::size_t count) {
    copyNext();
    return count <= inMemory_.size() && read(buffer, count);
}

bool FileBytes::skipOn(unsigned long long count) {
    if (count <= copied_.size()) {
        copyNext();
        return count <= inMemory_.size() && skip(count);
    }
    unsigned long long const position = at();
    if (position > end() || count > end() - position) return false;
    inMemory_ = {};
    endInMemory_ = position + count;
    return true;
}

} // namespace quarn::detail
