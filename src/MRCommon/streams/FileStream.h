// FileStream: what the two kinds of property stream share: a borrowed FILE and the transfer of byte blocks.
//     FileStreamRaw out(file);
//     property.writeTo(out);
//     if (out.failed()) ...             // asked once, behind everything
// The FILE is the caller's: opened, positioned and closed elsewhere. It stands first among the data, and the
// virtual operations keep their order, since code compiled elsewhere relies on both.
#ifndef MRCOMMON_STREAMS_FILESTREAM_H
#define MRCOMMON_STREAMS_FILESTREAM_H

#include <MRCommon/Export.h>

#include <cstddef>
#include <cstdio>

namespace quarn {

class MRCOMMON_API FileStream {
public:
    virtual ~FileStream(); ///< slots 0 and 1

    /// Transfers up to `byteCount` bytes and returns how many; what was not delivered keeps what it held.
    /// Without a FILE nothing is transferred.
    virtual std::size_t read(void* buffer, std::size_t byteCount);        ///< slot 2
    virtual std::size_t write(void const* buffer, std::size_t byteCount); ///< slot 3

    MRCOMMON_HIDDEN std::FILE* file() const { return file_; } ///< as it was given; null when there is none

    /// True once a transfer of the stream's own came up short, or while its FILE stands at its end or in
    /// error.
    MRCOMMON_HIDDEN bool failed() const {
        return shortTransfer_ || (file_ != nullptr && (std::feof(file_) || std::ferror(file_)));
    }

    FileStream(FileStream const&) = delete;
    FileStream& operator=(FileStream const&) = delete;

protected:
    MRCOMMON_HIDDEN explicit FileStream(std::FILE* file)
        : file_(file) {} ///< borrows the FILE, which may be null

private:
    std::size_t recordTransfer(std::size_t transferred, std::size_t wanted);

    std::FILE* file_;
    bool shortTransfer_ = false;
};

} // namespace quarn

#endif
