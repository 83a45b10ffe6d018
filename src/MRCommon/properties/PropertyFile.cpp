#include <MRCommon/properties/PropertyFile.h>

#include <MRCommon/properties/detail/AtomicFile.h>
#include <MRCommon/properties/detail/Crc32.h>
#include <MRCommon/properties/detail/EnumLayout.h>
#include <MRCommon/properties/detail/PropertyClass.h>
#include <MRCommon/properties/detail/RecordBuffer.h>
#include <MRCommon/properties/detail/RecordBytes.h>
#include <MRCommon/properties/QN_MetaClass.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <map>
#include <new>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace quarn {

// ---------------------------------------------------------------------------
// The list

PropertyList::PropertyList() = default;
PropertyList::PropertyList(PropertyList&& other) noexcept = default;
PropertyList& PropertyList::operator=(PropertyList&& other) noexcept = default;
PropertyList::~PropertyList() = default;

void PropertyList::add(std::unique_ptr<Ppty> property) {
    if (property == nullptr) return;
    std::string name = property->getClassName().c_str();
    entries_.push_back({std::move(name), std::move(property), 0, {}});
}

Ppty* PropertyList::property(std::size_t i) const {
    return i < entries_.size() ? entries_[i].property.get() : nullptr;
}

std::string const& PropertyList::className(std::size_t i) const {
    static std::string const none;
    return i < entries_.size() ? entries_[i].className : none;
}

Ppty* PropertyList::find(QN_String const& name) const {
    auto const found = std::find_if(entries_.begin(), entries_.end(), [&](Entry const& entry) {
        return entry.property != nullptr && entry.property->getName() == name;
    });
    return found == entries_.end() ? nullptr : found->property.get();
}

void PropertyList::clear() { entries_.clear(); }

void PropertyList::addUnknown(std::string const& className, unsigned int schema, std::string const& record) {
    if (className.empty() || className.find('\0') != std::string::npos)
        throw std::invalid_argument("the name of a class is empty or contains a NUL");
    entries_.push_back({className, nullptr, schema, record});
}

unsigned int PropertyList::unknownSchema(std::size_t i) const {
    return i < entries_.size() ? entries_[i].schema : 0;
}

std::string const& PropertyList::unknownRecord(std::size_t i) const {
    static std::string const none;
    return i < entries_.size() ? entries_[i].bytes : none;
}

struct detail::PropertyListAccess {
    using Entry = PropertyList::Entry;
    static std::vector<Entry> const& entries(PropertyList const& list) { return list.entries_; }
    static std::vector<Entry>& entries(PropertyList& list) { return list.entries_; }
};

namespace {

using Access = detail::PropertyListAccess;
using Entry = Access::Entry;

constexpr std::array<char, 8> signature{'M', 'R', 'P', 'R', 'O', 'P', 'S', '\n'};
constexpr std::uint32_t format = 1;

/// The size of an entry whose class has no name and whose record has no byte.
constexpr unsigned long long leastEntry = 4 + 1 + 4 + 8;

/// An integer of the file, least significant byte first.
template <class Integer> std::array<char, sizeof(Integer)> toBytes(Integer value) {
    std::array<char, sizeof(Integer)> bytes;
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(value >> 8 * i & 0xFF);
    return bytes;
}

template <class Integer> Integer fromBytes(std::array<char, sizeof(Integer)> const& bytes) {
    Integer value = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        value |= static_cast<Integer>(static_cast<unsigned char>(bytes[i])) << 8 * i;
    return value;
}

std::string textOf(char const* pattern, unsigned long long number) {
    std::array<char, 128> text{};
    std::snprintf(text.data(), text.size(), pattern, number);
    return text.data();
}

/// Returns text such as "entry 3 (PptyFloat): ". Control characters of a damaged name become question marks.
std::string placeOf(std::size_t i, std::string className) {
    std::replace_if(
        className.begin(), className.end(), [](unsigned char c) { return c < 32 || c == 127; }, '?');
    return textOf("entry %llu (", i + 1) + className + "): ";
}

/// What ends saving or loading; caught at their outermost level.
struct Failure {
    FileStatus status;
};

[[noreturn]] void fail(FileStatus::Code code, std::string const& path, std::string const& reason,
                       RecordCheck const& fault = {}) {
    throw Failure{{code, path + ": " + reason, fault}};
}

template <class Act> FileStatus statusOf(FileStatus::Code systemFailure, Act const& act) {
    try {
        act();
    } catch (Failure& failure) {
        return std::move(failure.status);
    } catch (detail::SystemFailure const& failure) {
        return {systemFailure, failure.what(), {}, failure.error};
    }
    return {};
}

// ---------------------------------------------------------------------------
// Saving

/// Writes a file with its checksum, in large pieces.
class ChecksumWriter {
public:
    explicit ChecksumWriter(std::string const& path) : file_(path) { pending_.reserve(pieceSize); }

    void write(char const* bytes, std::size_t size) {
        crc_.update(bytes, size);
        if (pending_.size() + size > pieceSize) flush();
        if (size > pieceSize)
            file_.write(bytes, size);
        else
            pending_.append(bytes, size);
    }

    template <class Integer> void write(Integer value) {
        auto const bytes = toBytes(value);
        write(bytes.data(), bytes.size());
    }

    /// A string with its NUL.
    void write(std::string const& text) {
        write(static_cast<std::uint32_t>(text.size() + 1));
        write(text.c_str(), text.size() + 1);
    }

    void commit() {
        write(crc_.value());
        flush();
        file_.commit();
    }

private:
    static constexpr std::size_t pieceSize = 1 << 16;

    void flush() {
        file_.write(pending_.data(), pending_.size());
        pending_.clear();
    }

    detail::AtomicFile file_;
    detail::Crc32 crc_;
    std::string pending_;
};

class Saving {
public:
    explicit Saving(std::string const& path) : path_(path), out_(path) {}

    void run(std::vector<Entry> const& entries) {
        if (entries.size() > UINT32_MAX) fail(FileStatus::CannotWrite, path_, "Too many entries");
        out_.write(signature.data(), signature.size());
        out_.write(format);
        out_.write(static_cast<std::uint32_t>(entries.size()));
        for (std::size_t i = 0; i < entries.size(); ++i) write(i, entries[i]);
        out_.commit();
    }

private:
    void write(std::size_t i, Entry const& entry) {
        if (entry.property == nullptr) {
            writeEntry(entry.className, entry.schema, entry.bytes.data(), entry.bytes.size());
            return;
        }
        Ppty const& property = *entry.property;
        if (!record_.write<FileStreamRaw>(property))
            fail(FileStatus::CannotWrite, path_,
                 placeOf(i, entry.className) + "its record cannot be written");
        RecordCheck const check = detail::MemoryBytes(record_.data(), record_.size()).check(property, true);
        if (!check.good())
            fail(FileStatus::CannotWrite, path_,
                 placeOf(i, entry.className) + "its record could not be read again: " + check.message());
        writeEntry(entry.className, property.getClassSchema(), record_.data(), record_.size());
    }

    void writeEntry(std::string const& className, unsigned int schema, char const* record, std::size_t size) {
        out_.write(className);
        out_.write(static_cast<std::uint32_t>(schema));
        out_.write(static_cast<std::uint64_t>(size));
        out_.write(record, size);
    }

    std::string const& path_;
    ChecksumWriter out_;
    detail::RecordBuffer record_;
};

// ---------------------------------------------------------------------------
// Loading

/// A whole file in memory, which nobody changes between check and use, and a FILE on it for readFrom().
class FileInMemory {
public:
    /// Refuses a file that does not begin as a property file before it takes memory.
    explicit FileInMemory(std::string const& path) {
        Descriptor const descriptor(path);
        size_ = descriptor.size();
        bytes_.reset(new char[std::max(size_, signature.size())]); // not zeroed
        descriptor.read(bytes_.get(), std::min(size_, signature.size()));
        if (size_ < signature.size() || std::memcmp(bytes_.get(), signature.data(), signature.size()) != 0)
            fail(FileStatus::NotAPropertyFile, path, "Not a property file");
        descriptor.read(bytes_.get() + signature.size(), size_ - signature.size());
        file_.reset(fmemopen(bytes_.get(), size_, "rb"));
        if (file_ == nullptr) throw std::bad_alloc();
    }

    char const* data() const { return bytes_.get(); }
    std::size_t size() const { return size_; }
    std::FILE* file() const { return file_.get(); }

private:
    class Descriptor {
    public:
        explicit Descriptor(std::string const& path)
            : path_(path),
              descriptor_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) { // waits for no pipe
            if (descriptor_ < 0) detail::throwErrno(path);
        }
        ~Descriptor() { close(descriptor_); }
        Descriptor(Descriptor const&) = delete;
        Descriptor& operator=(Descriptor const&) = delete;

        std::size_t size() const {
            struct stat status;
            if (fstat(descriptor_, &status) != 0) detail::throwErrno(path_);
            if (!S_ISREG(status.st_mode)) fail(FileStatus::CannotOpen, path_, "Not a regular file");
            return static_cast<std::size_t>(status.st_size);
        }

        void read(char* buffer, std::size_t size) const {
            while (size != 0) {
                ssize_t const delivered = ::read(descriptor_, buffer, size);
                if (delivered < 0 && errno == EINTR) continue;
                if (delivered < 0) detail::throwErrno(path_);
                if (delivered == 0) fail(FileStatus::CannotOpen, path_, "The file became shorter meanwhile");
                buffer += delivered;
                size -= static_cast<std::size_t>(delivered);
            }
        }

    private:
        std::string const& path_;
        int descriptor_;
    };

    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::size_t size_ = 0;
    std::unique_ptr<char[]> bytes_;
    std::unique_ptr<std::FILE, Close> file_;
};

class Loading {
public:
    explicit Loading(std::string const& path) : path_(path), file_(path), end_(file_.size()) {}

    std::vector<Entry> run() {
        auto const found = integer<std::uint32_t>("format");
        if (found == 0) fail(FileStatus::Damaged, path_, "format 0 does not exist");
        if (found > format)
            fail(FileStatus::NewerFormat, path_, textOf("format %llu is newer than this library", found));
        verifyChecksum();
        return readEntries();
    }

private:
    struct Class {
        QN_MetaClassBase const* metaClass; // null if the class is not registered
        bool isProperty;
    };

    void verifyChecksum() {
        std::array<char, sizeof(std::uint32_t)> stored;
        if (left() < 2 * stored.size()) damaged("checksum", end_, "the file ends before it");
        end_ -= stored.size();
        detail::Crc32 crc;
        crc.update(file_.data(), end_);
        std::memcpy(stored.data(), file_.data() + end_, stored.size());
        if (fromBytes<std::uint32_t>(stored) != crc.value())
            damaged("checksum", end_, "it differs from that of the file's bytes");
    }

    std::vector<Entry> readEntries() {
        detail::CurrentEnumLayout const layout; // as writeTo writes it
        std::size_t const start = at_;
        auto const count = integer<std::uint32_t>("number of entries");
        if (count > left() / leastEntry) damaged("number of entries", start, tooLarge);
        std::vector<Entry> entries;
        for (number_ = 1; number_ <= count; ++number_) entries.push_back(readEntry());
        number_ = 0;
        if (left() != 0) damaged("last entry", at_, textOf("%llu bytes follow it", left()));
        return entries;
    }

    Entry readEntry() {
        className_.clear();
        std::size_t const nameStart = at_;
        className_ = className();
        auto const schema = integer<std::uint32_t>("schema");
        std::size_t const sizeStart = at_;
        auto const size = integer<std::uint64_t>("size of the record");
        if (size > left()) damaged("size of the record", sizeStart, tooLarge);
        Class const& known = classOf(className_);
        std::string_view const record(take(size), size);
        if (known.metaClass == nullptr || (known.isProperty && schema > known.metaClass->classSchema()))
            return {className_, nullptr, schema, std::string(record)};
        if (!known.isProperty) damaged("name of the class", nameStart, "the class is not a property");
        return {className_, readProperty(*known.metaClass, record), 0, {}};
    }

    std::unique_ptr<Ppty> readProperty(QN_MetaClassBase const& metaClass, std::string_view record) {
        std::unique_ptr<Ppty> property(static_cast<Ppty*>(metaClass.metaNew()));
        std::size_t const start = at_ - record.size();
        RecordCheck const check =
            detail::MemoryBytes(record.data(), record.size(), start).check(*property, true);
        if (!check.good()) fail(FileStatus::Damaged, path_, place() + check.message(), check);
        std::fseek(file_.file(), static_cast<long>(start), SEEK_SET);
        FileStreamRaw stream(file_.file());
        property->readFrom(stream);
        if (stream.failed() || std::ftell(file_.file()) != static_cast<long>(at_))
            damaged("record", start, textOf("reading it does not take its %llu bytes", record.size()));
        return property;
    }

    std::string className() {
        std::size_t const start = at_;
        auto const size = integer<std::uint32_t>("name of the class");
        if (size > left()) damaged("name of the class", start, tooLarge);
        std::string name(take(size), size);
        if (name.empty() || name.find('\0') != name.size() - 1)
            damaged("name of the class", start, "its first NUL is not its last byte");
        name.pop_back();
        return name;
    }

    Class const& classOf(std::string const& name) {
        auto const [found, isNew] = classes_.try_emplace(name);
        if (isNew) {
            QN_MetaClassBase const* const metaClass = QN_MetaClassBase::find(name.c_str());
            found->second = {metaClass, metaClass != nullptr && detail::isPropertyClass(*metaClass)};
        }
        return found->second;
    }

    template <class Integer> Integer integer(char const* field) {
        std::array<char, sizeof(Integer)> bytes;
        if (bytes.size() > left()) damaged(field, at_, "the data ends inside it");
        std::memcpy(bytes.data(), take(bytes.size()), bytes.size());
        return fromBytes<Integer>(bytes);
    }

    /// Moves past bytes that are there, and returns them.
    char const* take(std::size_t size) {
        at_ += size;
        return file_.data() + at_ - size;
    }

    std::size_t left() const { return end_ - at_; }

    std::string place() const { return number_ == 0 ? std::string() : placeOf(number_ - 1, className_); }

    [[noreturn]] void damaged(char const* field, std::size_t offset, std::string const& reason) const {
        fail(FileStatus::Damaged, path_, place() + field + textOf(" at byte %llu: ", offset) + reason);
    }

    static constexpr char const* tooLarge = "it exceeds the data that is left";

    std::string const& path_;
    FileInMemory file_;
    std::size_t at_ = signature.size();
    std::size_t end_;        // without the checksum, once that is verified
    std::size_t number_ = 0; // of the entry that is being read, from 1
    std::string className_;  // of that entry
    std::map<std::string, Class> classes_;
};

} // namespace

FileStatus saveProperties(std::string const& path, PropertyList const& list) {
    return statusOf(FileStatus::CannotWrite, [&] {
        detail::CurrentEnumLayout const layout; // as writeTo writes it
        Saving(path).run(Access::entries(list));
    });
}

FileStatus loadProperties(std::string const& path, PropertyList& list) {
    return statusOf(FileStatus::CannotOpen, [&] { Access::entries(list) = Loading(path).run(); });
}

} // namespace quarn
