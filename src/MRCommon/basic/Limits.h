// Limits: the widest finite bounds, four times each, and the sample count of the Gaussian random numbers.
//     constants::f::MX_MX_MX_MX[0]      the largest finite float
#ifndef MRCOMMON_BASIC_LIMITS_H
#define MRCOMMON_BASIC_LIMITS_H

#include <MRCommon/basic/Tuple.h>
#include <MRCommon/Export.h>

#include <limits>

namespace MRCOMMON_HIDDEN quarn {

/// Number of independent uniform variables whose sum is nearly Gaussian.
inline constexpr double GAUSSIAN_NUM_INDEP_UNIF_VAR_D = 30.0;

namespace detail {

template <class T> constexpr TupleN<4, T> fourTimes(T value) { return {{value, value, value, value}}; }

} // namespace detail

/// Single precision. The minima are the negated maxima, not the smallest positive numbers.
namespace constants::f {
///@{
/// The largest finite number, and the lowest, four times.
inline constexpr TupleN<4, float> MX_MX_MX_MX = detail::fourTimes(std::numeric_limits<float>::max());
inline constexpr TupleN<4, float> MN_MN_MN_MN = detail::fourTimes(-std::numeric_limits<float>::max());
///@}
} // namespace constants::f

/// Double precision, by the same rule.
namespace constants::d {
///@{
/// The largest finite number, and the lowest, four times.
inline constexpr TupleN<4, double> MX_MX_MX_MX = detail::fourTimes(std::numeric_limits<double>::max());
inline constexpr TupleN<4, double> MN_MN_MN_MN = detail::fourTimes(-std::numeric_limits<double>::max());
///@}
} // namespace constants::d

} // namespace quarn

#endif
