// Rounding: converts a number to an int, as the application has always rounded.
//     Redondea(2.5) is 3, Redondea(2.4) is 2;      Redondea(-2.7) is -1, Redondea(-2.4) is -2
// Returns the smallest int for NaN and for results that do not fit.
#ifndef MRCOMMON_MATH_ROUNDING_H
#define MRCOMMON_MATH_ROUNDING_H

#include <MRCommon/Export.h>

#include <cmath>
#include <limits>

namespace quarn::detail {

/// Truncates towards 0. Out of range the conversion is undefined in the language; here it gives the smallest int.
template <class T> MRCOMMON_HIDDEN constexpr int truncated(T v) noexcept {
    constexpr T bound = T(2147483648.0);
    return v >= -bound && v < bound ? static_cast<int>(v) : std::numeric_limits<int>::min();
}

template <class T> MRCOMMON_HIDDEN int rounded(T v) noexcept {
    int const whole = truncated(v);
    return std::abs(v - static_cast<T>(whole)) >= T(0.5) ? truncated(v + 1) : whole;
}

} // namespace quarn::detail

///@{
/// Rounds halves up. Intentional: numbers below 0 are not rounded to nearest, -2.5 and -2.7 give -1.
/// Tested by Redondea.RoundsHalvesUpAndIsNotToNearestBelowZero.
MRCOMMON_HIDDEN inline int Redondea(float v) noexcept { return quarn::detail::rounded(v); }
MRCOMMON_HIDDEN inline int Redondea(double v) noexcept { return quarn::detail::rounded(v); }
///@}

#endif
