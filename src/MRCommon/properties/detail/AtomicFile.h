// AtomicFile: a file that takes the place of another one in a single step.
//     AtomicFile file(path);
//     file.write(bytes, size);
//     file.commit();                    // until here `path` is the old file, from here on the new one
// Every failure throws a SystemFailure; the destructor then removes what was
// written.
#ifndef MRCOMMON_PROPERTIES_DETAIL_ATOMICFILE_H
#define MRCOMMON_PROPERTIES_DETAIL_ATOMICFILE_H

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>

namespace quarn::detail {

/// What the system refused, as one line "path: reason".
struct SystemFailure : std::runtime_error {
    SystemFailure(std::string const& line, int number) : runtime_error(line), error(number) {}
    int error; ///< as errno
};

/// Throws a SystemFailure with the reason that errno gives.
[[noreturn]] void throwErrno(std::string const& path);

class AtomicFile {
public:
    explicit AtomicFile(std::string const& path);
    ~AtomicFile();
    AtomicFile(AtomicFile const&) = delete;
    AtomicFile& operator=(AtomicFile const&) = delete;

    void write(char const* bytes, std::size_t size);
    void commit();

private:
    /// The file under its temporary name, removed at the end of its life unless it was renamed.
    class Temporary {
    public:
        Temporary(std::string const& folder, unsigned int mode);
        ~Temporary();
        Temporary(Temporary const&) = delete;
        Temporary& operator=(Temporary const&) = delete;

        int descriptor() const { return descriptor_; }
        bool close();
        bool renameTo(std::string const& target);

    private:
        std::string name_;
        int descriptor_ = -1;
    };

    void require(bool isDone) const;

    std::string path_;   // as the caller spells it, for messages
    std::string target_; // with symbolic links resolved
    std::string folder_; // of the target, with its slash
    std::optional<Temporary> temporary_;
};

} // namespace quarn::detail

#endif
