// The same named values of ten kinds in each library: our properties and those that a user would take instead.
//     auto items = makeItems<Ours>(10000);      // names of twelve characters
//     digestOf<Ours>(items)                     // equal for every library
// A library is a struct with the types of its ten kinds, its streams, and one function for each row of the benchmark.
// The peers keep a short name inside the item, next to a pointer to the value; the archives keep both in one object.
#ifndef MRCOMMON_BENCHMARKS_PROPERTYPEERS_H
#define MRCOMMON_BENCHMARKS_PROPERTYPEERS_H

#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/streams/FileStreamRaw.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <istream>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#ifdef BENCH_BOOST_SERIALIZATION
#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/serialization/array.hpp>
#include <boost/serialization/string.hpp>
#endif
#ifdef BENCH_CEREAL
#include <cereal/archives/binary.hpp>
#include <cereal/types/array.hpp>
#include <cereal/types/string.hpp>
#endif
#ifdef BENCH_OPENEXR
#include <ImfBoxAttribute.h>
#include <ImfChromaticitiesAttribute.h>
#include <ImfCompressionAttribute.h>
#include <ImfDoubleAttribute.h>
#include <ImfFloatAttribute.h>
#include <ImfHeader.h>
#include <ImfIntAttribute.h>
#include <ImfIO.h>
#include <ImfStdIO.h>
#include <ImfStringAttribute.h>
#include <ImfTimeCodeAttribute.h>
#include <ImfVecAttribute.h>
#include <ImfVersion.h>
#include <ImfXdr.h>
#endif
#ifdef BENCH_OPENVDB
#include <openvdb/Metadata.h>
#include <openvdb/openvdb.h>
#include <openvdb/util/Name.h>
#endif
#ifdef BENCH_QT
#include <QByteArray>
#include <QDataStream>
#include <QFile>
#include <QVariant>
#endif

#ifdef BENCH_QT
template <std::size_t Size, class T>
QDataStream& operator<<(QDataStream& out, std::array<T, Size> const& value) {
    out.writeRawData(reinterpret_cast<char const*>(value.data()), sizeof value);
    return out;
}
template <std::size_t Size, class T> QDataStream& operator>>(QDataStream& in, std::array<T, Size>& value) {
    in.readRawData(reinterpret_cast<char*>(value.data()), sizeof value);
    return in;
}
using Float3 = std::array<float, 3>;
using Float4 = std::array<float, 4>;
using Double3 = std::array<double, 3>;
using Double4 = std::array<double, 4>;
Q_DECLARE_METATYPE(Float3)
Q_DECLARE_METATYPE(Float4)
Q_DECLARE_METATYPE(Double3)
Q_DECLARE_METATYPE(Double4)
#endif

namespace peers {

constexpr std::size_t kindCount = 10;
constexpr std::size_t mostBytes = 400; ///< more than any library takes for an item

template <class T> struct Kind { using Type = T; };
template <class... T> struct Kinds {
    static_assert(sizeof...(T) == kindCount);

    /// Calls `visit(Kind<T>())` for the kind of this number.
    template <class Visit> static void visit(std::size_t kind, Visit const& visit) {
        std::size_t number = 0;
        ((number++ == kind ? visit(Kind<T>()) : void()), ...);
    }
};

inline std::string nameOf(std::size_t i) {
    std::string const digits = std::to_string(i);
    return "item" + std::string(8 - std::min<std::size_t>(8, digits.size()), '0') + digits;
}

template <class T> constexpr bool isText = false;
template <> inline constexpr bool isText<std::string> = true;
template <> inline constexpr bool isText<quarn::QN_String> = true;
#ifdef BENCH_QT
template <> inline constexpr bool isText<QByteArray> = true;
#endif

/// The vectors and colours of every library are three or four floats or doubles.
template <class T>
using Components =
    std::conditional_t<sizeof(T) == 8, std::array<long long, 1>,
                       std::conditional_t<(sizeof(T) < 24), std::array<float, sizeof(T) / sizeof(float)>,
                                          std::array<double, sizeof(T) / sizeof(double)>>>;

template <class T> T valueOf(std::size_t i) {
    if constexpr (isText<T>) {
        return T(("a text of some length " + std::to_string(i)).c_str());
    } else if constexpr (std::is_enum_v<T> || std::is_same_v<T, bool>) {
        return static_cast<T>(i / kindCount % 2);
    } else if constexpr (std::is_arithmetic_v<T>) {
        return static_cast<T>(i);
    } else {
        Components<T> all;
        all.fill(static_cast<typename Components<T>::value_type>(i));
        T value;
        std::memcpy(static_cast<void*>(&value), all.data(), sizeof value);
        return value;
    }
}

/// Values that are equal in all libraries have the same text.
template <class T> std::string shownValue(T const& value) {
    if constexpr (std::is_same_v<T, quarn::QN_String>) {
        return value.c_str();
    } else if constexpr (isText<T>) {
        return {value.data(), static_cast<std::size_t>(value.size())};
    } else if constexpr (std::is_enum_v<T>) {
        return std::to_string(static_cast<int>(value));
    } else if constexpr (std::is_arithmetic_v<T>) {
        return std::to_string(static_cast<long>(value));
    } else {
        Components<T> all;
        std::memcpy(all.data(), &value, sizeof value);
        return std::to_string(static_cast<long>(all.back()));
    }
}

/// Bytes in memory that a library saves to and loads from.
struct Memory {
    explicit Memory(std::size_t itemCount) : bytes(itemCount * mostBytes) {}
    std::vector<char> bytes;
};

/// What the libraries with standard streams write to and read from.
class MemoryBuffer : public std::streambuf {
public:
    explicit MemoryBuffer(Memory& memory) {
        char* const begin = memory.bytes.data();
        setp(begin, begin + memory.bytes.size());
        setg(begin, begin, begin + memory.bytes.size());
    }
};

inline void require(bool holds) {
    if (!holds) throw std::runtime_error("not saved or loaded");
}

/// An ostream or istream in memory.
template <class Stream> class MemoryStream : private MemoryBuffer, public Stream {
public:
    explicit MemoryStream(Memory& memory)
        : MemoryBuffer(memory), Stream(static_cast<std::streambuf*>(this)) {}
    Stream& stream() { return *this; }
};

/// The same with a file.
template <class Stream> class PathStream {
public:
    explicit PathStream(std::string const& path) : stream_(path, std::ios::binary) {}
    ~PathStream() noexcept(false) {
        stream_.flushIfOut();
        require(stream_.good());
    }
    Stream& stream() { return stream_; }

private:
    struct Flushed : Stream {
        using Stream::Stream;
        void flushIfOut() {
            if constexpr (std::is_same_v<Stream, std::ofstream>) this->flush();
        }
    };
    Flushed stream_;
};

// ---------------------------------------------------------------------------

struct Ours {
    static constexpr char const* name = "ours";
    using Types = Kinds<quarn::PptyInt, quarn::PptyInt64, quarn::PptyFloat, quarn::PptyDouble,
                        quarn::PptyBool, quarn::PptyString, quarn::PptyVector3F, quarn::PptyVector3D,
                        quarn::PptyColor4F, quarn::PptyColor4D>;
    using Item = std::unique_ptr<quarn::Ppty>;

    class MemoryOut : public quarn::FileStreamRaw {
    public:
        explicit MemoryOut(Memory& memory) : next_(memory.bytes.data()) {}
        std::size_t read(void* buffer, std::size_t byteCount) override {
            std::memcpy(buffer, next_, byteCount);
            next_ += byteCount;
            return byteCount;
        }
        std::size_t write(void const* buffer, std::size_t byteCount) override {
            std::memcpy(next_, buffer, byteCount);
            next_ += byteCount;
            return byteCount;
        }

    private:
        char* next_;
    };
    using MemoryIn = MemoryOut;

    class File {
    public:
        File(std::string const& path, char const* mode)
            : file_(std::fopen(path.c_str(), mode)), stream_(file_) {
            require(file_ != nullptr);
        }
        ~File() noexcept(false) {
            require(stream_.finish());
            std::fclose(file_);
        }
        File(File const&) = delete;
        File& operator=(File const&) = delete;
        operator quarn::FileStreamRaw&() { return stream_; }

    private:
        std::FILE* file_;
        quarn::FileStreamRaw stream_;
    };
    struct FileOut : File {
        explicit FileOut(std::string const& path) : File(path, "wb") {}
    };
    struct FileIn : File {
        explicit FileIn(std::string const& path) : File(path, "rb") {}
    };

    template <class T> using Value = std::decay_t<decltype(*std::declval<T&>().getRefToValue())>;
    template <class T> static Item make(std::string const& itemName, std::size_t i) {
        return std::make_unique<T>(itemName.c_str(), valueOf<Value<T>>(i));
    }
    static std::string itemName(Item const& item) { return item->getName().c_str(); }
    template <class T> static std::string shown(Item const& item) {
        return shownValue(*static_cast<T&>(*item).getRefToValue());
    }
    using ClassName = quarn::QN_String;
    template <class T> static ClassName className() { return T::metaClass().className(); }

    static void write(Item const& item, quarn::FileStreamRaw& out) { item->writeTo(out); }
    static void read(Item& item, quarn::FileStreamRaw& in) { item->readFrom(in); }
    static void set(Item& item, Item const& other) { item->setValue(other->getVariantValue()); }
    static Item create(ClassName const& className) {
        return Item(static_cast<quarn::Ppty*>(quarn::QN_MetaClassBase::find(className)->metaNew()));
    }
    static Item clone(Item const& item) { return Item(item->clone()); }
};

/// The least that our layout allows: objects as large as ours, with the same allocations, and one virtual call for each
/// operation. Nothing is looked up, and no kind is compared.
struct Floor {
    static constexpr char const* name = "floor";
    using Types = Kinds<int, long long, float, double, bool, quarn::QN_String, std::array<float, 3>,
                        std::array<double, 3>, std::array<float, 4>, std::array<double, 4>>;
    struct Object {
        explicit Object(quarn::QN_String const& text) : itemName(text) {}
        Object(Object const&) = default;
        virtual ~Object() = default;
        virtual Object* clone() const = 0;
        virtual void set(Object const& other) = 0;
        quarn::QN_String itemName;
    };
    template <class T> struct Typed : Object {
        Typed(quarn::QN_String const& text, T const& content) : Object(text), value(new T(content)) {}
        Typed(Typed const& other) : Object(other), value(new T(*other.value)) {}
        Object* clone() const override { return new Typed(*this); }
        void set(Object const& other) override { *value = *static_cast<Typed const&>(other).value; }
        std::unique_ptr<T> value;
        std::array<void*, 2> unused{}; // what else a variant contains
    };
    using Item = std::unique_ptr<Object>;
    using ClassName = Item (*)();

    template <class T> static Item make(std::string const& itemName, std::size_t i) {
        return std::make_unique<Typed<T>>(itemName.c_str(), valueOf<T>(i));
    }
    static std::string itemName(Item const& item) { return item->itemName.c_str(); }
    template <class T> static std::string shown(Item const& item) {
        return shownValue(*static_cast<Typed<T>&>(*item).value);
    }
    template <class T> static ClassName className() {
        return +[] {
            static quarn::QN_String const none;
            return Item(new Typed<T>(none, T()));
        };
    }
    static void set(Item& item, Item const& other) { item->set(*other); }
    static Item create(ClassName makeDefault) { return makeDefault(); }
    static Item clone(Item const& item) { return Item(item->clone()); }
};
static_assert(sizeof(Floor::Typed<int>) == sizeof(quarn::PptyInt));

// ---------------------------------------------------------------------------

#ifdef BENCH_OPENVDB
struct OpenVdb {
    static constexpr char const* name = "OpenVDB";
    using Types =
        Kinds<openvdb::Int32Metadata, openvdb::Int64Metadata, openvdb::FloatMetadata, openvdb::DoubleMetadata,
              openvdb::BoolMetadata, openvdb::StringMetadata, openvdb::Vec3SMetadata, openvdb::Vec3DMetadata,
              openvdb::Vec4SMetadata, openvdb::Vec4DMetadata>;
    struct Item {
        std::string itemName;
        openvdb::Metadata::Ptr value;
    };
    using MemoryOut = MemoryStream<std::ostream>;
    using MemoryIn = MemoryStream<std::istream>;
    using FileOut = PathStream<std::ofstream>;
    using FileIn = PathStream<std::ifstream>;
    using ClassName = std::string;

    template <class T> using Value = std::decay_t<decltype(std::declval<T&>().value())>;
    template <class T> static Item make(std::string const& itemName, std::size_t i) {
        return {itemName, std::make_shared<T>(valueOf<Value<T>>(i))};
    }
    static std::string itemName(Item const& item) { return item.itemName; }
    template <class T> static std::string shown(Item const& item) {
        return shownValue(static_cast<T&>(*item.value).value());
    }
    template <class T> static ClassName className() {
        if (!T::isRegisteredType()) T::registerType();
        return T::staticTypeName();
    }

    template <class Out> static void write(Item const& item, Out& out) {
        openvdb::writeString(out.stream(), item.itemName);
        item.value->write(out.stream());
    }
    template <class In> static void read(Item& item, In& in) {
        item.itemName = openvdb::readString(in.stream());
        item.value->read(in.stream());
    }
    static void set(Item& item, Item const& other) { item.value->copy(*other.value); }
    static Item create(ClassName const& className) {
        return {std::string(), openvdb::Metadata::createMetadata(className)};
    }
    static Item clone(Item const& item) { return {item.itemName, item.value->copy()}; }
};
#endif

#ifdef BENCH_OPENEXR
/// Kinds that it lacks are replaced by others with as many bytes.
struct OpenExr {
    static constexpr char const* name = "OpenEXR";
    using Types = Kinds<Imf::IntAttribute, Imf::TimeCodeAttribute, Imf::FloatAttribute, Imf::DoubleAttribute,
                        Imf::CompressionAttribute, Imf::StringAttribute, Imf::V3fAttribute, Imf::V3dAttribute,
                        Imf::Box2fAttribute, Imf::ChromaticitiesAttribute>;
    struct Item {
        std::string itemName;
        std::unique_ptr<Imf::Attribute> value;
    };
    class MemoryOut : public Imf::OStream {
    public:
        explicit MemoryOut(Memory& memory) : OStream("memory"), begin_(memory.bytes.data()), next_(begin_) {}
        void write(char const bytes[], int count) override {
            std::memcpy(next_, bytes, static_cast<std::size_t>(count));
            next_ += count;
        }
        std::uint64_t tellp() override { return static_cast<std::uint64_t>(next_ - begin_); }
        void seekp(std::uint64_t position) override { next_ = begin_ + position; }

    private:
        char *begin_, *next_;
    };
    class MemoryIn : public Imf::IStream {
    public:
        explicit MemoryIn(Memory& memory) : IStream("memory"), begin_(memory.bytes.data()), next_(begin_) {}
        bool read(char bytes[], int count) override {
            std::memcpy(bytes, next_, static_cast<std::size_t>(count));
            next_ += count;
            return true;
        }
        std::uint64_t tellg() override { return static_cast<std::uint64_t>(next_ - begin_); }
        void seekg(std::uint64_t position) override { next_ = begin_ + position; }

    private:
        char *begin_, *next_;
    };
    struct FileOut : Imf::StdOFStream {
        explicit FileOut(std::string const& path) : StdOFStream(path.c_str()) {}
    };
    struct FileIn : Imf::StdIFStream {
        explicit FileIn(std::string const& path) : StdIFStream(path.c_str()) {}
    };
    using ClassName = std::string;

    template <class T> using Value = std::decay_t<decltype(std::declval<T&>().value())>;
    template <class T> static Item make(std::string const& itemName, std::size_t i) {
        return {itemName, std::make_unique<T>(valueOf<Value<T>>(i))};
    }
    static std::string itemName(Item const& item) { return item.itemName; }
    template <class T> static std::string shown(Item const& item) {
        return shownValue(static_cast<T&>(*item.value).value());
    }
    template <class T> static ClassName className() {
        static Imf::Header const registersAllClasses;
        return T::staticTypeName();
    }

    /// A text has no size of its own in this format, so it is stored next to the value, as its headers do.
    static void write(Item const& item, Imf::OStream& out) {
        namespace Xdr = Imf::Xdr;
        Xdr::write<Imf::StreamIO>(out, item.itemName.c_str());
        auto const* const text = dynamic_cast<Imf::StringAttribute const*>(item.value.get());
        Xdr::write<Imf::StreamIO>(out, text == nullptr ? 0 : static_cast<int>(text->value().size()));
        item.value->writeValueTo(out, Imf::EXR_VERSION);
    }
    static void read(Item& item, Imf::IStream& in) {
        namespace Xdr = Imf::Xdr;
        std::array<char, 256> itemName;
        Xdr::read<Imf::StreamIO>(in, static_cast<int>(itemName.size()), itemName.data());
        item.itemName = itemName.data();
        int size = 0;
        Xdr::read<Imf::StreamIO>(in, size);
        item.value->readValueFrom(in, size, Imf::EXR_VERSION);
    }
    static void set(Item& item, Item const& other) { item.value->copyValueFrom(*other.value); }
    static Item create(ClassName const& className) {
        return {std::string(),
                std::unique_ptr<Imf::Attribute>(Imf::Attribute::newAttribute(className.c_str()))};
    }
    static Item clone(Item const& item) {
        return {item.itemName, std::unique_ptr<Imf::Attribute>(item.value->copy())};
    }
};
#endif

#ifdef BENCH_QT
/// Its copies share names, texts and large values with the original, so it has no clone to compare.
struct Qt {
    static constexpr char const* name = "Qt";
    using Types = Kinds<int, qlonglong, float, double, bool, QByteArray, std::array<float, 3>,
                        std::array<double, 3>, std::array<float, 4>, std::array<double, 4>>;
    struct Item {
        QByteArray itemName;
        QVariant value;
    };
    struct MemoryOut : QDataStream {
        explicit MemoryOut(Memory&) : QDataStream(&bytes(), QIODevice::WriteOnly) {}
    };
    struct MemoryIn : QDataStream {
        explicit MemoryIn(Memory&) : QDataStream(bytes()) {}
    };
    /// Its streams in memory need an array of its own.
    static QByteArray& bytes() {
        static QByteArray saved;
        return saved;
    }
    struct FileOut : private QFile, public QDataStream {
        explicit FileOut(std::string const& path)
            : QFile(path.c_str()), QDataStream(static_cast<QFile*>(this)) {
            require(open(QIODevice::WriteOnly));
        }
    };
    struct FileIn : private QFile, public QDataStream {
        explicit FileIn(std::string const& path)
            : QFile(path.c_str()), QDataStream(static_cast<QFile*>(this)) {
            require(open(QIODevice::ReadOnly));
        }
    };
    using ClassName = QByteArray;

    template <class T> static Item make(std::string const& itemName, std::size_t i) {
        if constexpr (std::is_class_v<T> && !isText<T>) qRegisterMetaTypeStreamOperators<T>();
        return {QByteArray(itemName.c_str()), QVariant::fromValue(valueOf<T>(i))};
    }
    static std::string itemName(Item const& item) { return item.itemName.toStdString(); }
    template <class T> static std::string shown(Item const& item) {
        return shownValue(item.value.value<T>());
    }
    template <class T> static ClassName className() { return QMetaType::typeName(qMetaTypeId<T>()); }

    static void write(Item const& item, QDataStream& out) { out << item.itemName << item.value; }
    static void read(Item& item, QDataStream& in) { in >> item.itemName >> item.value; }
    static void set(Item& item, Item const& other) { item.value = other.value; }
    static Item create(ClassName const& className) {
        return {QByteArray(), QVariant(QMetaType::type(className), nullptr)};
    }
};
#endif

// ---------------------------------------------------------------------------

/// The objects that a user of an archive writes: the archives have no class of their own for a named value.
template <class Output, class Input> struct ArchiveItem {
    virtual ~ArchiveItem() = default;
    virtual void save(Output& out) const = 0;
    virtual void load(Input& in) = 0;
    std::string itemName;
};

template <class T, class Output, class Input> struct TypedArchiveItem : ArchiveItem<Output, Input> {
    void save(Output& out) const override { out << this->itemName << value; }
    void load(Input& in) override { in >> this->itemName >> value; }
    T value;
};

template <class Traits> struct Archived {
    static constexpr char const* name = Traits::name;
    using Types = Kinds<int, long long, float, double, bool, std::string, std::array<float, 3>,
                        std::array<double, 3>, std::array<float, 4>, std::array<double, 4>>;
    using Output = typename Traits::Output;
    using Input = typename Traits::Input;
    using Item = std::unique_ptr<ArchiveItem<Output, Input>>;
    template <class T> using Typed = TypedArchiveItem<T, Output, Input>;

    template <class Stream, class Archive, class Target> struct Opened {
        explicit Opened(Target& target)
            : stream(target), archive(Traits::template open<Archive>(stream.stream())) {}
        Stream stream;
        Archive archive;
    };
    using MemoryOut = Opened<MemoryStream<std::ostream>, Output, Memory>;
    using MemoryIn = Opened<MemoryStream<std::istream>, Input, Memory>;
    using FileOut = Opened<PathStream<std::ofstream>, Output, std::string const>;
    using FileIn = Opened<PathStream<std::ifstream>, Input, std::string const>;

    template <class T> static Item make(std::string const& itemName, std::size_t i) {
        auto made = std::make_unique<Typed<T>>();
        made->itemName = itemName;
        made->value = valueOf<T>(i);
        return made;
    }
    static std::string itemName(Item const& item) { return item->itemName; }
    template <class T> static std::string shown(Item const& item) {
        return shownValue(static_cast<Typed<T>&>(*item).value);
    }
    template <class Out> static void write(Item const& item, Out& out) { item->save(out.archive); }
    template <class In> static void read(Item& item, In& in) { item->load(in.archive); }
};

#ifdef BENCH_BOOST_SERIALIZATION
struct BoostTraits {
    static constexpr char const* name = "Boost.Serialization";
    using Output = boost::archive::binary_oarchive;
    using Input = boost::archive::binary_iarchive;
    template <class Archive, class Stream> static Archive open(Stream& stream) {
        return Archive(stream, boost::archive::no_header);
    }
};
using BoostArchive = Archived<BoostTraits>;
#endif

#ifdef BENCH_CEREAL
struct CerealTraits {
    static constexpr char const* name = "cereal";
    using Output = cereal::BinaryOutputArchive;
    using Input = cereal::BinaryInputArchive;
    template <class Archive, class Stream> static Archive open(Stream& stream) { return Archive(stream); }
};
using CerealArchive = Archived<CerealTraits>;
#endif

// ---------------------------------------------------------------------------

template <class Library> using Items = std::vector<typename Library::Item>;

template <class Library> Items<Library> makeItems(std::size_t count) {
    Items<Library> items;
    items.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        Library::Types::visit(i % kindCount, [&](auto kind) {
            items.push_back(Library::template make<typename decltype(kind)::Type>(nameOf(i), i));
        });
    return items;
}

/// A hash of all names and values.
template <class Library> std::size_t digestOf(Items<Library> const& items) {
    std::size_t digest = 0;
    for (std::size_t i = 0; i < items.size(); ++i)
        Library::Types::visit(i % kindCount, [&](auto kind) {
            std::string const text = Library::itemName(items[i]) + '=' +
                                     Library::template shown<typename decltype(kind)::Type>(items[i]);
            digest = digest * 31 + std::hash<std::string>()(text);
        });
    return digest;
}

} // namespace peers

#endif
