// The value kinds of a variant, listed once: the tag of a kind is its position in the list, counted from 1.
#ifndef MRCOMMON_PROPERTIES_DETAIL_VARIANTKINDS_H
#define MRCOMMON_PROPERTIES_DETAIL_VARIANTKINDS_H

#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/Color4.h>
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/basic/Tuple.h>
#include <MRCommon/basic/Vector3.h>
#include <MRCommon/Export.h>

#include <array>
#include <type_traits>

namespace quarn::detail {

template <class T> struct Kind { using Type = T; };
template <class... T> struct Kinds {};

using VariantKinds = Kinds<int, long long, float, double, bool, QN_String, Vector3<float>, Vector3<double>,
                           Color4<float>, Color4<double>, Array<QN_String>, Tuple2<QN_String, int>>;

template <class T, class... All> constexpr unsigned int tagIn(Kinds<All...>) {
    constexpr std::array<bool, sizeof...(All)> isT{std::is_same_v<T, All>...};
    for (unsigned int i = 0; i < isT.size(); ++i)
        if (isT[i]) return i + 1;
    return 0;
}

/// The tag of T; 0 if no variant holds a T.
template <class T> constexpr unsigned int variantTag = tagIn<T>(VariantKinds());

template <class Visit> void visitKindIn(Kinds<>, unsigned int, Visit const&) {}

template <class Visit, class First, class... Rest>
void visitKindIn(Kinds<First, Rest...>, unsigned int tag, Visit const& visit) {
    if (tag == variantTag<First>)
        visit(Kind<First>());
    else
        visitKindIn(Kinds<Rest...>(), tag, visit);
}

/// Calls `visit(Kind<T>())` for the kind with this tag. Does nothing if the tag is 0 or unknown.
template <class Visit> void visitKind(unsigned int tag, Visit const& visit) {
    visitKindIn(VariantKinds(), tag, visit);
}

/// Whether a T has no buffer of its own: numbers, bool, vectors, colours.
template <class T> constexpr bool isTriviallyCopyable = std::is_trivially_copyable_v<T>;

/// Makes a value as a default property holds it: 0, false, empty, opaque black; vectors are uninitialised.
template <class T> MRCOMMON_HIDDEN T* newDefaultValue() {
    if constexpr (std::is_arithmetic_v<T>)
        return new T();
    else
        return new T;
}

/// Whether C++ converts a P to bool although it is a pointer.
template <class P>
constexpr bool isPointer = std::is_pointer_v<P> || std::is_member_pointer_v<P> || std::is_null_pointer_v<P>;

/// Whether a P points to characters.
template <class P>
constexpr bool isCString = std::is_same_v<std::remove_const_t<std::remove_pointer_t<P>>, char>;

} // namespace quarn::detail

#endif
