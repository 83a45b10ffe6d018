// QuatMatrix: rotation matrices from quaternions and back, written once for every precision and convention.
// Q is a quaternion type with operator[] for its four elements; M is a matrix with operator()(row, column), of which only
// the upper left 3x3 block is used. Not part of the public surface, and hidden like the rest of the algebra.
#ifndef MRCOMMON_MATH_DETAIL_QUATMATRIX_H
#define MRCOMMON_MATH_DETAIL_QUATMATRIX_H

#include <MRCommon/Export.h>
#include <MRCommon/math/detail/QuatAlgebra.h>

#include <cmath>
#include <type_traits>
#include <utility>

namespace quarn {
namespace MRCOMMON_HIDDEN detail {

template <class M> using MatrixElement = std::decay_t<decltype(std::declval<M const&>()(0, 0))>;

/// A matrix for column vectors is the textbook one; a matrix for row vectors is its transpose.
enum class Stored { ForColumns, ForRows };

template <Stored stored, class M> constexpr auto& at(M& m, int row, int column) noexcept {
    return stored == Stored::ForColumns ? m(row, column) : m(column, row);
}

/// The convention of the 3x3 conversions.
struct ScalarFirst {
    static constexpr int scalar = 0, vector = 1;
    static constexpr Stored stored = Stored::ForColumns;
};

/// The convention of the 4x4 conversions.
struct ScalarLast {
    static constexpr int scalar = 3, vector = 0;
    static constexpr Stored stored = Stored::ForRows;
};

/// The axis after each axis, cyclically.
constexpr int AXIS_AFTER[3] = {1, 2, 0};

/// Writes the rotation of (x, y, z, w), w the scalar part, calculated in the matrix's precision. Nothing is normalised.
template <Stored stored, class M>
void writeRotation(M& m, MatrixElement<M> x, MatrixElement<M> y, MatrixElement<M> z,
                   MatrixElement<M> w) noexcept {
    using T = MatrixElement<M>;
    T const x2 = 2 * x, y2 = 2 * y, z2 = 2 * z;
    T const xx = x * x2, xy = x * y2, xz = x * z2, yy = y * y2, yz = y * z2, zz = z * z2;
    T const wx = w * x2, wy = w * y2, wz = w * z2;
    at<stored>(m, 0, 0) = 1 - (yy + zz);
    at<stored>(m, 0, 1) = xy - wz;
    at<stored>(m, 0, 2) = xz + wy;
    at<stored>(m, 1, 0) = xy + wz;
    at<stored>(m, 1, 1) = 1 - (xx + zz);
    at<stored>(m, 1, 2) = yz - wx;
    at<stored>(m, 2, 0) = xz - wy;
    at<stored>(m, 2, 1) = yz + wx;
    at<stored>(m, 2, 2) = 1 - (xx + yy);
}

template <class Convention, class Q, class T = QuatElement<Q>> Q arranged(T w, T x, T y, T z) noexcept {
    Q q;
    q[Convention::scalar] = w;
    q[Convention::vector] = x;
    q[Convention::vector + 1] = y;
    q[Convention::vector + 2] = z;
    return q;
}

/// Axis i has the largest diagonal element. Calculated in the matrix's precision, narrowed when stored.
/// The root needs no guard: with a trace that is not positive and the largest element at i, m(i, i) - m(j, j) - m(k, k)
/// is never negative, rounding included, so that s is at least 1, or NaN.
template <class Convention, class Q, int i, class M> Q fromPivot(M const& m) noexcept {
    using T = QuatElement<Q>;
    using S = MatrixElement<M>;
    constexpr Stored stored = Convention::stored;
    constexpr int j = AXIS_AFTER[i], k = AXIS_AFTER[j];
    S const s = std::sqrt(m(i, i) - m(j, j) - m(k, k) + 1), f = S(0.5) / s;
    Q q;
    q[Convention::vector + i] = static_cast<T>(S(0.5) * s);
    q[Convention::scalar] = static_cast<T>((at<stored>(m, k, j) - at<stored>(m, j, k)) * f);
    q[Convention::vector + j] = static_cast<T>((m(j, i) + m(i, j)) * f);
    q[Convention::vector + k] = static_cast<T>((m(k, i) + m(i, k)) * f);
    return q;
}

/// The trace and its root are calculated in the quaternion's precision, each difference in the matrix's.
template <class Convention, class Q, class M> Q fromRotation(M const& m) noexcept {
    using T = QuatElement<Q>;
    constexpr Stored stored = Convention::stored;
    T const trace = static_cast<T>(m(0, 0) + m(1, 1) + m(2, 2));
    if (trace > 0) {
        T const s = std::sqrt(trace + 1), f = T(0.5) / s;
        auto const part = [&](int r, int c) {
            return static_cast<T>((at<stored>(m, r, c) - at<stored>(m, c, r)) * f);
        };
        return arranged<Convention, Q>(T(0.5) * s, part(2, 1), part(0, 2), part(1, 0));
    }
    if (m(1, 1) > m(0, 0))
        return m(2, 2) > m(1, 1) ? fromPivot<Convention, Q, 2>(m) : fromPivot<Convention, Q, 1>(m);
    return m(2, 2) > m(0, 0) ? fromPivot<Convention, Q, 2>(m) : fromPivot<Convention, Q, 0>(m);
}

} // namespace detail
} // namespace quarn

#endif
