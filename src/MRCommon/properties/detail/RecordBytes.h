// RecordBytes: the bytes that a check of a record steps over: those of a FILE, or those of a record in memory.
#ifndef MRCOMMON_PROPERTIES_DETAIL_RECORDBYTES_H
#define MRCOMMON_PROPERTIES_DETAIL_RECORDBYTES_H

#include <MRCommon/properties/Ppty.h>
#include <MRCommon/properties/RecordCheck.h>

#include <cstddef>
#include <cstdio>
#include <optional>

namespace quarn::detail {

class RecordBytes {
public:
    RecordBytes() = default;
    RecordBytes(RecordBytes const&) = delete;
    RecordBytes& operator=(RecordBytes const&) = delete;
    virtual ~RecordBytes() = default;

    virtual unsigned long long start() const = 0;           ///< the offset of the record
    virtual unsigned long long end() = 0;                   ///< the offset past the last byte that there is
    virtual bool read(void* buffer, std::size_t count) = 0; ///< false if fewer bytes are left
    virtual bool skip(unsigned long long count) = 0;        ///< `count` bytes, which are known to be there

    ///@{
    /// Checks the record that begins at start().
    RecordCheck check(Ppty const& pattern, bool raw);
    RecordCheck checkVariant();
    ///@}

private:
    template <class Walk> RecordCheck walk(bool raw, Walk const& walkFields);
};

/// The bytes of a FILE from its position on.
class FileBytes : public RecordBytes {
public:
    explicit FileBytes(std::FILE* file);
    ~FileBytes() override; ///< puts the position back

    bool isSeekable() const { return start_ >= 0; }
    bool putBack(); ///< puts the position back; false if that fails

    unsigned long long start() const override { return static_cast<unsigned long long>(start_); }
    unsigned long long end() override;
    bool read(void* buffer, std::size_t count) override;
    bool skip(unsigned long long count) override;

private:
    std::FILE* file_;
    long long start_;
    std::optional<unsigned long long> end_; // asked for only when a count or a long string needs it
    unsigned long long at_ = 0;
    bool isMoved_ = false;
};

/// A record in memory, whose offset in its file is `start`.
class MemoryBytes : public RecordBytes {
public:
    MemoryBytes(char const* bytes, std::size_t size, unsigned long long start = 0)
        : next_(bytes), start_(start), size_(size), left_(size) {}

    unsigned long long start() const override { return start_; }
    unsigned long long end() override { return start_ + size_; }
    bool read(void* buffer, std::size_t count) override;
    bool skip(unsigned long long count) override;

private:
    char const* next_;
    unsigned long long start_;
    std::size_t size_, left_;
};

} // namespace quarn::detail

#endif
