// The value kinds of a variant, listed once: a kind's tag is its place in the list, from 1.
#ifndef MRCOMMON_PROPERTIES_DETAIL_VARIANTKINDS_H
#define MRCOMMON_PROPERTIES_DETAIL_VARIANTKINDS_H

#include <MRCommon/basic/Color4.h>
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/basic/Tuple.h>
#include <MRCommon/basic/Vector3.h>

#include <type_traits>

namespace quarn::detail {

template <class T> struct Kind { using Type = T; };
template <class... T> struct Kinds {};

using VariantKinds = Kinds<int, long long, float, double, bool, QN_String, Vector3<float>, Vector3<double>,
                           Color4<float>, Color4<double>, Array<QN_String>, Tuple2<QN_String, int>>;

template <class T, class... All> constexpr unsigned int indexOf(Kinds<All...>) {
    unsigned int place = 0;
    bool found = false;
    ((found = found || std::is_same_v<T, All>, place += found ? 0 : 1), ...);
    return found ? place + 1 : 0;
}

/// The tag of T; 0 for a type that no variant holds.
template <class T> constexpr unsigned int variantTag = indexOf<T>(VariantKinds());

template <class Visit, class... All> void visitKindIn(Kinds<All...>, unsigned int tag, Visit const& visit) {
    static_cast<void>(((tag == variantTag<All> && (visit(Kind<All>()), true)) || ...));
}

/// Calls `visit(Kind<T>())` for the kind with this tag; for other tags nothing.
template <class Visit> void visitKind(unsigned int tag, Visit const& visit) {
    visitKindIn(VariantKinds(), tag, visit);
}

/// Kinds without a buffer of their own: numbers, bool, vectors, colours.
template <class T> constexpr bool isTriviallyCopyable = std::is_trivially_copyable_v<T>;

/// A value as a fresh property has it: 0, false, empty, opaque black; vectors are left unwritten.
template <class T> T* newDefaultValue() {
    if constexpr (std::is_arithmetic_v<T>)
        return new T();
    else
        return new T;
}

} // namespace quarn::detail

#endif
