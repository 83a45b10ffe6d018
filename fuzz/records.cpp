// Records: a check calls good what is read whole in memory that the bytes account for; that is written back to the same
// bytes. Whatever was read can be written, and what is written is read back whole and written alike.
//     byte 0    the class, by the order of registration; 0, the root, stands for a variant
//     byte 1    bit 0: the workspace version is the last with the old layout of enumerations
//               bit 1: the stream is byte-order-aware
//     the rest  a record, which is also read as a variant of another kind to be taken as the value
#include "examples/WorkSpaceVersion.h"
#include "Memory.h"
#include "support/Allocations.h"

#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/properties/RecordCheck.h>

#include <memory>

using namespace quarn;

namespace {

/// Reads a record. Returns whether every byte was delivered, without asking for more than `size` bytes account for: 16
/// bytes of memory for a string, which takes at least 4 in the file. Reading trusts sizes and counts by contract, so a
/// damaged record may ask for gigabytes.
template <class Stream, class Record> bool readsWhole(Record& record, Stream& stream, std::size_t size) {
    AllocationLimit const limit(4 * size + 64);
    try {
        record.readFrom(stream);
    } catch (std::bad_alloc const&) {
        return false;
    }
    return !stream.failed();
}

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
    bool const isWhole = readsWhole(record, stream, bytes.size());
    bool const isUnsized =
        check.reason == RecordCheck::Unterminated || check.reason == RecordCheck::UnknownTag;
    require(check.good() == isWhole || isUnsized, "good records are those that can be read whole");
    require(!check.good() || (file.position() == check.size && check.offset == check.size),
            "a good record has the size that is stated");
    return check.good();
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
    FileStreamRaw stream(file.get());
    readsWhole(other, stream, bytes.size());
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
