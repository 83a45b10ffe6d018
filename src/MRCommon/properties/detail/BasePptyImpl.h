// The bodies of BasePpty, for the source files that instantiate it.
#ifndef MRCOMMON_PROPERTIES_DETAIL_BASEPPTYIMPL_H
#define MRCOMMON_PROPERTIES_DETAIL_BASEPPTYIMPL_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/properties/BasePpty.h>
#include <MRCommon/properties/ItemVariant.h>
#include <MRCommon/properties/Ppty.h>

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace quarn {

namespace detail {

/// Copies the bytes of a number, bool, vector or colour of another kind, as many as both values have. Intentional: nothing
/// is converted. Tested by BasicPpty.TakesValuesFromVariantsWithoutConversion.
template <class T> void copyRawBytes(T& target, ItemVariant const& source) {
    visitKind(source.tag(), [&](auto kind) {
        using Source = typename decltype(kind)::Type;
        if constexpr (isTriviallyCopyable<Source> && !std::is_same_v<Source, T>)
            if (Source const* const payload = source.as<Source>()) {
                if constexpr (std::is_same_v<T, bool>) {
                    unsigned char byte = 0;
                    std::memcpy(&byte, payload, 1);
                    target = byte != 0;
                } else {
                    std::memmove(static_cast<void*>(&target), payload,
                                 std::min(sizeof target, sizeof *payload));
                }
            }
    });
}

/// Copies what the variant's typed access returns, or else raw bytes if T is neither an int nor a string or a list.
template <class T> void assignFrom(T& target, ItemVariant const& source) {
    if (T const* const payload = source.as<T>())
        target = *payload;
    else if constexpr (isTriviallyCopyable<T> && !std::is_same_v<T, int>)
        copyRawBytes(target, source);
}

} // namespace detail

template <class T, unsigned int TypeCode>
BasePpty<T, TypeCode>::BasePpty(QN_String const& name)
    : Ppty(name), variant_(ItemVariant::makeDefault<T>()) {}

template <class T, unsigned int TypeCode>
BasePpty<T, TypeCode>::BasePpty(QN_String const& name, T const& value) : Ppty(name), variant_(value) {}

template <class T, unsigned int TypeCode> BasePpty<T, TypeCode>::BasePpty(BasePpty const& other) = default;

template <class T, unsigned int TypeCode> BasePpty<T, TypeCode>::~BasePpty() = default;

template <class T, unsigned int TypeCode> ItemVariant const& BasePpty<T, TypeCode>::getVariantValue() const {
    return variant_;
}

template <class T, unsigned int TypeCode> bool BasePpty<T, TypeCode>::setValue(ItemVariant const& value) {
    detail::assignFrom(this->value(), value);
    return true;
}

template <class T, unsigned int TypeCode> unsigned int BasePpty<T, TypeCode>::getType() const {
    return TypeCode;
}

template <class T, unsigned int TypeCode> T* BasePpty<T, TypeCode>::getRefToValue() {
    return variant_.as<T>();
}

template <class T, unsigned int TypeCode> bool BasePpty<T, TypeCode>::setValue(T const& value) {
    this->value() = value;
    return true;
}

} // namespace quarn

#endif
