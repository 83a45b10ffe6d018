// Files of properties: what is accepted is saved again to the same bytes, and what is refused changes nothing. Memory is
// in proportion to the file.
//     byte 0    odd: the rest has no signature, format and checksum, which are added
//     the rest  a file
#include "Memory.h"
#include "support/Allocations.h"
#include "support/TempDir.h"

#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/properties/detail/Crc32.h>
#include <MRCommon/properties/PropertyFile.h>
#include <qn_basic/QN_MetaClassBase.h>

using namespace quarn;

namespace {

template <class Integer> std::string littleEndian(Integer value) {
    std::string bytes;
    for (std::size_t i = 0; i < sizeof value; ++i) bytes += static_cast<char>(value >> 8 * i);
    return bytes;
}

std::string withChecksum(std::string const& bytes) {
    detail::Crc32 crc;
    crc.update(bytes.data(), bytes.size());
    return bytes + littleEndian(crc.value());
}

/// Writes the entries of a good file as saving must write them: in the current schema and layout, true as 1.
class Rewriting {
public:
    Rewriting(std::string const& file, PropertyList const& list) : file_(file) {
        text_ = take(16);
        for (std::size_t i = 0; i < list.size(); ++i) rewriteEntry(list.className(i), list.property(i));
        require(at_ + 4 == file_.size(), "the entries fill the file");
        text_ = withChecksum(text_);
    }

    std::string const& text() const { return text_; }

private:
    void rewriteEntry(std::string const& className, Ppty const* property) {
        std::string const name = take(4 + className.size() + 1);
        require(name == littleEndian(static_cast<std::uint32_t>(className.size() + 1)) + className + '\0',
                "the classes are named in order");
        std::string schema = take(4);
        std::uint64_t size = 0;
        std::string const sizeBytes = take(8);
        for (std::size_t i = 8; i > 0; --i) size = size << 8 | static_cast<unsigned char>(sizeBytes[i - 1]);
        std::string record = take(size);
        if (property != nullptr) {
            schema = littleEndian(QN_MetaClassBase::find(className.c_str())->classSchema());
            if (property->getType() == Ppty::TYPE_BOOL) record.back() = record.back() != 0;
            if (property->getType() == Ppty::TYPE_ENUM) record = written<FileStreamRaw>(*property);
        }
        text_ += name + schema + littleEndian(static_cast<std::uint64_t>(record.size())) + record;
    }

    std::string take(std::size_t count) {
        require(count <= file_.size() - at_, "the entries are inside the file");
        at_ += count;
        return file_.substr(at_ - count, count);
    }

    std::string const& file_;
    std::size_t at_ = 0;
    std::string text_;
};

void requireSavedAlike(std::string const& file, PropertyList const& list) {
    std::string const path = scratch().path("saved");
    FileStatus const status = saveProperties(path, list);
    require(status.ok() && status.message.empty(), "what was loaded can be saved");
    require(bytesIn(path) == Rewriting(file, list).text(), "what was loaded is saved to the same bytes");
}

void requireRefused(FileStatus const& status, PropertyList const& list, Ppty const* kept) {
    require(status.code != FileStatus::Ok && status.code != FileStatus::CannotOpen &&
                status.code != FileStatus::CannotWrite,
            "a file is refused for what it contains");
    require(!status.message.empty() && status.message.find('\n') == std::string::npos &&
                status.message.find('\0') == std::string::npos,
            "what is wrong is one line");
    require(status.fault.good() || status.code == FileStatus::Damaged, "a faulty record is damage");
    require(list.size() == 1 && list.property(0) == kept, "a refused file leaves the list alone");
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Input input(data, size);
    bool const isBare = input.number<unsigned char>() % 2 != 0;
    std::string file(input.rest());
    if (isBare) file = withChecksum("MRPROPS\n" + littleEndian(std::uint32_t{1}) + file);
    std::string const path = scratch().path("input");
    store(path, file);

    PropertyList list;
    list.add(std::make_unique<PptyInt>("kept", 7));
    Ppty const* const kept = list.property(0);
    FileStatus status;
    {
        AllocationLimit const limit(8 * file.size() + 1024); // in proportion to the file
        status = loadProperties(path, list);
    }
    if (status.ok())
        requireSavedAlike(file, list);
    else
        requireRefused(status, list, kept);
    return 0;
}
