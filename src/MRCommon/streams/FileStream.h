// FileStream: what both kinds of property stream share: a borrowed FILE and the transfer of byte blocks.
//     FileStreamRaw out(file);
//     property.writeTo(out);
//     if (!out.finish()) ...            // asked once, after the last write and before the FILE is closed
// The FILE belongs to the caller, who opens, positions and closes it. It is the first data member, and the virtual
// operations keep their order: code compiled elsewhere relies on both.
//
// A stream is not thread-safe, and neither is its FILE while the stream transfers bytes: `read` and `write` do not lock
// it. Whoever shares a FILE between threads holds flockfile() for as long as a record takes, which it needs in any case
// to keep the fields of a record together.
#ifndef MRCOMMON_STREAMS_FILESTREAM_H
#define MRCOMMON_STREAMS_FILESTREAM_H

#include <MRCommon/Export.h>

#include <cstddef>
#include <cstdio>

namespace quarn {

class MRCOMMON_API FileStream {
public:
    virtual ~FileStream(); ///< slots 0 and 1

    ///@{
    /// Transfers up to `byteCount` bytes and returns how many; the rest of the buffer stays unchanged. Transfers
    /// nothing without a FILE.
    virtual std::size_t read(void* buffer, std::size_t byteCount);        ///< slot 2
    virtual std::size_t write(void const* buffer, std::size_t byteCount); ///< slot 3
    ///@}

    MRCOMMON_HIDDEN std::FILE* file() const noexcept { return file_; } ///< as given, may be null

    /// Returns true once a transfer of the stream's own came up short or its last bytes could not be flushed, or
    /// while its FILE is at its end or in error. Bytes that the C library still buffers are not known yet: call
    /// `finish` after writing.
    [[nodiscard]] MRCOMMON_HIDDEN bool failed() const noexcept {
        return shortTransfer_ || (file_ != nullptr && (std::feof(file_) || std::ferror(file_)));
    }

    /// Flushes what was written and returns whether everything went well, as `failed` does from then on. A full
    /// disk often shows here only, since small records fit the buffer of the C library. After it, only
    /// std::fclose remains, which then has nothing to write.
    [[nodiscard]] bool finish();

    FileStream(FileStream const&) = delete;
    FileStream& operator=(FileStream const&) = delete;

protected:
    MRCOMMON_HIDDEN explicit FileStream(std::FILE* file) noexcept
        : file_(file) {} ///< borrows the FILE, or null

private:
    std::size_t recordTransfer(std::size_t transferred, std::size_t wanted);

    std::FILE* file_;
    bool shortTransfer_ = false;
};

} // namespace quarn

#endif
