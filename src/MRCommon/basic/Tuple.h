// Tuple2, Tuple3, TupleN: a few values side by side, in the order of their names.
//     Tuple2<QN_String, int> choice("High", 20);       // a label and its index
//     TupleN<16, unsigned char> bytes;                 // unwritten until you write it
#ifndef MRCOMMON_BASIC_TUPLE_H
#define MRCOMMON_BASIC_TUPLE_H

#include <MRCommon/Export.h>

#include <type_traits>
#include <utility>

namespace quarn {

/// A fresh pair holds a fresh A and B; numbers are 0.
template <class A, class B> class MRCOMMON_API Tuple2 {
public:
    A first{};  ///< element 0
    B second{}; ///< element 1

    Tuple2() = default;
    /// Takes the two over.
    Tuple2(A first_, B second_) : first(std::move(first_)), second(std::move(second_)) {}

    friend bool operator==(Tuple2 const& p, Tuple2 const& q) {
        return p.first == q.first && p.second == q.second;
    }
    friend bool operator!=(Tuple2 const& p, Tuple2 const& q) { return !(p == q); }
};

/// Default construction leaves plain numbers unwritten.
template <class A, class B, class C> class MRCOMMON_API Tuple3 {
public:
    A first;  ///< element 0
    B second; ///< element 1
    C third;  ///< element 2

    Tuple3() = default;
    /// Takes the three over.
    constexpr Tuple3(A a, B b, C c) : first(std::move(a)), second(std::move(b)), third(std::move(c)) {}

    ///@{
    /// Element 0, 1 or 2, where all three are of one type. Another index is a caller's error.
    constexpr A& operator[](int i) {
        requireOneType();
        return i == 0 ? first : i == 1 ? second : third;
    }
    constexpr A const& operator[](int i) const {
        requireOneType();
        return i == 0 ? first : i == 1 ? second : third;
    }
    ///@}

private:
    static constexpr void requireOneType() {
        static_assert(std::is_same_v<A, B> && std::is_same_v<B, C>,
                      "an index needs three elements of one type");
    }
};

/// N values of one type. Default construction leaves plain numbers unwritten.
template <unsigned int N, class T> class MRCOMMON_API TupleN {
public:
    T elements[N]; ///< public, so that `TupleN<2, int>{{1, 2}}` makes one at compile time

    ///@{
    /// Element i, which is not tested.
    constexpr T& operator[](unsigned int i) { return elements[i]; }
    constexpr T const& operator[](unsigned int i) const { return elements[i]; }
    ///@}
    ///@{
    /// The N elements, side by side.
    constexpr T* data() { return elements; }
    constexpr T const* data() const { return elements; }
    ///@}
    static constexpr unsigned int size() { return N; } ///< N
};

static_assert(sizeof(Tuple3<double, double, double>) == 24 && sizeof(TupleN<16, unsigned char>) == 16);
static_assert(std::is_trivially_copyable_v<Tuple3<double, double, double>>);
static_assert(std::is_standard_layout_v<Tuple3<double, double, double>>);
static_assert(std::is_trivially_copyable_v<TupleN<16, unsigned char>>);
static_assert(std::is_standard_layout_v<TupleN<16, unsigned char>>);

} // namespace quarn

#endif
