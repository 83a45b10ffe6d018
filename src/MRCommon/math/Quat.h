// Quat: a quaternion of four floats, for rotations, with conversions and interpolation.
//     Quat q(Vector3<float>(0, 0, 1), pi / 2);         // a quarter turn about z
//     Matrix4<float> m;  ...  Quat(&m)                 // out of the rotation in a placement
// It is DQuat in single precision; every operation, and the word on last bits, stands there. What differs,
// and is meant to:
//   - the 3x3 forms are of double: the constructor reads Matrix3<double>, QuatToMatrix writes one, for row
//     vectors where DQuat's is for column vectors; FromRotationMatrix takes Matrix3<float>
//   - trigonometry is taken in double and narrowed, thresholds are compared in double
//   - the key of the order is an element's whole bit pattern: -1 stands above 1
//   - there is no product with a vector
#ifndef MRCOMMON_MATH_QUAT_H
#define MRCOMMON_MATH_QUAT_H

#include <MRCommon/basic/Matrix3.h>
#include <MRCommon/basic/Matrix4.h>
#include <MRCommon/math/detail/QuatAlgebra.h>
#include <MRCommon/math/detail/QuatMatrix.h>

#include <cstdint>
#include <cstring>

class MRCOMMON_API Quat {
public:
    static Quat const IDENTITY;   ///< (1, 0, 0, 0)
    static Quat const ZERO;       ///< (0, 0, 0, 0)
    static int const ms_iNext[3]; ///< {1, 2, 0}: the axis after each axis, cyclically

    constexpr Quat() : Quat(0, 0, 1, 0) {} ///< Meant: (0, 0, 1, 0), neither IDENTITY nor ZERO.
    constexpr Quat(float e0, float e1, float e2, float e3) : elements_{e0, e1, e2, e3} {}
    Quat(quarn::Vector3<float> const& axis, float angle);
    explicit Quat(quarn::Matrix3<double>* m); ///< for column vectors: what the Matrix3 form writes, inverted
    explicit Quat(quarn::Matrix4<float>* m);  ///< undoes QuatToMatrix(Matrix4<float>*)

    void FromAxisAngle(quarn::Vector3<float> const& axis, float angle);
    void FromRotationMatrix(quarn::Matrix3<float> const& m); ///< a matrix for column vectors

    constexpr float operator[](int i) const { return elements_[i]; }
    constexpr float& operator[](int i) { return elements_[i]; }
    constexpr operator float*() { return elements_; }
    constexpr operator float const*() const { return elements_; }

    // Meant: the accessors name the elements 0 to 3, so W() is not the scalar part of the algebra.
    constexpr float X() const { return elements_[0]; }
    constexpr float Y() const { return elements_[1]; }
    constexpr float Z() const { return elements_[2]; }
    constexpr float W() const { return elements_[3]; }
    constexpr float& X() { return elements_[0]; }
    constexpr float& Y() { return elements_[1]; }
    constexpr float& Z() { return elements_[2]; }
    constexpr float& W() { return elements_[3]; }

    Quat operator+(Quat const& b) const { return quarn::detail::sum(*this, b); }
    Quat operator-(Quat const& b) const { return quarn::detail::difference(*this, b); }
    Quat operator-() const { return {-elements_[0], -elements_[1], -elements_[2], -elements_[3]}; }
    Quat operator*(float s) const { return quarn::detail::scaled(*this, s); }
    Quat operator/(float s) const { return quarn::detail::divided(*this, s); } ///< by 0: 1e8 four times
    Quat& operator+=(Quat const& b) { return *this = *this + b; }
    Quat& operator-=(Quat const& b) { return *this = *this - b; }
    Quat& operator*=(float s) { return *this = *this * s; }
    Quat& operator/=(float s) { return *this = *this / s; } ///< by 0: 1e8 four times

    Quat operator*(Quat const& b) const { return quarn::detail::product(*this, b); }
    float Dot(Quat const& b) const { return quarn::detail::dot(*this, b); }
    Quat Conjugate() const { return quarn::detail::conjugate(*this); }
    Quat getInverse() const { return quarn::detail::inverse(*this); } ///< of ZERO: ZERO

    bool operator==(Quat const& b) const { return quarn::detail::equal(*this, b); } ///< as numbers
    bool operator!=(Quat const& b) const { return !(*this == b); }

    /// -1, 0 or 1 by the first elements whose bit patterns differ, read as unsigned integers. Meant.
    int CompareArrays(Quat const& b) const { return quarn::detail::compareKeys(*this, b, orderKey); }
    bool operator<(Quat const& b) const { return CompareArrays(b) < 0; }
    bool operator<=(Quat const& b) const { return CompareArrays(b) <= 0; }
    bool operator>(Quat const& b) const { return CompareArrays(b) > 0; }
    bool operator>=(Quat const& b) const { return CompareArrays(b) >= 0; }

    /// The rotation matrix for row vectors, calculated in double, the scalar part in element 0. Meant: it is
    /// the transpose of what DQuat writes and of what the constructor reads.
    void QuatToMatrix(quarn::Matrix3<double>* m) const;
    /// For row vectors too, the scalar part in element 3. Only the upper left 3x3 block is written.
    void QuatToMatrix(quarn::Matrix4<float>* m) const;

    void ToAxisAngle(quarn::Vector3<float>& axis, float& angle) const;

    Quat Exp() const { return quarn::detail::exponential(*this); }
    Quat Log() const { return quarn::detail::logarithm(*this); }

    static Quat Slerp(float t, Quat const& p, Quat const& q) { return quarn::detail::slerp(t, p, q); }
    static Quat SlerpExtraSpins(float t, Quat const& p, Quat const& q, int spins);
    static Quat GetIntermediate(Quat const& a, Quat const& b, Quat const& c);
    static Quat Squad(float t, Quat const& p, Quat const& a, Quat const& b, Quat const& q);

private:
    static std::uint32_t orderKey(float element);

    float elements_[4];
};

inline Quat operator*(float s, Quat const& q) { return q * s; }

static_assert(sizeof(Quat) == 16 && std::is_trivially_copyable_v<Quat> && std::is_standard_layout_v<Quat>);

// ---------------------------------------------------------------------------

inline Quat::Quat(quarn::Vector3<float> const& axis, float angle)
    : Quat(quarn::detail::axisAngle<Quat>(axis, angle)) {}

inline Quat::Quat(quarn::Matrix3<double>* m)
    : Quat(quarn::detail::fromRotation<quarn::detail::ScalarFirst, Quat>(*m)) {}

inline Quat::Quat(quarn::Matrix4<float>* m)
    : Quat(quarn::detail::fromRotation<quarn::detail::ScalarLast, Quat>(*m)) {}

inline void Quat::FromAxisAngle(quarn::Vector3<float> const& axis, float angle) { *this = Quat(axis, angle); }

inline void Quat::FromRotationMatrix(quarn::Matrix3<float> const& m) {
    *this = quarn::detail::fromRotation<quarn::detail::ScalarFirst, Quat>(m);
}

inline void Quat::QuatToMatrix(quarn::Matrix3<double>* m) const {
    using namespace quarn::detail;
    writeRotation<Stored::ForRows>(*m, elements_[1], elements_[2], elements_[3], elements_[0]);
}

inline void Quat::QuatToMatrix(quarn::Matrix4<float>* m) const {
    using namespace quarn::detail;
    writeRotation<Stored::ForRows>(*m, elements_[0], elements_[1], elements_[2], elements_[3]);
}

inline void Quat::ToAxisAngle(quarn::Vector3<float>& axis, float& angle) const {
    quarn::detail::toAxisAngle(*this, axis, angle);
}

inline Quat Quat::SlerpExtraSpins(float t, Quat const& p, Quat const& q, int spins) {
    return quarn::detail::slerpExtraSpins(t, p, q, static_cast<float>(spins) * 3.1415927f);
}

inline Quat Quat::GetIntermediate(Quat const& a, Quat const& b, Quat const& c) {
    return quarn::detail::intermediate(a, b, c);
}

inline Quat Quat::Squad(float t, Quat const& p, Quat const& a, Quat const& b, Quat const& q) {
    return quarn::detail::squad(t, p, a, b, q);
}

inline std::uint32_t Quat::orderKey(float element) {
    std::uint32_t pattern;
    std::memcpy(&pattern, &element, sizeof pattern);
    return pattern;
}

#endif
