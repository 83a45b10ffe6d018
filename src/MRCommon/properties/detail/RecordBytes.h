// RecordBytes: the bytes that a check of a record steps over: those of a FILE, or those of a record in memory.
#ifndef MRCOMMON_PROPERTIES_DETAIL_RECORDBYTES_H
#define MRCOMMON_PROPERTIES_DETAIL_RECORDBYTES_H

#include <MRCommon/properties/Ppty.h>
#include <MRCommon/properties/RecordCheck.h>

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string_view>

namespace quarn::detail {

class RecordBytes {
public:
    RecordBytes(RecordBytes const&) = delete;
    RecordBytes& operator=(RecordBytes const&) = delete;
    virtual ~RecordBytes() = default;

    virtual unsigned long long start() const = 0; ///< the offset of the record
    virtual unsigned long long end() = 0;         ///< the offset past the last byte that there is

    /// Copies the next bytes and moves past them; false if fewer are left.
    bool read(void* buffer, std::size_t count) {
        if (count > inMemory_.size()) return readOn(buffer, count);
        std::memcpy(buffer, inMemory_.data(), count);
        inMemory_.remove_prefix(count);
        return true;
    }

    /// Moves past bytes; false if fewer are left.
    bool skip(unsigned long long count) {
        if (count > inMemory_.size()) return skipOn(count);
        inMemory_.remove_prefix(static_cast<std::size_t>(count));
        return true;
    }

    ///@{
    /// Checks the record that begins at start().
    RecordCheck check(Ppty const& pattern, bool raw);
    RecordCheck checkVariant();
    ///@}

protected:
    explicit RecordBytes(std::string_view inMemory) : inMemory_(inMemory) {}

    ///@{
    /// Do the same if fewer bytes are in memory.
    virtual bool readOn(void* buffer, std::size_t count) = 0;
    virtual bool skipOn(unsigned long long count) = 0;
    ///@}

    std::string_view inMemory_; ///< the next bytes, as far as they are in memory

private:
    template <class Walk> RecordCheck walk(bool raw, Walk const& walkFields);
};

/// The bytes of a FILE from its position on. Those that the C library has read ahead are looked at where they are, since
/// moving the position of a FILE costs a system call.
class FileBytes : public RecordBytes {
public:
    explicit FileBytes(std::FILE* file);
    ~FileBytes() override; ///< puts the position back

    bool isSeekable() const { return start_ >= 0; }
    bool putBack(); ///< puts the position back; false if that fails

    unsigned long long start() const override { return static_cast<unsigned long long>(start_); }
    unsigned long long end() override;

private:
    bool readOn(void* buffer, std::size_t count) override;
    bool skipOn(unsigned long long count) override;

    unsigned long long at() const { return endInMemory_ - inMemory_.size(); }
    bool moveTo(unsigned long long position);

    std::FILE* file_;
    long long start_;
    std::optional<unsigned long long> end_; // asked for only when a count or a long string needs it
    unsigned long long filePosition_;
    unsigned long long endInMemory_; // the offset past `inMemory_`
    bool isMoved_ = false;
};

/// A record in memory, whose offset in its file is `start`.
class MemoryBytes : public RecordBytes {
public:
    MemoryBytes(char const* bytes, std::size_t size, unsigned long long start = 0)
        : RecordBytes({bytes, size}), start_(start), size_(size) {}

    unsigned long long start() const override { return start_; }
    unsigned long long end() override { return start_ + size_; }

private:
    bool readOn(void*, std::size_t) override { return false; }
    bool skipOn(unsigned long long) override { return false; }

    unsigned long long start_;
    std::size_t size_;
};

} // namespace quarn::detail

#endif
