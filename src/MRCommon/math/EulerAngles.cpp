#include <MRCommon/math/EulerAngles.h>

#include <MRCommon/basic/Matrix3.h>
#include <MRCommon/basic/Tuple.h>
#include <MRCommon/math/Quat.h>
#include <MRCommon/math/RotationMatrix.h>

#include <cmath>
#include <limits>

int AX = 0;
int AY = 1;
int AZ = 2;

namespace quarn {

int const PERMUTATION_XYZ_IMAGES[6][3] = {{0, 1, 2}, {2, 0, 1}, {1, 2, 0}, {0, 2, 1}, {2, 1, 0}, {1, 0, 2}};

template <class T>
void Quaternion<T>::getAngles_ZXY(T const& a, T const& b, T const& c, T const& d, Tuple3<T, T, T>& angles) {
    constexpr T quarterTurn = T(1.5707963267948966);
    T const n = a * a + b * b + c * c + d * d;
    T const s = 2 * (a * d - b * c) / n;
    // Intentional: only rounding takes s beyond 1 or -1; exactly 1 and -1 go through the arc sine.
    if (s > 1)
        angles = {0, quarterTurn, 2 * std::atan2(-c, d)};
    else if (s < -1)
        angles = {0, -quarterTurn, -2 * std::atan2(-c, d)};
    else
        angles = {std::atan2(2 * b * a + 2 * c * d, b * b + d * d - c * c - a * a), std::asin(s),
                  std::atan2(2 * a * c + 2 * b * d, c * c + d * d - b * b - a * a)};
}

template <class T>
void Quaternion<T>::getAngles(QN_PERMUTATION_XYZ const& order, Tuple3<T, T, T>& angles) const {
    switch (order) {
    case PERMUTATION_XYZ_012: return getAngles_ZXY(y, z, x, w, angles);
    case PERMUTATION_XYZ_201: return getAngles_ZXY(z, x, y, w, angles);
    case PERMUTATION_XYZ_120: return getAngles_ZXY(x, y, z, w, angles);
    case PERMUTATION_XYZ_021: getAngles_ZXY(-y, -z, -x, w, angles); break;
    case PERMUTATION_XYZ_210: getAngles_ZXY(-z, -x, -y, w, angles); break;
    case PERMUTATION_XYZ_102: getAngles_ZXY(-x, -y, -z, w, angles); break;
    default: return;
    }
    // In these orders the angles are those of the inverse rotation, reversed and negated.
    angles = {-angles[2], -angles[1], -angles[0]};
}

template void Quaternion<double>::getAngles_ZXY(double const& a, double const& b, double const& c,
                                                double const& d, Tuple3<double, double, double>& angles);
template void Quaternion<double>::getAngles(QN_PERMUTATION_XYZ const& order,
                                            Tuple3<double, double, double>& angles) const;

} // namespace quarn

using namespace quarn;

namespace {

/// Returns the unit vector along `cross`, a product of two vectors. It is NaN if the product is 0 or not finite, as for
/// opposite directions, which have no single axis between them.
Vector3<float> unitAxis(Vector3<float> const& cross) {
    Vector3<double> const wide(cross.x, cross.y, cross.z);
    double const length = wide.length();
    auto const component = [&](int i) { return static_cast<float>(wide[i] / length); };
    return {component(0), component(1), component(2)};
}

/// Returns the angles about x, y and z, in degrees and multiplied by `sign`, of a rotation in the given axis order.
Vector3<float> degrees(Quat const& rotation, QN_PERMUTATION_XYZ order, double sign) {
    Matrix3<double> m;
    Quaternion<double> q;
    Tuple3<double, double, double> angles;
    rotation.QuatToMatrix(&m);
    matrix3tools::getQuaternion_VERSION3(m, q);
    q.getAngles(order, angles);
    auto const about = [&](int axis) {
        return static_cast<float>(sign * angles[PERMUTATION_XYZ_IMAGES[order][axis]] * 57.29577951308232);
    };
    return {about(0), about(1), about(2)};
}

} // namespace

Vector3<float> getEulerAngles(Vector3<float>* from, Vector3<float> const& to, int mode) {
    Vector3<float> const none(0, 0, 0);
    if (mode < 1 || mode > 3) return none;
    Vector3<float> const n = *from * (1 / from->length());
    Vector3<float> const cross = n.cross(to);
    float dot = n.dot(to);
    // Rounding may push the product of equal directions above 1.
    if (dot > 1 && dot <= 1 + 4 * std::numeric_limits<float>::epsilon()) dot = 1;
    if (dot == 1 || (cross == none && dot > 0 && dot < 1)) return none;
    Quat const rotation(unitAxis(cross), static_cast<float>(std::acos(static_cast<double>(dot))));
    if (mode == 1) return degrees(rotation, PERMUTATION_XYZ_102, 1);
    return degrees(rotation, mode == 2 ? PERMUTATION_XYZ_120 : PERMUTATION_XYZ_201, -1);
}
