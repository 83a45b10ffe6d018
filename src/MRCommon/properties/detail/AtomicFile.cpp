#include <MRCommon/properties/detail/AtomicFile.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <system_error>
#include <utility>

namespace quarn::detail {

namespace {

/// Calls again what a signal interrupted.
template <class Call> auto uninterrupted(Call const& call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

/// Returns the path with its symbolic links resolved, or the path itself if there is no such file yet.
std::string resolve(std::string const& path) {
    std::unique_ptr<char, void (*)(void*)> const resolved(realpath(path.c_str(), nullptr), &std::free);
    if (resolved != nullptr) return resolved.get();
    struct stat link;
    if (errno != ENOENT) throwErrno(path);
    if (lstat(path.c_str(), &link) == 0)
        throw SystemFailure(path + ": The symbolic link leads to nothing", ENOENT);
    return path;
}

std::string uniqueName(std::string const& folder) {
    static std::atomic<unsigned int> made{0};
    std::array<char, 64> name{};
    std::snprintf(name.data(), name.size(), ".mrprops-%ld-%u", static_cast<long>(getpid()), made++);
    return folder + name.data();
}

} // namespace

void throwErrno(std::string const& path) {
    int const error = errno;
    throw SystemFailure(path + ": " + std::generic_category().message(error), error);
}

/// A name that is taken is left over from a killed process or belongs to another machine.
AtomicFile::Temporary::Temporary(std::string const& folder, unsigned int mode) {
    do {
        name_ = uniqueName(folder);
        descriptor_ =
            uninterrupted([&] { return open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode); });
    } while (descriptor_ < 0 && errno == EEXIST);
    if (descriptor_ < 0) name_.clear();
}

AtomicFile::Temporary::~Temporary() {
    int const reason = errno; // of an earlier failure, which is reported later
    close();
    if (!name_.empty()) unlink(name_.c_str());
    errno = reason;
}

/// An interrupted close() has closed all the same.
bool AtomicFile::Temporary::close() {
    return descriptor_ < 0 || ::close(std::exchange(descriptor_, -1)) == 0 || errno == EINTR;
}

bool AtomicFile::Temporary::renameTo(std::string const& target) {
    if (uninterrupted([&] { return std::rename(name_.c_str(), target.c_str()); }) != 0) return false;
    name_.clear();
    return true;
}

AtomicFile::AtomicFile(std::string const& path)
    : path_(path), target_(resolve(path)), folder_(target_.substr(0, target_.rfind('/') + 1)) {
    struct stat old;
    bool const isNew = stat(target_.c_str(), &old) != 0;
    if (isNew) old.st_mode = S_IFREG | 0666;
    require(!isNew || errno == ENOENT);
    if (!S_ISREG(old.st_mode)) throw SystemFailure(path_ + ": Not a regular file", EINVAL);
    require(isNew || access(target_.c_str(), W_OK) == 0);
    temporary_.emplace(folder_, old.st_mode & 0777);
    require(temporary_->descriptor() >= 0);
    // The umask applies to new files only.
    require(isNew ||
            uninterrupted([&] { return fchmod(temporary_->descriptor(), old.st_mode & 0777); }) == 0);
}

AtomicFile::~AtomicFile() = default;

void AtomicFile::write(char const* bytes, std::size_t size) {
    while (size != 0) {
        ssize_t const written = uninterrupted([&] { return ::write(temporary_->descriptor(), bytes, size); });
        require(written >= 0);
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
}

void AtomicFile::commit() {
    require(uninterrupted([&] { return fsync(temporary_->descriptor()); }) == 0);
    require(temporary_->close());
    require(temporary_->renameTo(target_));
    // The file is complete under either name: not every file system can flush a folder.
    int const folder = open(folder_.empty() ? "." : folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) return;
    fsync(folder);
    ::close(folder);
}

void AtomicFile::require(bool isDone) const {
    if (!isDone) throwErrno(path_);
}

} // namespace quarn::detail
