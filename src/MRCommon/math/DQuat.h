// DQuat: a quaternion of four doubles, for rotations, with conversions and interpolation.
//     DQuat q(Vector3<double>(0, 0, 1), pi / 2);       // a quarter turn about z
//     Matrix3<double> m;  q.QuatToMatrix(&m);          // the same rotation for column vectors
//     DQuat::Slerp(0.5, DQuat::IDENTITY, q)            // an eighth of a turn
// Intentional: the algebra and the 3x3 conversions take element 0 as the scalar part, the named accessors and the 4x4
// conversions element 3. Callers rely on both; docs/rotations.md lists every operation.
//
// Nothing is checked or clamped: degenerate input gives the value stated at the operation, or NaN. Everything is inline,
// compiled into each calling module, and evaluated in the order in which it is written. The last bits depend on the
// platform's sine, cosine and arc cosine, and change in a module whose compiler may fuse multiplications with additions
// (-ffp-contract together with a processor option such as -mfma).
// Quat is the same in single precision, with differences that its header names.
#ifndef MRCOMMON_MATH_DQUAT_H
#define MRCOMMON_MATH_DQUAT_H

#include <MRCommon/basic/Matrix3.h>
#include <MRCommon/basic/Matrix4.h>
#include <MRCommon/basic/Vector3.h>
#include <MRCommon/Export.h>
#include <MRCommon/math/detail/QuatAlgebra.h>
#include <MRCommon/math/detail/QuatMatrix.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

class DQuat {
public:
    static MRCOMMON_API DQuat const IDENTITY;  ///< (1, 0, 0, 0)
    static MRCOMMON_API DQuat const ZERO;      ///< (0, 0, 0, 0)
    static MRCOMMON_API int const ms_iNext[3]; ///< {1, 2, 0}: the axis after each axis, cyclically

    /// Intentional: (0, 0, 1, 0), neither IDENTITY nor ZERO.
    MRCOMMON_HIDDEN constexpr DQuat() noexcept : DQuat(0, 0, 1, 0) {}
    /// Stores the elements 0 to 3 unchanged.
    MRCOMMON_HIDDEN constexpr DQuat(double e0, double e1, double e2, double e3) noexcept
        : elements_{e0, e1, e2, e3} {}
    MRCOMMON_HIDDEN DQuat(quarn::Vector3<double> const& axis, double angle) noexcept; ///< as FromAxisAngle
    MRCOMMON_HIDDEN explicit DQuat(quarn::Matrix3<double>* m) noexcept; ///< as FromRotationMatrix
    /// Reads what QuatToMatrix(Matrix4<double>*) writes. The sign of the quaternion may differ.
    MRCOMMON_HIDDEN explicit DQuat(quarn::Matrix4<double>* m) noexcept;

    /// Becomes the rotation by `angle` radians about `axis`, which is not normalised: its length stays in the elements.
    MRCOMMON_HIDDEN void FromAxisAngle(quarn::Vector3<double> const& axis, double angle) noexcept;
    /// Reads what QuatToMatrix(Matrix3<double>*) writes. The sign of the quaternion may differ. A matrix that is not a
    /// rotation gives a quaternion that need not be a unit quaternion; nothing is ever divided by 0.
    MRCOMMON_HIDDEN void FromRotationMatrix(quarn::Matrix3<double> const& m) noexcept;

    ///@{
    /// Returns element 0 to 3. The index is not range-checked.
    MRCOMMON_HIDDEN constexpr double operator[](int i) const noexcept { return elements_[i]; }
    MRCOMMON_HIDDEN constexpr double& operator[](int i) noexcept { return elements_[i]; }
    ///@}
    ///@{
    /// The same for every other type of integer, which would else be ambiguous with the conversion to a pointer.
    template <class Index, class = std::enable_if_t<std::is_integral_v<Index>>>
    MRCOMMON_HIDDEN constexpr double operator[](Index i) const noexcept {
        return elements_[static_cast<std::size_t>(i)];
    }
    template <class Index, class = std::enable_if_t<std::is_integral_v<Index>>>
    MRCOMMON_HIDDEN constexpr double& operator[](Index i) noexcept {
        return elements_[static_cast<std::size_t>(i)];
    }
    ///@}
    ///@{
    /// Returns the four contiguous elements, for interfaces that take an array.
    MRCOMMON_HIDDEN constexpr operator double*() noexcept { return elements_; }
    MRCOMMON_HIDDEN constexpr operator double const*() const noexcept { return elements_; }
    ///@}

    ///@{
    /// Intentional: the accessors name the elements 0 to 3, so W() is not the scalar part of the algebra.
    MRCOMMON_HIDDEN constexpr double X() const noexcept { return elements_[0]; }
    MRCOMMON_HIDDEN constexpr double Y() const noexcept { return elements_[1]; }
    MRCOMMON_HIDDEN constexpr double Z() const noexcept { return elements_[2]; }
    MRCOMMON_HIDDEN constexpr double W() const noexcept { return elements_[3]; }
    MRCOMMON_HIDDEN constexpr double& X() noexcept { return elements_[0]; }
    MRCOMMON_HIDDEN constexpr double& Y() noexcept { return elements_[1]; }
    MRCOMMON_HIDDEN constexpr double& Z() noexcept { return elements_[2]; }
    MRCOMMON_HIDDEN constexpr double& W() noexcept { return elements_[3]; }
    ///@}

    ///@{
    /// Calculates element by element. Division by 0 gives 1e8 in every element.
    MRCOMMON_HIDDEN constexpr DQuat operator+(DQuat const& b) const noexcept;
    MRCOMMON_HIDDEN constexpr DQuat operator-(DQuat const& b) const noexcept;
    MRCOMMON_HIDDEN constexpr DQuat operator-() const noexcept;
    MRCOMMON_HIDDEN constexpr DQuat operator*(double s) const noexcept;
    MRCOMMON_HIDDEN constexpr DQuat operator/(double s) const noexcept;
    MRCOMMON_HIDDEN constexpr DQuat& operator+=(DQuat const& b) noexcept { return *this = *this + b; }
    MRCOMMON_HIDDEN constexpr DQuat& operator-=(DQuat const& b) noexcept { return *this = *this - b; }
    MRCOMMON_HIDDEN constexpr DQuat& operator*=(double s) noexcept { return *this = *this * s; }
    MRCOMMON_HIDDEN constexpr DQuat& operator/=(double s) noexcept { return *this = *this / s; }
    ///@}

    /// Returns the Hamilton product: for column vectors, the rotation by `b` followed by this one.
    MRCOMMON_HIDDEN constexpr DQuat operator*(DQuat const& b) const noexcept;
    /// Returns the sum of the products of corresponding elements.
    MRCOMMON_HIDDEN constexpr double Dot(DQuat const& b) const noexcept {
        return quarn::detail::dot(*this, b);
    }
    /// Negates the elements 1 to 3.
    MRCOMMON_HIDDEN constexpr DQuat Conjugate() const noexcept;
    /// Returns the inverse, or ZERO if the sum of the squared elements is 0 or NaN.
    MRCOMMON_HIDDEN constexpr DQuat getInverse() const noexcept;

    /// Intentional: returns the row vector v times the matrix of QuatToMatrix(Matrix3<double>*), which is v rotated
    /// backwards.
    MRCOMMON_HIDDEN quarn::Vector3<double> operator*(quarn::Vector3<double> const& v) const noexcept;

    ///@{
    /// Compares the elements as numbers: 0 equals -0, and NaN equals nothing.
    MRCOMMON_HIDDEN constexpr bool operator==(DQuat const& b) const noexcept {
        return quarn::detail::equal(*this, b);
    }
    MRCOMMON_HIDDEN constexpr bool operator!=(DQuat const& b) const noexcept { return !(*this == b); }
    ///@}

    /// Returns -1, 0 or 1 by the first elements whose keys differ. Intentional: the key of an element is the low half of
    /// its bit pattern, which orders keys of containers, not numbers. The result may be 0 although the two are not equal.
    MRCOMMON_HIDDEN int CompareArrays(DQuat const& b) const noexcept;
    ///@{
    /// Compares by CompareArrays.
    MRCOMMON_HIDDEN bool operator<(DQuat const& b) const noexcept { return CompareArrays(b) < 0; }
    MRCOMMON_HIDDEN bool operator<=(DQuat const& b) const noexcept { return CompareArrays(b) <= 0; }
    MRCOMMON_HIDDEN bool operator>(DQuat const& b) const noexcept { return CompareArrays(b) > 0; }
    MRCOMMON_HIDDEN bool operator>=(DQuat const& b) const noexcept { return CompareArrays(b) >= 0; }
    ///@}

    /// Writes the rotation matrix for column vectors, with the scalar part in element 0. Nothing is normalised.
    MRCOMMON_HIDDEN void QuatToMatrix(quarn::Matrix3<double>* m) const noexcept;
    /// Writes the rotation matrix for row vectors, with the scalar part in element 3, into the upper left 3x3 block. The
    /// other seven elements are not changed.
    MRCOMMON_HIDDEN void QuatToMatrix(quarn::Matrix4<double>* m) const noexcept;

    /// Writes the angle in radians and the unit axis of a unit quaternion: angle 0 and axis (1, 0, 0) if the squared
    /// length of the vector part is at most 1e-8, the angle NaN if the scalar part is beyond -1 or 1.
    MRCOMMON_HIDDEN void ToAxisAngle(quarn::Vector3<double>& axis, double& angle) const noexcept;

    MRCOMMON_HIDDEN DQuat Exp() const noexcept; ///< ignores element 0
    MRCOMMON_HIDDEN DQuat Log() const noexcept; ///< element 0 of the result is 0

    /// Interpolates from p (t = 0) to q (t = 1) along the arc between them, the long way if their product is negative.
    /// Returns p if the arc is shorter than 1e-8 or both are the same unit quaternion, and NaN if the product is beyond
    /// -1 or 1. (Ken Shoemake, "Animating rotation with quaternion curves", 1985.)
    MRCOMMON_HIDDEN static DQuat Slerp(double t, DQuat const& p, DQuat const& q) noexcept;
    /// As Slerp, with `spins` more half circles on the way, each a whole turn of the rotated body; an odd number ends at
    /// -q. (Jack Morrison, "Quaternion interpolation with extra spins", 1992.)
    MRCOMMON_HIDDEN static DQuat SlerpExtraSpins(double t, DQuat const& p, DQuat const& q,
                                                 int spins) noexcept;
    /// Returns the inner control point for Squad at the unit quaternion b, between a and c.
    MRCOMMON_HIDDEN static DQuat GetIntermediate(DQuat const& a, DQuat const& b, DQuat const& c) noexcept;
    /// Interpolates from p to q by a spherical cubic with the inner control points a and b. (Ken Shoemake, "Quaternion
    /// calculus and fast animation", 1987.)
    MRCOMMON_HIDDEN static DQuat Squad(double t, DQuat const& p, DQuat const& a, DQuat const& b,
                                       DQuat const& q) noexcept;

private:
    MRCOMMON_HIDDEN static std::uint32_t orderKey(double element) noexcept;

    double elements_[4];
};

/// Multiplies element by element.
MRCOMMON_HIDDEN constexpr DQuat operator*(double s, DQuat const& q) noexcept { return q * s; }

static_assert(sizeof(DQuat) == 32 && std::is_trivially_copyable_v<DQuat> && std::is_standard_layout_v<DQuat>);

// ---------------------------------------------------------------------------

inline DQuat::DQuat(quarn::Vector3<double> const& axis, double angle) noexcept
    : DQuat(quarn::detail::axisAngle<DQuat>(axis, angle)) {}

inline DQuat::DQuat(quarn::Matrix3<double>* m) noexcept
    : DQuat(quarn::detail::fromRotation<quarn::detail::ScalarFirst, DQuat>(*m)) {}

inline DQuat::DQuat(quarn::Matrix4<double>* m) noexcept
    : DQuat(quarn::detail::fromRotation<quarn::detail::ScalarLast, DQuat>(*m)) {}

inline void DQuat::FromAxisAngle(quarn::Vector3<double> const& axis, double angle) noexcept {
    *this = DQuat(axis, angle);
}

inline void DQuat::FromRotationMatrix(quarn::Matrix3<double> const& m) noexcept {
    *this = quarn::detail::fromRotation<quarn::detail::ScalarFirst, DQuat>(m);
}

constexpr DQuat DQuat::operator+(DQuat const& b) const noexcept { return quarn::detail::sum(*this, b); }
constexpr DQuat DQuat::operator-(DQuat const& b) const noexcept {
    return quarn::detail::difference(*this, b);
}
constexpr DQuat DQuat::operator-() const noexcept { return quarn::detail::negated(*this); }
constexpr DQuat DQuat::operator*(double s) const noexcept { return quarn::detail::scaled(*this, s); }
constexpr DQuat DQuat::operator/(double s) const noexcept { return quarn::detail::divided(*this, s); }
constexpr DQuat DQuat::operator*(DQuat const& b) const noexcept { return quarn::detail::product(*this, b); }
constexpr DQuat DQuat::Conjugate() const noexcept { return quarn::detail::conjugate(*this); }
constexpr DQuat DQuat::getInverse() const noexcept { return quarn::detail::inverse(*this); }

inline quarn::Vector3<double> DQuat::operator*(quarn::Vector3<double> const& v) const noexcept {
    quarn::Matrix3<double> m;
    QuatToMatrix(&m);
    auto const column = [&](int j) { return v.x * m(0, j) + v.y * m(1, j) + v.z * m(2, j); };
    return {column(0), column(1), column(2)};
}

inline int DQuat::CompareArrays(DQuat const& b) const noexcept {
    return quarn::detail::compareKeys(*this, b, orderKey);
}

inline void DQuat::QuatToMatrix(quarn::Matrix3<double>* m) const noexcept {
    using namespace quarn::detail;
    writeRotation<Stored::ForColumns>(*m, elements_[1], elements_[2], elements_[3], elements_[0]);
}

inline void DQuat::QuatToMatrix(quarn::Matrix4<double>* m) const noexcept {
    using namespace quarn::detail;
    writeRotation<Stored::ForRows>(*m, elements_[0], elements_[1], elements_[2], elements_[3]);
}

inline void DQuat::ToAxisAngle(quarn::Vector3<double>& axis, double& angle) const noexcept {
    quarn::detail::toAxisAngle(*this, axis, angle);
}

inline DQuat DQuat::Exp() const noexcept { return quarn::detail::exponential(*this); }
inline DQuat DQuat::Log() const noexcept { return quarn::detail::logarithm(*this); }

inline DQuat DQuat::Slerp(double t, DQuat const& p, DQuat const& q) noexcept {
    return quarn::detail::slerp(t, p, q);
}

inline DQuat DQuat::SlerpExtraSpins(double t, DQuat const& p, DQuat const& q, int spins) noexcept {
    return quarn::detail::slerpExtraSpins(t, p, q, spins * 3.141592653589793);
}

inline DQuat DQuat::GetIntermediate(DQuat const& a, DQuat const& b, DQuat const& c) noexcept {
    return quarn::detail::intermediate(a, b, c);
}

inline DQuat DQuat::Squad(double t, DQuat const& p, DQuat const& a, DQuat const& b, DQuat const& q) noexcept {
    return quarn::detail::squad(t, p, a, b, q);
}

inline std::uint32_t DQuat::orderKey(double element) noexcept {
    std::uint64_t pattern;
    std::memcpy(&pattern, &element, sizeof pattern);
    return static_cast<std::uint32_t>(pattern);
}

#endif
