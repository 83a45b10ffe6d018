// RecordBuffer: a FILE in memory that one record after the other is written to.
//     RecordBuffer record;
//     if (record.write<FileStreamRaw>(property)) use(record.data(), record.size());
#ifndef MRCOMMON_PROPERTIES_DETAIL_RECORDBUFFER_H
#define MRCOMMON_PROPERTIES_DETAIL_RECORDBUFFER_H

#include <MRCommon/properties/Ppty.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace quarn::detail {

class RecordBuffer {
public:
    RecordBuffer() : file_(open_memstream(&bytes_, &size_)) {
        if (file_ == nullptr) throw std::bad_alloc();
    }
    ~RecordBuffer() {
        std::fclose(file_);
        std::free(bytes_);
    }
    RecordBuffer(RecordBuffer const&) = delete;
    RecordBuffer& operator=(RecordBuffer const&) = delete;

    /// Replaces the record; false if the property cannot be written.
    template <class Stream> bool write(Ppty const& property) {
        std::rewind(file_);
        Stream stream(file_);
        property.writeTo(stream);
        return !stream.failed() && std::fflush(file_) == 0;
    }

    char const* data() const { return bytes_; }
    std::size_t size() const { return size_; }

private:
    char* bytes_ = nullptr;
    std::size_t size_ = 0;
    std::FILE* file_;
};

} // namespace quarn::detail

#endif
