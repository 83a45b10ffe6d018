// Rounding: a number to an int, as the application has always rounded.
//     Redondea(2.5) is 3, Redondea(2.4) is 2;      Redondea(-2.7) is -1, Redondea(-2.4) is -2
// A result that no int holds, and NaN, give the smallest int.
#ifndef MRCOMMON_MATH_ROUNDING_H
#define MRCOMMON_MATH_ROUNDING_H

#include <cmath>
#include <limits>

namespace quarn::detail {

/// Towards 0. Out of range the language leaves the conversion open; here it is the smallest int everywhere.
template <class T> int truncated(T v) {
    constexpr T bound = T(2147483648.0);
    return v >= -bound && v < bound ? static_cast<int>(v) : std::numeric_limits<int>::min();
}

template <class T> int rounded(T v) {
    int const whole = truncated(v);
    return std::abs(v - static_cast<T>(whole)) >= T(0.5) ? truncated(v + 1) : whole;
}

} // namespace quarn::detail

///@{
/// Halves go up. Meant: below 0 this is not to nearest, -2.5 and -2.7 give -1. Held by
/// Redondea.RoundsHalvesUpAndIsNotToNearestBelowZero.
inline int Redondea(float v) { return quarn::detail::rounded(v); }
inline int Redondea(double v) { return quarn::detail::rounded(v); }
///@}

#endif
