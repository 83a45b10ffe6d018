// Quaternion: four components x, y, z, w, the scalar part w last, and the angles that it turns by.
//     Quaternion<double> q(0, 0, 0, 1);                // no rotation
//     Tuple3<double, double, double> radians;
//     q.getAngles(PERMUTATION_XYZ_120, radians);       // (0, 0, 0)
// The quaternions of the rotation algebra, scalar first, are DQuat and Quat.
#ifndef MRCOMMON_BASIC_QUATERNION_H
#define MRCOMMON_BASIC_QUATERNION_H

#include <MRCommon/basic/Tuple.h>

namespace quarn {

/// The six axis orders, named after the images of the axes 0, 1, 2. May hold other values, which name no
/// order.
enum QN_PERMUTATION_XYZ : int {
    PERMUTATION_XYZ_012 = 0,
    PERMUTATION_XYZ_201 = 1,
    PERMUTATION_XYZ_120 = 2,
    PERMUTATION_XYZ_021 = 3,
    PERMUTATION_XYZ_210 = 4,
    PERMUTATION_XYZ_102 = 5
};

template <class T> class MRCOMMON_API Quaternion {
public:
    ///@{
    /// The axis times the sine of half the angle, and its cosine.
    T x, y, z, w;
    ///@}

    MRCOMMON_HIDDEN Quaternion() = default; ///< unwritten
    MRCOMMON_HIDDEN constexpr Quaternion(T x_, T y_, T z_, T w_)
        : x(x_), y(y_), z(z_), w(w_) {} ///< unchecked

    /// The three Euler angles, in radians, of a quaternion of any length but 0, in the given axis order.
    /// An order outside 0..5 leaves `angles` unchanged. Defined in libMRCommon, for double.
    void getAngles(QN_PERMUTATION_XYZ const& order, Tuple3<T, T, T>& angles) const;

    /// The one extraction behind all orders, on the four components in the order that belongs to it.
    static void getAngles_ZXY(T const& a, T const& b, T const& c, T const& d, Tuple3<T, T, T>& angles);
};

extern template void Quaternion<double>::getAngles(QN_PERMUTATION_XYZ const& order,
                                                   Tuple3<double, double, double>& angles) const;
extern template void Quaternion<double>::getAngles_ZXY(double const& a, double const& b, double const& c,
                                                       double const& d,
                                                       Tuple3<double, double, double>& angles);

static_assert(sizeof(Quaternion<float>) == 16 && sizeof(Quaternion<double>) == 32);
static_assert(std::is_trivially_copyable_v<Quaternion<double>>);
static_assert(std::is_standard_layout_v<Quaternion<double>>);

} // namespace quarn

#endif
