// Records: whatever is read can be written, and what is written is read back whole and written alike.
//     byte 0    the class, by the order of registration; 0, the root, stands for a variant
//     byte 1    odd: the workspace version is the last with the old layout of enumerations
//     the rest  a raw stream
#include "examples/WorkSpaceVersion.h"
#include "Input.h"

#include <MRCommon/properties/MetaClasses.h>

#include <memory>

using namespace quarn;

namespace {

/// Sizes and counts in records are trusted by contract, so an input could ask for gigabytes, which is no fault.
/// The stream cannot tell them from other integers: all pieces of 4 bytes are bounded.
class BoundedStream : public FileStreamRaw {
public:
    using FileStreamRaw::FileStreamRaw;

    std::size_t read(void* buffer, std::size_t byteCount) override {
        std::size_t const delivered = FileStreamRaw::read(buffer, byteCount);
        unsigned int value = 0;
        if (byteCount != sizeof value) return delivered;
        std::memcpy(&value, buffer, sizeof value);
        value %= 2048;
        std::memcpy(buffer, &value, sizeof value);
        return delivered;
    }
};

template <class Stream, class Record> bool readsWhole(Record& record, std::string_view bytes) {
    std::FILE* const file = fmemopen(const_cast<char*>(bytes.data()), bytes.size(), "rb");
    require(file != nullptr, "a file can be made of memory");
    Stream stream(file);
    record.readFrom(stream);
    bool const whole = !stream.failed() && std::fgetc(file) == EOF;
    std::fclose(file);
    return whole;
}

template <class Stream, class Record> std::string written(Record const& record) {
    char* bytes = nullptr;
    std::size_t size = 0;
    std::FILE* const file = open_memstream(&bytes, &size);
    require(file != nullptr, "a file can be made of memory");
    Stream stream(file);
    record.writeTo(stream);
    std::fclose(file);
    std::unique_ptr<char, void (*)(void*)> const owned(bytes, &std::free);
    return {bytes, size};
}

template <class Stream, class Record> void requireRoundTrip(Record const& record, Record& other) {
    std::string const bytes = written<Stream>(record);
    require(readsWhole<Stream>(other, bytes), "a written record is read back whole");
    require(written<Stream>(other) == bytes, "a record that was read is written alike");
}

template <class Record> void requireSame(Record const& copy, Record const& source) {
    require(written<FileStreamRaw>(copy) == written<FileStreamRaw>(source),
            "a copy is written like its source");
}

void runVariant(std::string_view bytes) {
    ItemVariant variant, other;
    readsWhole<BoundedStream>(variant, bytes);
    requireRoundTrip<FileStreamRaw>(variant, other);
    requireSame(ItemVariant(variant), variant);
}

void runProperty(QN_MetaClassBase const& metaClass, bool isOld, std::string_view bytes) {
    auto const make = [&] { return std::unique_ptr<Ppty>(static_cast<Ppty*>(metaClass.metaNew())); };
    auto const property = make();
    {
        WorkSpaceVersion const version(isOld ? 5087 : 5088);
        readsWhole<BoundedStream>(*property, bytes);
    }
    auto const fresh = make();
    requireRoundTrip<FileStreamRaw>(*property, *fresh);
    requireRoundTrip<FileStreamRaw>(*property, *property); // over what it holds
    requireRoundTrip<FileStreamEndian>(*property, *fresh);
    require(fresh->toStr() == property->toStr(), "equal records have equal texts");

    requireSame(*std::unique_ptr<Ppty>(property->cloneWithNewName(property->getName())), *property);
    if (property->getType() == Ppty::TYPE_ENUM) return; // takes what its table holds
    require(property->setValue(fresh->getVariantValue()), "an equal value is taken");
    requireSame(property->getVariantValue(), fresh->getVariantValue());
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static Array<QN_MetaClassBase const*> const classes = QN_MetaClassBase::registered();
    Input input(data, size);
    QN_MetaClassBase const& metaClass = *classes[input.number<unsigned char>() % classes.size()];
    bool const isOld = input.number<unsigned char>() % 2 != 0;
    if (input.rest().empty()) return 0; // no file can be made of nothing
    if (&metaClass == &metaClass_QN_Class)
        runVariant(input.rest());
    else
        runProperty(metaClass, isOld, input.rest());
    return 0;
}
