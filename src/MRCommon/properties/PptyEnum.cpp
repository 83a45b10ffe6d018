#include <MRCommon/properties/PptyEnum.h>

#include <MRCommon/properties/detail/BasePptyImpl.h>
#include <MRCommon/properties/detail/EmptyString.h>
#include <MRCommon/properties/detail/EnumLayout.h>
#include <MRCommon/properties/PptyText.h>
#include <MRCommon/streams/StreamEncoding.h>

#include <algorithm>

namespace quarn {

template class BasePpty<Tuple2<QN_String, int>, Ppty::TYPE_ENUM>;

namespace {

constexpr int noChoice = -1;

} // namespace

PptyEnum::PptyEnum() : PptyEnum(detail::emptyString) {}

PptyEnum::PptyEnum(QN_String const& name)
    : PptyEnum(name, Tuple2<QN_String, int>(detail::emptyString, noChoice)) {}

PptyEnum::PptyEnum(QN_String const& name, Tuple2<QN_String, int> const& value) : BasePpty(name, value) {}

PptyEnum::PptyEnum(PptyEnum const& other) = default;

PptyEnum::~PptyEnum() = default;

Ppty* PptyEnum::clone() const { return new PptyEnum(*this); }

Ppty* PptyEnum::cloneWithNewName(QN_String const& name) const { return withName(clone(), name); }

QN_String PptyEnum::toStr() const {
    QN_String text;
    qn_basicppty::QN_set(text, *this);
    return text;
}

/// Returns the position of the first complete entry that matches, or noChoice.
template <class Matches> int PptyEnum::findChoice(Matches const& matches) const {
    unsigned int const count = std::min(itemLabels.size(), itemValues.size());
    for (unsigned int i = 0; i < count; ++i)
        if (matches(i)) return static_cast<int>(i);
    return noChoice;
}

bool PptyEnum::setValue(ItemVariant const& value) {
    int found = noChoice;
    if (value.tag() == detail::variantTag<QN_String>) {
        if (QN_String const* const label = value.as<QN_String>())
            found = findChoice([&](unsigned int i) { return itemLabels[i] == *label; });
    } else if (int const* const number = value.as<int>()) {
        found = findChoice([&](unsigned int i) { return itemValues[i] == *number; });
    }
    if (found == noChoice) return false;
    auto const choice = static_cast<unsigned int>(found);
    this->value().first = itemLabels[choice];
    this->value().second = itemValues[choice];
    return true;
}

bool PptyEnum::setValue(Tuple2<QN_String, int> const& value) { return BasePpty::setValue(value); }

template <class Stream> void PptyEnum::readFromT(Stream& stream) {
    Ppty::readFrom(stream);
    auto& [label, index] = value();
    if (detail::recordsCarryALayoutNumber() && encoding::readU32(stream) > detail::lastLayoutWithoutLabel) {
        encoding::readStr(stream, label);
        index = encoding::readI32(stream);
        readTable(stream);
        return;
    }
    int const stored = encoding::readI32(stream);
    readTable(stream);
    index = stored;
    int const choice = findChoice([&](unsigned int i) { return itemValues[i] == stored; });
    label = choice == noChoice ? detail::emptyString : itemLabels[static_cast<unsigned int>(choice)];
}

template <class Stream> void PptyEnum::readTable(Stream& stream) {
    stream >> itemLabels;
    encoding::readBlock(stream, itemValues, encoding::readU32(stream));
}

template <class Stream> void PptyEnum::writeToT(Stream& stream) const {
    Ppty::writeTo(stream);
    encoding::writeU32(stream, metaClass().classSchema());
    encoding::writeStr(stream, value().first);
    encoding::writeI32(stream, value().second);
    encoding::writeStrArray(stream, itemLabels);
    encoding::writeU32(stream, itemValues.size());
    encoding::writeBlock(stream, itemValues);
}

void PptyEnum::readFrom(FileStreamRaw& stream) { readFromT(stream); }

void PptyEnum::readFrom(FileStreamEndian& stream) { readFromT(stream); }

void PptyEnum::writeTo(FileStreamRaw& stream) const { writeToT(stream); }

void PptyEnum::writeTo(FileStreamEndian& stream) const { writeToT(stream); }

} // namespace quarn
