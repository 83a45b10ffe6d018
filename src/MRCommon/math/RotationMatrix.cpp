#include <MRCommon/math/RotationMatrix.h>

#include <cmath>

using namespace quarn;

namespace {

template <class T> Vector3<T> transformAxis(Matrix4<T> const& m, Vector3<T> const& axis, T shortest) {
    auto const row = [&](int r) {
        Vector3<T> const given(m(r, 0), m(r, 1), m(r, 2));
        T const squared = given.dot(given);
        return squared > shortest ? given * (1 / std::sqrt(squared)) : given;
    };
    return axis.x * row(0) + axis.y * row(1) + axis.z * row(2);
}

} // namespace

// The thresholds are the numbers just below 1e-28 and 1e-56.
Vector3<float> TransformaEje(Matrix4<float> const& m, Vector3<float> const& axis) {
    return transformAxis(m, axis, 9.9999994e-29f);
}

Vector3<double> TransformaEje(Matrix4<double> const& m, Vector3<double> const& axis) {
    return transformAxis(m, axis, 9.999999999999999e-57);
}

namespace quarn::matrix3tools {

template <class M, class T> void getQuaternion_VERSION3(M const& m, Quaternion<T>& q) {
    // The root and its factor belong to the largest of the four components; the root is at least 1.
    T s, f;
    auto const root = [&](T squared) {
        s = std::sqrt(squared);
        f = 1 / (2 * s);
    };
    auto const largest = [&] { return 2 * s * T(0.25); };
    auto const minus = [&](int r, int c) { return (m(r, c) - m(c, r)) * f; };
    auto const plus = [&](int r, int c) { return (m(r, c) + m(c, r)) * f; };

    T const trace = m(0, 0) + m(1, 1) + m(2, 2);
    if (trace > 0) {
        root(trace + 1);
        q = {minus(1, 2), minus(2, 0), minus(0, 1), largest()};
    } else if (m(0, 0) > m(1, 1) && m(0, 0) > m(2, 2)) {
        root(m(0, 0) - m(1, 1) - m(2, 2) + 1);
        q = {largest(), plus(0, 1), plus(2, 0), minus(1, 2)};
    } else if (m(1, 1) > m(2, 2)) {
        root(m(1, 1) - m(0, 0) - m(2, 2) + 1);
        q = {plus(0, 1), largest(), plus(1, 2), minus(2, 0)};
    } else {
        root(m(2, 2) - m(0, 0) - m(1, 1) + 1);
        q = {plus(0, 2), plus(1, 2), largest(), minus(0, 1)};
    }
    if (q.w < 0) q = {-q.x, -q.y, -q.z, -q.w};
    T const perLength = 1 / std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
    q = {q.x * perLength, q.y * perLength, q.z * perLength, q.w * perLength};
}

template void getQuaternion_VERSION3<Matrix3<double>, double>(Matrix3<double> const& m,
                                                              Quaternion<double>& q);

} // namespace quarn::matrix3tools
