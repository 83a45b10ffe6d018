// QuatAlgebra: the formulas that DQuat and Quat share, each written once for both precisions.
// Q is a quaternion type with operator[] for its four elements, element 0 the scalar part, and a constructor from the
// four. What differs between the two is in their own headers. Not part of the public surface.
// Everything is hidden: the copy in a module compiled with a processor option must not serve the others.
#ifndef MRCOMMON_MATH_DETAIL_QUATALGEBRA_H
#define MRCOMMON_MATH_DETAIL_QUATALGEBRA_H

#include <MRCommon/basic/Vector3.h>
#include <MRCommon/Export.h>

#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

namespace quarn {
namespace MRCOMMON_HIDDEN detail {

template <class Q> using QuatElement = std::decay_t<decltype(std::declval<Q const&>()[0])>;

/// A squared length, an angle or a sine below this is too small to divide by. Always compared in double.
constexpr double QUAT_TINY = 1.0e-8;
/// The value of every element after a division by 0.
constexpr double QUAT_BY_ZERO = 100000000.0;

// Trigonometry is calculated in double and narrowed, in both precisions: a float angle costs as much as a double.
template <class T> T sine(T angle) noexcept { return static_cast<T>(std::sin(static_cast<double>(angle))); }
template <class T> T cosine(T angle) noexcept { return static_cast<T>(std::cos(static_cast<double>(angle))); }
template <class T> T arcCosine(T value) noexcept {
    return static_cast<T>(std::acos(static_cast<double>(value)));
}

// --- element by element ----------------------------------------------------

template <class Q> constexpr Q sum(Q const& a, Q const& b) noexcept {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2], a[3] + b[3]};
}

template <class Q> constexpr Q difference(Q const& a, Q const& b) noexcept {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2], a[3] - b[3]};
}

template <class Q> constexpr Q negated(Q const& a) noexcept { return {-a[0], -a[1], -a[2], -a[3]}; }

template <class Q> constexpr Q scaled(Q const& a, QuatElement<Q> s) noexcept {
    return {a[0] * s, a[1] * s, a[2] * s, a[3] * s};
}

/// Multiplies by the reciprocal, which rounds differently from four divisions.
template <class Q> constexpr Q divided(Q const& a, QuatElement<Q> s) noexcept {
    using T = QuatElement<Q>;
    constexpr T filled = static_cast<T>(QUAT_BY_ZERO);
    if (s == 0) return {filled, filled, filled, filled};
    return scaled(a, 1 / s);
}

template <class Q> constexpr bool equal(Q const& a, Q const& b) noexcept {
    return a[0] == b[0] && a[1] == b[1] && a[2] == b[2] && a[3] == b[3];
}

/// Returns -1, 0 or 1: the order of the first elements whose keys differ.
template <class Q, class Key> int compareKeys(Q const& a, Q const& b, Key key) noexcept {
    for (int i = 0; i < 4; ++i)
        if (key(a[i]) != key(b[i])) return key(a[i]) < key(b[i]) ? -1 : 1;
    return 0;
}

// --- algebra, scalar part in element 0 -------------------------------------

template <class Q> constexpr Q product(Q const& a, Q const& b) noexcept {
    return {a[0] * b[0] - a[1] * b[1] - a[2] * b[2] - a[3] * b[3],
            a[0] * b[1] + a[1] * b[0] + a[2] * b[3] - a[3] * b[2],
            a[0] * b[2] + a[2] * b[0] + a[3] * b[1] - a[1] * b[3],
            a[0] * b[3] + a[3] * b[0] + a[1] * b[2] - a[2] * b[1]};
}

/// Sums from 0, so that the result is never negative zero.
template <class Q> constexpr QuatElement<Q> dot(Q const& a, Q const& b) noexcept {
    return 0 + a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3];
}

template <class Q> constexpr Q conjugate(Q const& a) noexcept { return {a[0], -a[1], -a[2], -a[3]}; }

template <class Q> constexpr Q inverse(Q const& a) noexcept {
    QuatElement<Q> const n = a[0] * a[0] + a[1] * a[1] + a[2] * a[2] + a[3] * a[3];
    if (!(n > 0)) return {0, 0, 0, 0};
    QuatElement<Q> const r = 1 / n, minusR = -r; // negating r, not the elements, saves time
    return {a[0] * r, a[1] * minusR, a[2] * minusR, a[3] * minusR};
}

template <class Q> constexpr QuatElement<Q> squaredVectorPart(Q const& a) noexcept {
    return a[1] * a[1] + a[2] * a[2] + a[3] * a[3];
}

template <class Q> Q axisAngle(Vector3<QuatElement<Q>> const& axis, QuatElement<Q> angle) noexcept {
    using T = QuatElement<Q>;
    T const half = angle / 2, s = sine(half);
    return {cosine(half), axis.x * s, axis.y * s, axis.z * s};
}

template <class Q>
void toAxisAngle(Q const& a, Vector3<QuatElement<Q>>& axis, QuatElement<Q>& angle) noexcept {
    using T = QuatElement<Q>;
    T const n = squaredVectorPart(a);
    if (static_cast<double>(n) > QUAT_TINY) {
        angle = 2 * arcCosine(a[0]);
        axis = Vector3<T>(a[1], a[2], a[3]) * (1 / std::sqrt(n));
    } else {
        angle = 0;
        axis = Vector3<T>(1, 0, 0);
    }
}

template <class Q> Q exponential(Q const& a) noexcept {
    using T = QuatElement<Q>;
    T const theta = std::sqrt(squaredVectorPart(a)), s = sine(theta);
    bool const tiny = !(std::abs(static_cast<double>(s)) >= QUAT_TINY);
    T const factor = tiny ? 1 : s / theta;
    return {cosine(theta), factor * a[1], factor * a[2], factor * a[3]};
}

template <class Q> Q logarithm(Q const& a) noexcept {
    using T = QuatElement<Q>;
    if (std::abs(a[0]) < 1) {
        T const theta = arcCosine(a[0]), s = sine(theta);
        if (std::abs(static_cast<double>(s)) >= QUAT_TINY) {
            T const factor = theta / s;
            return {0, factor * a[1], factor * a[2], factor * a[3]};
        }
    }
    return {0, a[1], a[2], a[3]};
}

// --- interpolation ---------------------------------------------------------

/// Writes the angle from p to q. Returns false if p is the result for every t: the angle is tiny, or the two are the
/// same unit quaternion, whose product with itself is 1 but for rounding.
template <class Q> bool arcBetween(Q const& p, Q const& q, QuatElement<Q>& theta) noexcept {
    using T = QuatElement<Q>;
    T const d = dot(p, q);
    if (std::abs(d - 1) <= 4 * std::numeric_limits<T>::epsilon() && equal(p, q)) return false;
    theta = arcCosine(d); // Intentional: not clamped, and not redirected along the shorter arc.
    return !(std::abs(static_cast<double>(theta)) < QUAT_TINY);
}

/// Returns the sum of p and q weighted by the sines of two angles that add up to `theta`.
template <class Q>
Q weighted(Q const& p, Q const& q, QuatElement<Q> theta, QuatElement<Q> angleP,
           QuatElement<Q> angleQ) noexcept {
    QuatElement<Q> const perSine = 1 / sine(theta);
    QuatElement<Q> const weightP = sine(angleP) * perSine, weightQ = sine(angleQ) * perSine;
    return sum(scaled(p, weightP), scaled(q, weightQ));
}

template <class Q> Q slerp(QuatElement<Q> t, Q const& p, Q const& q) noexcept {
    QuatElement<Q> theta;
    if (!arcBetween(p, q, theta)) return p;
    return weighted(p, q, theta, (1 - t) * theta, t * theta);
}

template <class Q>
Q slerpExtraSpins(QuatElement<Q> t, Q const& p, Q const& q, QuatElement<Q> halfTurns) noexcept {
    QuatElement<Q> theta;
    if (!arcBetween(p, q, theta)) return p;
    QuatElement<Q> const phase = halfTurns * t;
    return weighted(p, q, theta, (1 - t) * theta - phase, t * theta + phase);
}

template <class Q> Q intermediate(Q const& a, Q const& b, Q const& c) noexcept {
    using T = QuatElement<Q>;
    Q const back = conjugate(b);
    Q const bend = sum(logarithm(product(back, a)), logarithm(product(back, c)));
    return product(b, exponential(scaled(bend, static_cast<T>(-0.25))));
}

template <class Q> Q squad(QuatElement<Q> t, Q const& p, Q const& a, Q const& b, Q const& q) noexcept {
    return slerp(2 * t * (1 - t), slerp(t, p, q), slerp(t, a, b));
}

} // namespace detail
} // namespace quarn

#endif
