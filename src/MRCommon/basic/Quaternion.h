// Quaternion: four components x, y, z, w, the scalar part w last, and their Euler angles.
//     Quaternion<double> q(0, 0, 0, 1);                // no rotation
//     Tuple3<double, double, double> radians;
//     q.getAngles(PERMUTATION_XYZ_120, radians);       // (0, 0, 0)
// The quaternions of the rotation algebra, scalar first, are DQuat and Quat.
#ifndef MRCOMMON_BASIC_QUATERNION_H
#define MRCOMMON_BASIC_QUATERNION_H

#include <MRCommon/basic/Tuple.h>
#include <MRCommon/Export.h>

#include <type_traits>

namespace quarn {

/// The six axis orders, named after the images of the axes 0, 1, 2. Other values may be held; they are
/// unknown orders.
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
    /// The axis times the sine of half the angle, and the cosine of half the angle.
    T x, y, z, w;
    ///@}

    MRCOMMON_HIDDEN Quaternion() = default; ///< uninitialised
    MRCOMMON_HIDDEN constexpr Quaternion(T x_, T y_, T z_, T w_) noexcept
        : x(x_), y(y_), z(z_), w(w_) {} ///< unchecked

    /// Computes the three Euler angles, in radians, of a quaternion of any length but 0, in the given axis
    /// order. An unknown order leaves `angles` unchanged. Defined in math/EulerAngles.cpp, for double.
    void getAngles(QN_PERMUTATION_XYZ const& order, Tuple3<T, T, T>& angles) const;

    /// Extracts the angles for all orders, from the four components in the sequence that belongs to the order.
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
