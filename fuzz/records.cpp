// Records: what a check calls good is read whole and written back to the same bytes; what it calls cut short is.
// Whatever was read can be written, and what is written is read back whole and written alike.
//     byte 0    the class, by the order of registration; 0, the root, stands for a variant
//     byte 1    bit 0: the workspace version is the last with the old layout of enumerations
//               bit 1: the stream is byte-order-aware
//     the rest  a record, which is also read as a variant of another kind to be taken as the value
#include "examples/WorkSpaceVersion.h"
#include "Memory.h"

#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/properties/RecordCheck.h>

#include <memory>

using namespace quarn;

namespace {

/// Makes large integers small before they are used. Reading trusts sizes and counts by contract, so a damaged record
/// may ask for gigabytes, which is no fault. The stream cannot tell them from other integers: it changes all pieces
/// of 4 bytes. The checks, which trust nothing, see the integers unchanged.
class BoundedStream : public FileStreamRaw {
public:
    using FileStreamRaw::FileStreamRaw;

    std::size_t read(void* buffer, std::size_t byteCount) override {
        std::size_t const delivered = FileStreamRaw::read(buffer, byteCount);
        unsigned int value = 0;
        if (byteCount != sizeof value) return delivered;
        std::memcpy(&value, buffer, sizeof value);
        value = bounded(value);
        std::memcpy(buffer, &value, sizeof value);
        return delivered;
    }

    bool hasChanged() const { return hasChanged_; }

private:
    /// Keeps what is small; the rest becomes a neighbour of a power of two.
    unsigned int bounded(unsigned int value) {
        if (value <= 64) return value;
        hasChanged_ = true;
        return (1u << (3 + value % 9)) + (value >> 8) % 3 - 1;
    }

    bool hasChanged_ = false;
};

template <class Stream, class Record> void requireRoundTrip(Record const& record, Record& other) {
    std::string const bytes = written<Stream>(record);
    MemoryFile const file(bytes);
    Stream stream(file.get());
    other.readFrom(stream);
    require(!stream.failed() && file.position() == bytes.size(), "a written record is read back whole");
    require(written<Stream>(other) == bytes, "a record that was read is written alike");
}

template <class Record> void requireSame(Record const& copy, Record const& source) {
    require(written<FileStreamRaw>(copy) == written<FileStreamRaw>(source),
            "a copy is written like its source");
}

RecordCheck checked(ItemVariant const&, FileStreamRaw& stream) { return checkVariantRecord(stream); }
template <class Stream> RecordCheck checked(Ppty const& property, Stream& stream) {
    return checkRecord(property, stream);
}

/// The bytes that a good record is written back to: true is 1.
std::string normalised(ItemVariant const& variant, std::string record) {
    if (variant.as<bool>() != nullptr) record.back() = record.back() != 0;
    return record;
}

std::string normalised(Ppty const& property, std::string record, bool isRaw) {
    if (property.getType() == Ppty::TYPE_BOOL && isRaw) record.back() = record.back() != 0;
    return record;
}

template <class Record> void readBad(Record& record, RecordCheck const& check, FileStreamRaw& stream) {
    BoundedStream bounded(stream.file());
    record.readFrom(bounded);
    bool const isCut = check.reason == RecordCheck::EndsEarly || check.reason == RecordCheck::SizeBeyondFile;
    require(!isCut || bounded.failed() || bounded.hasChanged(), "a record that is cut short cannot be read");
}

/// Byte-order-aware integers do not pass through the stream's own operation, so they cannot be bounded: only a record
/// all of whose sizes are known to be good is read.
template <class Record> void readBad(Record& record, RecordCheck const& check, FileStreamEndian& stream) {
    if (check.reason != RecordCheck::EndsEarly) return;
    record.readFrom(stream);
    require(stream.failed(), "a record that is cut short cannot be read");
}

/// Checks the record, reads it, and returns whether it is good.
template <class Stream, class Record> bool requireHonestCheck(Record& record, std::string_view bytes) {
    std::string const before = written<FileStreamRaw>(record);
    MemoryFile const file(bytes);
    Stream stream(file.get());
    RecordCheck const check = checked(record, stream);
    require(written<FileStreamRaw>(record) == before && file.position() == 0 && !stream.failed(),
            "a check changes nothing");
    require(check.reason != RecordCheck::NotSeekable && check.good() == check.message().empty() &&
                check.offset <= bytes.size(),
            "a check says what is wrong, and where");
    if (check.good()) {
        record.readFrom(stream);
        require(!stream.failed() && file.position() == check.size && check.offset == check.size,
                "a good record is read whole");
        return true;
    }
    readBad(record, check, stream);
    return false;
}

void runVariant(std::string_view bytes) {
    ItemVariant variant, other;
    if (requireHonestCheck<FileStreamRaw>(variant, bytes)) {
        std::string const again = written<FileStreamRaw>(variant);
        require(again == normalised(variant, std::string(bytes.substr(0, again.size()))),
                "a good variant is written back to the same bytes");
    }
    requireRoundTrip<FileStreamRaw>(variant, other);
    requireSame(ItemVariant(variant), variant);
}

/// Whether an enumeration's record begins like one that is written today.
bool hasCurrentLayout(Ppty const& property, std::string const& again, std::string_view bytes) {
    std::size_t const upToLayout = 2 * sizeof(unsigned int) + property.getName().size();
    return bytes.substr(0, upToLayout) == std::string_view(again).substr(0, upToLayout);
}

template <class Stream> void requireSameBytes(Ppty& property, std::string_view bytes, bool isOld) {
    bool isRaw = std::is_same_v<Stream, FileStreamRaw>;
    std::string const again = written<Stream>(property);
    bool const isEnum = property.getType() == Ppty::TYPE_ENUM;
    if (isEnum && (isOld || !hasCurrentLayout(property, again, bytes))) return; // written in the new layout
    require(again == normalised(property, std::string(bytes.substr(0, again.size())), isRaw),
            "a good record is written back to the same bytes");
}

void requireCopies(Ppty& property, Ppty& fresh, std::string_view bytes) {
    requireRoundTrip<FileStreamRaw>(property, fresh);
    requireRoundTrip<FileStreamRaw>(property, property); // over what it holds
    requireRoundTrip<FileStreamEndian>(property, fresh);
    require(fresh.toStr() == property.toStr(), "equal records have equal texts");
    requireSame(*std::unique_ptr<Ppty>(property.cloneWithNewName(property.getName())), property);
    if (property.getType() != Ppty::TYPE_ENUM) { // takes what its table holds
        require(property.setValue(fresh.getVariantValue()), "an equal value is taken");
        requireSame(property.getVariantValue(), fresh.getVariantValue());
    }
    ItemVariant other;
    MemoryFile const file(bytes);
    BoundedStream stream(file.get());
    other.readFrom(stream);
    property.setValue(other);
    requireRoundTrip<FileStreamRaw>(property, fresh);
}

template <class Stream>
void runProperty(QN_MetaClassBase const& metaClass, bool isOld, std::string_view bytes) {
    auto const make = [&] { return std::unique_ptr<Ppty>(static_cast<Ppty*>(metaClass.metaNew())); };
    auto const property = make();
    bool isGood = false;
    {
        WorkSpaceVersion const version(isOld ? 5087 : 5088);
        isGood = requireHonestCheck<Stream>(*property, bytes);
    }
    if (isGood) requireSameBytes<Stream>(*property, bytes, isOld);
    requireCopies(*property, *make(), bytes);
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static Array<QN_MetaClassBase const*> const classes = QN_MetaClassBase::registered();
    Input input(data, size);
    QN_MetaClassBase const& metaClass = *classes[input.number<unsigned char>() % classes.size()];
    unsigned int const flags = input.number<unsigned char>();
    bool const isOld = flags % 2 != 0;
    if (input.rest().empty()) return 0; // no file can be made of nothing
    if (&metaClass == &metaClass_QN_Class)
        runVariant(input.rest());
    else if (flags / 2 % 2 == 0)
        runProperty<FileStreamRaw>(metaClass, isOld, input.rest());
    else
        runProperty<FileStreamEndian>(metaClass, isOld, input.rest());
    return 0;
}
