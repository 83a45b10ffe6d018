// QuatAlgebra: the formulas that DQuat and Quat share, each written once for both precisions.
// Q is a quaternion type: four elements behind operator[], element 0 the scalar part, and a constructor from
// the four. What the two do not share stands in their own headers. No part of the public surface.
#ifndef MRCOMMON_MATH_DETAIL_QUATALGEBRA_H
#define MRCOMMON_MATH_DETAIL_QUATALGEBRA_H

#include <MRCommon/basic/Vector3.h>

#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

namespace quarn::detail {

template <class Q> using QuatElement = std::decay_t<decltype(std::declval<Q const&>()[0])>;

/// Below this a squared length, an angle or a sine is too small to divide by. Compared in double always.
constexpr double QUAT_TINY = 1.0e-8;
/// What stands in every element after a division by 0.
constexpr double QUAT_BY_ZERO = 100000000.0;

// Trigonometry is taken in double and narrowed, in both precisions: a float angle costs what a double costs.
template <class T> inline T sine(T angle) { return static_cast<T>(std::sin(static_cast<double>(angle))); }
template <class T> inline T cosine(T angle) { return static_cast<T>(std::cos(static_cast<double>(angle))); }
template <class T> inline T arcCosine(T value) {
    return static_cast<T>(std::acos(static_cast<double>(value)));
}

// --- element by element ----------------------------------------------------

template <class Q> inline Q sum(Q const& a, Q const& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2], a[3] + b[3]};
}

template <class Q> inline Q difference(Q const& a, Q const& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2], a[3] - b[3]};
}

template <class Q> inline Q scaled(Q const& a, QuatElement<Q> s) {
    return {a[0] * s, a[1] * s, a[2] * s, a[3] * s};
}

/// Multiplies by the reciprocal, which rounds otherwise than four divisions would.
template <class Q> inline Q divided(Q const& a, QuatElement<Q> s) {
    using T = QuatElement<Q>;
    constexpr T filled = static_cast<T>(QUAT_BY_ZERO);
    if (s == 0) return {filled, filled, filled, filled};
    return scaled(a, 1 / s);
}

template <class Q> inline bool equal(Q const& a, Q const& b) {
    return a[0] == b[0] && a[1] == b[1] && a[2] == b[2] && a[3] == b[3];
}

/// -1, 0 or 1: the order of the first elements whose keys differ.
template <class Q, class Key> inline int compareKeys(Q const& a, Q const& b, Key key) {
    for (int i = 0; i < 4; ++i)
        if (key(a[i]) != key(b[i])) return key(a[i]) < key(b[i]) ? -1 : 1;
    return 0;
}

// --- algebra, scalar part in element 0 -------------------------------------

template <class Q> inline Q product(Q const& a, Q const& b) {
    return {a[0] * b[0] - a[1] * b[1] - a[2] * b[2] - a[3] * b[3],
            a[0] * b[1] + a[1] * b[0] + a[2] * b[3] - a[3] * b[2],
            a[0] * b[2] + a[2] * b[0] + a[3] * b[1] - a[1] * b[3],
            a[0] * b[3] + a[3] * b[0] + a[1] * b[2] - a[2] * b[1]};
}

/// Summed from 0, so that the result is never negative zero.
template <class Q> inline QuatElement<Q> dot(Q const& a, Q const& b) {
    return 0 + a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3];
}

template <class Q> inline Q conjugate(Q const& a) { return {a[0], -a[1], -a[2], -a[3]}; }

template <class Q> inline Q inverse(Q const& a) {
    QuatElement<Q> const n = a[0] * a[0] + a[1] * a[1] + a[2] * a[2] + a[3] * a[3];
    if (!(n > 0)) return {0, 0, 0, 0};
    return scaled(conjugate(a), 1 / n);
}

template <class Q> inline QuatElement<Q> squaredVectorPart(Q const& a) {
    return a[1] * a[1] + a[2] * a[2] + a[3] * a[3];
}

template <class Q> inline Q axisAngle(Vector3<QuatElement<Q>> const& axis, QuatElement<Q> angle) {
    using T = QuatElement<Q>;
    T const half = angle / 2, s = sine(half);
    return {cosine(half), axis.x * s, axis.y * s, axis.z * s};
}

template <class Q> inline void toAxisAngle(Q const& a, Vector3<QuatElement<Q>>& axis, QuatElement<Q>& angle) {
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

template <class Q> inline Q exponential(Q const& a) {
    using T = QuatElement<Q>;
    T const theta = std::sqrt(squaredVectorPart(a)), s = sine(theta);
    bool const tiny = !(std::abs(static_cast<double>(s)) >= QUAT_TINY);
    T const factor = tiny ? 1 : s / theta;
    return {cosine(theta), factor * a[1], factor * a[2], factor * a[3]};
}

template <class Q> inline Q logarithm(Q const& a) {
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

/// The angle from p to q. False when p stands for every point between: the angle is tiny, or the two are one
/// unit quaternion whose product with itself rounding has pushed off 1.
template <class Q> inline bool arcBetween(Q const& p, Q const& q, QuatElement<Q>& theta) {
    using T = QuatElement<Q>;
    T const d = dot(p, q);
    if (std::abs(d - 1) <= 4 * std::numeric_limits<T>::epsilon() && equal(p, q)) return false;
    theta = arcCosine(d); // Meant: neither clamped nor turned to the shorter arc.
    return !(std::abs(static_cast<double>(theta)) < QUAT_TINY);
}

/// p and q weighted by the sines of two angles that share out `theta`.
template <class Q>
inline Q weighted(Q const& p, Q const& q, QuatElement<Q> theta, QuatElement<Q> angleP,
                  QuatElement<Q> angleQ) {
    QuatElement<Q> const perSine = 1 / sine(theta);
    QuatElement<Q> const weightP = sine(angleP) * perSine, weightQ = sine(angleQ) * perSine;
    return sum(scaled(p, weightP), scaled(q, weightQ));
}

template <class Q> inline Q slerp(QuatElement<Q> t, Q const& p, Q const& q) {
    QuatElement<Q> theta;
    if (!arcBetween(p, q, theta)) return p;
    return weighted(p, q, theta, (1 - t) * theta, t * theta);
}

template <class Q>
inline Q slerpExtraSpins(QuatElement<Q> t, Q const& p, Q const& q, QuatElement<Q> halfTurns) {
    QuatElement<Q> theta;
    if (!arcBetween(p, q, theta)) return p;
    QuatElement<Q> const phase = halfTurns * t;
    return weighted(p, q, theta, (1 - t) * theta - phase, t * theta + phase);
}

template <class Q> inline Q intermediate(Q const& a, Q const& b, Q const& c) {
    using T = QuatElement<Q>;
    Q const back = conjugate(b);
    Q const bend = sum(logarithm(product(back, a)), logarithm(product(back, c)));
    return product(b, exponential(scaled(bend, static_cast<T>(-0.25))));
}

template <class Q> inline Q squad(QuatElement<Q> t, Q const& p, Q const& a, Q const& b, Q const& q) {
    return slerp(2 * t * (1 - t), slerp(t, p, q), slerp(t, a, b));
}

} // namespace quarn::detail

#endif
