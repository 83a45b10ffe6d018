// RecordBytes: the bytes that a check of a record steps over: those of a FILE, or those of a record in memory.
#ifndef MRCOMMON_PROPERTIES_DETAIL_RECORDBYTES_H
#define MRCOMMON_PROPERTIES_DETAIL_RECORDBYTES_H

#include <MRCommon/properties/Ppty.h>
#include <MRCommon/properties/RecordCheck.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

namespace quarn::detail {

class RecordBytes {
public:
    RecordBytes(RecordBytes const&) = delete;
    RecordBytes& operator=(RecordBytes const&) = delete;
    virtual ~RecordBytes() = default;

    unsigned long long start() const { return start_; } ///< the offset of the record
    virtual unsigned long long end() = 0;               ///< the offset past the last byte that there is
    virtual bool putBack() { return true; } ///< puts the position of a FILE back; false if that fails

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

    /// Copies the last of the next `count` bytes, at least one, and moves past all; false if fewer are left.
    bool readLast(char& last, unsigned long long count) {
        if (count > inMemory_.size()) return skip(count - 1) && read(&last, 1);
        last = inMemory_[static_cast<std::size_t>(count) - 1];
        inMemory_.remove_prefix(static_cast<std::size_t>(count));
        return true;
    }

    ///@{
    /// Checks the record that begins at start(), and puts the position back.
    RecordCheck check(Ppty const& pattern, bool raw);
    RecordCheck checkVariant();
    ///@}

protected:
    RecordBytes(unsigned long long start, std::string_view inMemory) : start_(start), inMemory_(inMemory) {}

    ///@{
    /// Do the same if fewer bytes are in memory.
    virtual bool readOn(void* buffer, std::size_t count) = 0;
    virtual bool skipOn(unsigned long long count) = 0;
    ///@}

    unsigned long long start_;  ///< -1 if there is no position
    std::string_view inMemory_; ///< the next bytes, as far as they are in memory

private:
    bool isSeekable() const { return static_cast<long long>(start_) >= 0; }
    RecordCheck resultOf(RecordFields& fields);
};

struct ReadAhead;

/// The bytes of a FILE from its position on. Those that the C library has read ahead are looked at where they are, and
/// those that follow them are copied with pread: moving the position of a FILE costs system calls and its buffer.
class FileBytes final : public RecordBytes {
public:
    explicit FileBytes(std::FILE* file);
    ~FileBytes() override { FileBytes::putBack(); }

    unsigned long long end() override;
    /// Also clears the mark of an end that was reached.
    bool putBack() override { return !std::exchange(isMoved_, false) || moveTo(start_); }

private:
    FileBytes(std::FILE* file, ReadAhead const& ahead);

    bool readOn(void* buffer, std::size_t count) override;
    bool skipOn(unsigned long long count) override;

    unsigned long long at() const { return endInMemory_ - inMemory_.size(); }
    bool moveTo(unsigned long long position);
    std::size_t copyAt(unsigned long long position);
    void copyNext();

    std::FILE* file_;
    bool isReadAhead_; // then the FILE has a descriptor and nothing left to write
    bool isMoved_ = false;
    unsigned long long endInMemory_;        // the offset past `inMemory_`
    std::optional<unsigned long long> end_; // asked for only when a count or a long string needs it
    std::array<char, 1024> copied_;
};

/// A record in memory, whose offset in its file is `start`.
class MemoryBytes final : public RecordBytes {
public:
    MemoryBytes(char const* bytes, std::size_t size, unsigned long long start = 0)
        : RecordBytes(start, {bytes, size}), end_(start + size) {}

    unsigned long long end() override { return end_; }

private:
    bool readOn(void*, std::size_t) override { return false; }
    bool skipOn(unsigned long long) override { return false; }

    unsigned long long end_;
};

} // namespace quarn::detail

#endif
