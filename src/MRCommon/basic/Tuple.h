// Tuple2, Tuple3, TupleN: a few contiguous values.
//     Tuple2<QN_String, int> choice("High", 20);       // a label and its index
//     TupleN<16, unsigned char> bytes;                 // uninitialised
#ifndef MRCOMMON_BASIC_TUPLE_H
#define MRCOMMON_BASIC_TUPLE_H

#include <MRCommon/Export.h>

#include <type_traits>
#include <utility>

namespace quarn {

/// By default holds a default A and a default B; numbers are 0.
template <class A, class B> class MRCOMMON_API Tuple2 {
public:
    A first{};  ///< element 0
    B second{}; ///< element 1

    MRCOMMON_HIDDEN constexpr Tuple2() = default;
    /// Moves the two in.
    MRCOMMON_HIDDEN constexpr Tuple2(A first_, B second_)
        : first(std::move(first_)), second(std::move(second_)) {}
    MRCOMMON_HIDDEN_COPIES(Tuple2)

    MRCOMMON_HIDDEN friend constexpr bool operator==(Tuple2 const& p, Tuple2 const& q) {
        return p.first == q.first && p.second == q.second;
    }
    MRCOMMON_HIDDEN friend constexpr bool operator!=(Tuple2 const& p, Tuple2 const& q) { return !(p == q); }
};

/// Default construction leaves plain numbers uninitialised.
template <class A, class B, class C> class MRCOMMON_API Tuple3 {
public:
    A first;  ///< element 0
    B second; ///< element 1
    C third;  ///< element 2

    MRCOMMON_HIDDEN Tuple3() = default;
    /// Moves the three in.
    MRCOMMON_HIDDEN constexpr Tuple3(A a, B b, C c)
        : first(std::move(a)), second(std::move(b)), third(std::move(c)) {}
    MRCOMMON_HIDDEN_COPIES(Tuple3)

    ///@{
    /// Returns element 0, 1 or 2, if all three are of one type. Precondition: the index is one of these.
    MRCOMMON_HIDDEN constexpr A& operator[](int i) noexcept {
        requireOneType();
        return i == 0 ? first : i == 1 ? second : third;
    }
    MRCOMMON_HIDDEN constexpr A const& operator[](int i) const noexcept {
        requireOneType();
        return i == 0 ? first : i == 1 ? second : third;
    }
    ///@}

private:
    MRCOMMON_HIDDEN static constexpr void requireOneType() noexcept {
        static_assert(std::is_same_v<A, B> && std::is_same_v<B, C>,
                      "an index needs three elements of one type");
    }
};

/// N values of one type. Default construction leaves plain numbers uninitialised. An aggregate cannot hide its
/// copy operations, which are visible if an element's own are not trivial.
template <unsigned int N, class T> class MRCOMMON_API TupleN {
public:
    T elements[N]; ///< public, so that `TupleN<2, int>{{1, 2}}` makes one at compile time

    ///@{
    /// Returns element i, which is not range-checked.
    MRCOMMON_HIDDEN constexpr T& operator[](unsigned int i) noexcept { return elements[i]; }
    MRCOMMON_HIDDEN constexpr T const& operator[](unsigned int i) const noexcept { return elements[i]; }
    ///@}
    ///@{
    /// Returns the first of the N contiguous elements.
    MRCOMMON_HIDDEN constexpr T* data() noexcept { return elements; }
    MRCOMMON_HIDDEN constexpr T const* data() const noexcept { return elements; }
    ///@}
    MRCOMMON_HIDDEN static constexpr unsigned int size() noexcept { return N; } ///< N
};

static_assert(std::is_trivially_copyable_v<Tuple2<int, float>>);
static_assert(sizeof(Tuple3<double, double, double>) == 24 && sizeof(TupleN<16, unsigned char>) == 16);
static_assert(std::is_trivially_copyable_v<Tuple3<double, double, double>>);
static_assert(std::is_standard_layout_v<Tuple3<double, double, double>>);
static_assert(std::is_trivially_copyable_v<TupleN<16, unsigned char>>);
static_assert(std::is_standard_layout_v<TupleN<16, unsigned char>>);

} // namespace quarn

#endif
