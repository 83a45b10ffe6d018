// DQuat: a quaternion of four doubles, for rotations, with conversions and interpolation.
//     DQuat q(Vector3<double>(0, 0, 1), pi / 2);       // a quarter turn about z
//     Matrix3<double> m;  q.QuatToMatrix(&m);          // the same turn for column vectors
//     DQuat::Slerp(0.5, DQuat::IDENTITY, q)            // an eighth of a turn
// The algebra and the 3x3 conversions take element 0 for the scalar part, the named accessors and the 4x4
// conversions element 3; docs/rotations.md has the table. Meant so, and part of what callers rely on.
//
// Nothing is checked or clamped: a degenerate input gives the value stated at the operation, or NaN. All is
// inline and evaluated in the order in which it is written; who lets a compiler fuse multiplications with
// additions (-ffp-contract, with a processor option such as -mfma) gets other last bits.
// Quat is the same in single precision, with differences that its header names.
#ifndef MRCOMMON_MATH_DQUAT_H
#define MRCOMMON_MATH_DQUAT_H

#include <MRCommon/basic/Matrix3.h>
#include <MRCommon/basic/Matrix4.h>
#include <MRCommon/math/detail/QuatAlgebra.h>
#include <MRCommon/math/detail/QuatMatrix.h>

#include <cstdint>
#include <cstring>

class MRCOMMON_API DQuat {
public:
    static DQuat const IDENTITY;  ///< (1, 0, 0, 0)
    static DQuat const ZERO;      ///< (0, 0, 0, 0)
    static int const ms_iNext[3]; ///< {1, 2, 0}: the axis after each axis, cyclically

    constexpr DQuat() : DQuat(0, 0, 1, 0) {} ///< Meant: (0, 0, 1, 0), neither IDENTITY nor ZERO.
    constexpr DQuat(double e0, double e1, double e2, double e3) : elements_{e0, e1, e2, e3} {}
    DQuat(quarn::Vector3<double> const& axis, double angle);
    explicit DQuat(quarn::Matrix3<double>* m); ///< as FromRotationMatrix
    explicit DQuat(quarn::Matrix4<double>* m); ///< undoes QuatToMatrix(Matrix4<double>*)

    /// The turn by `angle` radians about `axis`, which is taken as given: its length stays in the elements.
    void FromAxisAngle(quarn::Vector3<double> const& axis, double angle);
    /// Undoes QuatToMatrix(Matrix3<double>*). A matrix of no rotation may give infinities.
    void FromRotationMatrix(quarn::Matrix3<double> const& m);

    constexpr double operator[](int i) const { return elements_[i]; }
    constexpr double& operator[](int i) { return elements_[i]; }
    constexpr operator double*() { return elements_; }
    constexpr operator double const*() const { return elements_; }

    // Meant: the accessors name the elements 0 to 3, so W() is not the scalar part of the algebra.
    constexpr double X() const { return elements_[0]; }
    constexpr double Y() const { return elements_[1]; }
    constexpr double Z() const { return elements_[2]; }
    constexpr double W() const { return elements_[3]; }
    constexpr double& X() { return elements_[0]; }
    constexpr double& Y() { return elements_[1]; }
    constexpr double& Z() { return elements_[2]; }
    constexpr double& W() { return elements_[3]; }

    DQuat operator+(DQuat const& b) const { return quarn::detail::sum(*this, b); }
    DQuat operator-(DQuat const& b) const { return quarn::detail::difference(*this, b); }
    DQuat operator-() const { return {-elements_[0], -elements_[1], -elements_[2], -elements_[3]}; }
    DQuat operator*(double s) const { return quarn::detail::scaled(*this, s); }
    DQuat operator/(double s) const { return quarn::detail::divided(*this, s); } ///< by 0: 1e8 four times
    DQuat& operator+=(DQuat const& b) { return *this = *this + b; }
    DQuat& operator-=(DQuat const& b) { return *this = *this - b; }
    DQuat& operator*=(double s) { return *this = *this * s; }
    DQuat& operator/=(double s) { return *this = *this / s; } ///< by 0: 1e8 four times

    /// The Hamilton product: on column vectors, the turn by `b` and then by this.
    DQuat operator*(DQuat const& b) const { return quarn::detail::product(*this, b); }
    double Dot(DQuat const& b) const { return quarn::detail::dot(*this, b); }
    DQuat Conjugate() const { return quarn::detail::conjugate(*this); }
    DQuat getInverse() const { return quarn::detail::inverse(*this); } ///< of ZERO: ZERO

    /// The row vector v times the matrix of QuatToMatrix(Matrix3<double>*): v turned backwards. Meant.
    quarn::Vector3<double> operator*(quarn::Vector3<double> const& v) const;

    bool operator==(DQuat const& b) const { return quarn::detail::equal(*this, b); } ///< as numbers
    bool operator!=(DQuat const& b) const { return !(*this == b); }

    /// -1, 0 or 1 by the first elements whose keys differ. The key of an element is the low half of its bit
    /// pattern: an order for containers, not of numbers. Meant. It may be 0 where the two are not ==.
    int CompareArrays(DQuat const& b) const { return quarn::detail::compareKeys(*this, b, orderKey); }
    bool operator<(DQuat const& b) const { return CompareArrays(b) < 0; }
    bool operator<=(DQuat const& b) const { return CompareArrays(b) <= 0; }
    bool operator>(DQuat const& b) const { return CompareArrays(b) > 0; }
    bool operator>=(DQuat const& b) const { return CompareArrays(b) >= 0; }

    /// The rotation matrix for column vectors, the scalar part in element 0. Nothing is normalised.
    void QuatToMatrix(quarn::Matrix3<double>* m) const;
    /// The rotation matrix for row vectors, the scalar part in element 3, into the upper left 3x3 block; the
    /// other seven elements keep what they hold.
    void QuatToMatrix(quarn::Matrix4<double>* m) const;

    /// Angle in radians and unit axis of a unit quaternion. A vector part of squared length 1e-8 or less
    /// gives angle 0 about (1, 0, 0); a scalar part beyond -1 or 1 gives the angle NaN.
    void ToAxisAngle(quarn::Vector3<double>& axis, double& angle) const;

    DQuat Exp() const { return quarn::detail::exponential(*this); } ///< element 0 is not looked at
    DQuat Log() const { return quarn::detail::logarithm(*this); }   ///< element 0 of the result is 0

    /// From p (t = 0) to q (t = 1) along the arc between them, the long way when their product is negative.
    /// p where the arc is shorter than 1e-8 or both are one unit quaternion; NaN for a product beyond -1
    /// or 1. (Ken Shoemake, "Animating rotation with quaternion curves", 1985.)
    static DQuat Slerp(double t, DQuat const& p, DQuat const& q) { return quarn::detail::slerp(t, p, q); }
    /// As Slerp, with `spins` half circles more on the way, each a whole turn of what is rotated; an odd
    /// number ends at -q. (Jack Morrison, "Quaternion interpolation with extra spins", 1992.)
    static DQuat SlerpExtraSpins(double t, DQuat const& p, DQuat const& q, int spins);
    /// The inner control point for Squad at the unit quaternion b, on the way from a to c.
    static DQuat GetIntermediate(DQuat const& a, DQuat const& b, DQuat const& c);
    /// The spherical cubic from p to q with the inner control points a and b. (Ken Shoemake, "Quaternion
    /// calculus and fast animation", 1987.)
    static DQuat Squad(double t, DQuat const& p, DQuat const& a, DQuat const& b, DQuat const& q);

private:
    static std::uint32_t orderKey(double element);

    double elements_[4];
};

inline DQuat operator*(double s, DQuat const& q) { return q * s; }

static_assert(sizeof(DQuat) == 32 && std::is_trivially_copyable_v<DQuat> && std::is_standard_layout_v<DQuat>);

// ---------------------------------------------------------------------------

inline DQuat::DQuat(quarn::Vector3<double> const& axis, double angle)
    : DQuat(quarn::detail::axisAngle<DQuat>(axis, angle)) {}

inline DQuat::DQuat(quarn::Matrix3<double>* m)
    : DQuat(quarn::detail::fromRotation<quarn::detail::ScalarFirst, DQuat>(*m)) {}

inline DQuat::DQuat(quarn::Matrix4<double>* m)
    : DQuat(quarn::detail::fromRotation<quarn::detail::ScalarLast, DQuat>(*m)) {}

inline void DQuat::FromAxisAngle(quarn::Vector3<double> const& axis, double angle) {
    *this = DQuat(axis, angle);
}

inline void DQuat::FromRotationMatrix(quarn::Matrix3<double> const& m) {
    *this = quarn::detail::fromRotation<quarn::detail::ScalarFirst, DQuat>(m);
}

inline quarn::Vector3<double> DQuat::operator*(quarn::Vector3<double> const& v) const {
    quarn::Matrix3<double> m;
    QuatToMatrix(&m);
    auto const column = [&](int j) { return v.x * m(0, j) + v.y * m(1, j) + v.z * m(2, j); };
    return {column(0), column(1), column(2)};
}

inline void DQuat::QuatToMatrix(quarn::Matrix3<double>* m) const {
    using namespace quarn::detail;
    writeRotation<Stored::ForColumns>(*m, elements_[1], elements_[2], elements_[3], elements_[0]);
}

inline void DQuat::QuatToMatrix(quarn::Matrix4<double>* m) const {
    using namespace quarn::detail;
    writeRotation<Stored::ForRows>(*m, elements_[0], elements_[1], elements_[2], elements_[3]);
}

inline void DQuat::ToAxisAngle(quarn::Vector3<double>& axis, double& angle) const {
    quarn::detail::toAxisAngle(*this, axis, angle);
}

inline DQuat DQuat::SlerpExtraSpins(double t, DQuat const& p, DQuat const& q, int spins) {
    return quarn::detail::slerpExtraSpins(t, p, q, spins * 3.141592653589793);
}

inline DQuat DQuat::GetIntermediate(DQuat const& a, DQuat const& b, DQuat const& c) {
    return quarn::detail::intermediate(a, b, c);
}

inline DQuat DQuat::Squad(double t, DQuat const& p, DQuat const& a, DQuat const& b, DQuat const& q) {
    return quarn::detail::squad(t, p, a, b, q);
}

inline std::uint32_t DQuat::orderKey(double element) {
    std::uint64_t pattern;
    std::memcpy(&pattern, &element, sizeof pattern);
    return static_cast<std::uint32_t>(pattern);
}

#endif
