#include <MRCommon/properties/ItemVariant.h>

#include <MRCommon/properties/detail/ValueEncoding.h>

#include <memory>
#include <type_traits>
#include <utility>

namespace quarn {

namespace {

/// Calls `visit` with a typed pointer to the value. Does nothing without a value.
template <class Visit> void visitValue(unsigned int tag, void* value, Visit const& visit) {
    if (value == nullptr) return;
    detail::visitKind(tag, [&](auto kind) { visit(static_cast<typename decltype(kind)::Type*>(value)); });
}

bool isKnown(unsigned int tag) { return tag >= 1 && tag <= detail::variantTag<Tuple2<QN_String, int>>; }

} // namespace

ItemVariant* ItemVariant::ItemVariant_Invalid = new ItemVariant();

ItemVariant::ItemVariant(QN_String const& value) : ItemVariant(detail::Kind<QN_String>(), value) {}

ItemVariant::ItemVariant(Array<QN_String> const& value)
    : ItemVariant(detail::Kind<Array<QN_String>>(), value) {}

ItemVariant::ItemVariant(Tuple2<QN_String, int> const& value)
    : ItemVariant(detail::Kind<Tuple2<QN_String, int>>(), value) {}

ItemVariant::ItemVariant(ItemVariant const& other) : tag_(other.tag_) {
    visitValue(other.tag_, other.value_,
               [&](auto const* value) { value_ = new std::decay_t<decltype(*value)>(*value); });
}

ItemVariant& ItemVariant::operator=(ItemVariant other) noexcept {
    swap(other);
    return *this;
}

ItemVariant::~ItemVariant() { deleteValue(); }

void ItemVariant::deleteValue() noexcept {
    if (!isKnown(tag_)) return;
    visitValue(tag_, std::exchange(value_, nullptr), [](auto* value) { delete value; });
}

void ItemVariant::readFrom(FileStreamRaw& stream) { readFromT(stream); }

void ItemVariant::writeTo(FileStreamRaw& stream) const { writeToT(stream); }

template <class Stream> void ItemVariant::readFromT(Stream& stream) {
    tag_ = encoding::readU32(stream);
    if (!isKnown(tag_)) return;
    value_ = nullptr; // Intentional: not freed. Tested by ItemVariant.ReadingDoesNotFreeTheOldValue.
    detail::visitKind(tag_, [&](auto kind) {
        using T = typename decltype(kind)::Type;
        std::unique_ptr<T> value(detail::newDefaultValue<T>());
        detail::readValue(stream, *value);
        value_ = value.release();
    });
}

template <class Stream> void ItemVariant::writeToT(Stream& stream) const {
    encoding::writeU32(stream, isKnown(tag_) && value_ == nullptr ? 0 : tag_);
    visitValue(tag_, value_, [&](auto const* value) { detail::writeValue(stream, *value); });
}

void ItemVariant::swap(ItemVariant& other) noexcept {
    std::swap(tag_, other.tag_);
    std::swap(value_, other.value_);
}

template MRCOMMON_API void ItemVariant::readFromT(FileStreamRaw&);
template MRCOMMON_API void ItemVariant::writeToT(FileStreamRaw&) const;

} // namespace quarn
