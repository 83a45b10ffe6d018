// TempFile: a temporary FILE for stream tests, and bytes written the way a person writes them.
//     TempFile file;
//     { FileStreamRaw out(file); property.writeTo(out); }
//     EXPECT_EQ(file.bytes(), hex("02000000 6100 01"));
#ifndef MRCOMMON_TESTS_SUPPORT_TEMPFILE_H
#define MRCOMMON_TESTS_SUPPORT_TEMPFILE_H

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using Bytes = std::vector<unsigned char>;

/// Hexadecimal digits with blanks anywhere between the pairs.
Bytes hex(std::string_view digits);

class TempFile {
public:
    TempFile();                              ///< empty
    explicit TempFile(Bytes const& content); ///< holds `content`, positioned at its start
    ~TempFile();
    TempFile(TempFile&& other) noexcept : file_(std::exchange(other.file_, nullptr)) {}
    TempFile& operator=(TempFile&&) = delete;

    operator std::FILE*() const { return file_; }
    void rewind() const { std::rewind(file_); }
    std::FILE* fromStart() const { return rewind(), file_; }
    Bytes bytes() const; ///< everything in the file; the position stays

private:
    std::FILE* file_;
};

/// A stream of the given kind that also notes the size of every read and write call.
template <class Stream> class RecordingStream : public Stream {
public:
    using Stream::Stream;

    std::size_t read(void* buffer, std::size_t byteCount) override {
        calls.push_back(byteCount);
        return Stream::read(buffer, byteCount);
    }
    std::size_t write(void const* buffer, std::size_t byteCount) override {
        calls.push_back(byteCount);
        return Stream::write(buffer, byteCount);
    }

    std::vector<std::size_t> calls;
};

#endif
