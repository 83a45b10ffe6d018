// Quat: a quaternion of four floats, for rotations, with conversions and interpolation.
//     Quat q(Vector3<float>(0, 0, 1), pi / 2);         // a quarter turn about z
//     Matrix4<float> m;  ...  Quat(&m)                 // the rotation of a placement
// It is DQuat in single precision; DQuat.h describes every operation and what the last bits depend on. Intentional
// differences:
//   - the 3x3 forms take double: the constructor reads a Matrix3<double>, and QuatToMatrix writes one, for row vectors
//     where DQuat's is for column vectors; FromRotationMatrix takes a Matrix3<float>
//   - trigonometry is calculated in double and narrowed, thresholds are compared in double
//   - the ordering key is the whole bit pattern of an element: -1 is above 1
//   - there is no product with a vector
#ifndef MRCOMMON_MATH_QUAT_H
#define MRCOMMON_MATH_QUAT_H

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

class Quat {
public:
    static MRCOMMON_API Quat const IDENTITY;   ///< (1, 0, 0, 0)
    static MRCOMMON_API Quat const ZERO;       ///< (0, 0, 0, 0)
    static MRCOMMON_API int const ms_iNext[3]; ///< {1, 2, 0}: the axis after each axis, cyclically

    /// Intentional: (0, 0, 1, 0), neither IDENTITY nor ZERO.
    MRCOMMON_HIDDEN constexpr Quat() noexcept : Quat(0, 0, 1, 0) {}
    /// Stores the elements 0 to 3 unchanged.
    MRCOMMON_HIDDEN constexpr Quat(float e0, float e1, float e2, float e3) noexcept
        : elements_{e0, e1, e2, e3} {}
    MRCOMMON_HIDDEN Quat(quarn::Vector3<float> const& axis, float angle) noexcept; ///< as FromAxisAngle
    MRCOMMON_HIDDEN explicit Quat(quarn::Matrix3<double>* m) noexcept;             ///< as FromRotationMatrix
    /// Reads what QuatToMatrix(Matrix4<float>*) writes. The sign of the quaternion may differ.
    MRCOMMON_HIDDEN explicit Quat(quarn::Matrix4<float>* m) noexcept;

    /// Becomes the rotation by `angle` radians about `axis`, which is not normalised.
    MRCOMMON_HIDDEN void FromAxisAngle(quarn::Vector3<float> const& axis, float angle) noexcept;
    /// Reads a matrix for column vectors, which is the transpose of what QuatToMatrix(Matrix3<double>*) writes.
    MRCOMMON_HIDDEN void FromRotationMatrix(quarn::Matrix3<float> const& m) noexcept;

    ///@{
    /// Returns element 0 to 3. The index is not range-checked.
    MRCOMMON_HIDDEN constexpr float operator[](int i) const noexcept { return elements_[i]; }
    MRCOMMON_HIDDEN constexpr float& operator[](int i) noexcept { return elements_[i]; }
    ///@}
    ///@{
    /// The same for every other type of integer, which would else be ambiguous with the conversion to a pointer.
    template <class Index, class = std::enable_if_t<std::is_integral_v<Index>>>
    MRCOMMON_HIDDEN constexpr float operator[](Index i) const noexcept {
        return elements_[static_cast<std::size_t>(i)];
    }
    template <class Index, class = std::enable_if_t<std::is_integral_v<Index>>>
    MRCOMMON_HIDDEN constexpr float& operator[](Index i) noexcept {
        return elements_[static_cast<std::size_t>(i)];
    }
    ///@}
    ///@{
    /// Returns the four contiguous elements, for interfaces that take an array.
    MRCOMMON_HIDDEN constexpr operator float*() noexcept { return elements_; }
    MRCOMMON_HIDDEN constexpr operator float const*() const noexcept { return elements_; }
    ///@}

    ///@{
    /// Intentional: the accessors name the elements 0 to 3, so W() is not the scalar part of the algebra.
    MRCOMMON_HIDDEN constexpr float X() const noexcept { return elements_[0]; }
    MRCOMMON_HIDDEN constexpr float Y() const noexcept { return elements_[1]; }
    MRCOMMON_HIDDEN constexpr float Z() const noexcept { return elements_[2]; }
    MRCOMMON_HIDDEN constexpr float W() const noexcept { return elements_[3]; }
    MRCOMMON_HIDDEN constexpr float& X() noexcept { return elements_[0]; }
    MRCOMMON_HIDDEN constexpr float& Y() noexcept { return elements_[1]; }
    MRCOMMON_HIDDEN constexpr float& Z() noexcept { return elements_[2]; }
    MRCOMMON_HIDDEN constexpr float& W() noexcept { return elements_[3]; }
    ///@}

    ///@{
    /// Calculates element by element. Division by 0 gives 1e8 in every element.
    MRCOMMON_HIDDEN constexpr Quat operator+(Quat const& b) const noexcept;
    MRCOMMON_HIDDEN constexpr Quat operator-(Quat const& b) const noexcept;
    MRCOMMON_HIDDEN constexpr Quat operator-() const noexcept;
    MRCOMMON_HIDDEN constexpr Quat operator*(float s) const noexcept;
    MRCOMMON_HIDDEN constexpr Quat operator/(float s) const noexcept;
    MRCOMMON_HIDDEN constexpr Quat& operator+=(Quat const& b) noexcept { return *this = *this + b; }
    MRCOMMON_HIDDEN constexpr Quat& operator-=(Quat const& b) noexcept { return *this = *this - b; }
    MRCOMMON_HIDDEN constexpr Quat& operator*=(float s) noexcept { return *this = *this * s; }
    MRCOMMON_HIDDEN constexpr Quat& operator/=(float s) noexcept { return *this = *this / s; }
    ///@}

    /// Returns the Hamilton product, as for DQuat.
    MRCOMMON_HIDDEN constexpr Quat operator*(Quat const& b) const noexcept;
    /// Returns the sum of the products of corresponding elements.
    MRCOMMON_HIDDEN constexpr float Dot(Quat const& b) const noexcept { return quarn::detail::dot(*this, b); }
    /// Negates the elements 1 to 3.
    MRCOMMON_HIDDEN constexpr Quat Conjugate() const noexcept;
    /// Returns the inverse, or ZERO if the sum of the squared elements is 0 or NaN.
    MRCOMMON_HIDDEN constexpr Quat getInverse() const noexcept;

    ///@{
    /// Compares the elements as numbers: 0 equals -0, and NaN equals nothing.
    MRCOMMON_HIDDEN constexpr bool operator==(Quat const& b) const noexcept {
        return quarn::detail::equal(*this, b);
    }
    MRCOMMON_HIDDEN constexpr bool operator!=(Quat const& b) const noexcept { return !(*this == b); }
    ///@}

    /// Returns -1, 0 or 1 by the first elements whose bit patterns differ. Intentional: these are compared as unsigned
    /// integers, which orders keys of containers, not numbers.
    MRCOMMON_HIDDEN int CompareArrays(Quat const& b) const noexcept;
    ///@{
    /// Compares by CompareArrays.
    MRCOMMON_HIDDEN bool operator<(Quat const& b) const noexcept { return CompareArrays(b) < 0; }
    MRCOMMON_HIDDEN bool operator<=(Quat const& b) const noexcept { return CompareArrays(b) <= 0; }
    MRCOMMON_HIDDEN bool operator>(Quat const& b) const noexcept { return CompareArrays(b) > 0; }
    MRCOMMON_HIDDEN bool operator>=(Quat const& b) const noexcept { return CompareArrays(b) >= 0; }
    ///@}

    /// Writes the rotation matrix for row vectors, calculated in double, with the scalar part in element 0. Intentional:
    /// this is the transpose of what DQuat writes and of what the constructor reads.
    MRCOMMON_HIDDEN void QuatToMatrix(quarn::Matrix3<double>* m) const noexcept;
    /// Writes the rotation matrix for row vectors, with the scalar part in element 3, into the upper left 3x3 block only.
    MRCOMMON_HIDDEN void QuatToMatrix(quarn::Matrix4<float>* m) const noexcept;

    ///@{
    /// As for DQuat.
    MRCOMMON_HIDDEN void ToAxisAngle(quarn::Vector3<float>& axis, float& angle) const noexcept;
    MRCOMMON_HIDDEN Quat Exp() const noexcept;
    MRCOMMON_HIDDEN Quat Log() const noexcept;
    MRCOMMON_HIDDEN static Quat Slerp(float t, Quat const& p, Quat const& q) noexcept;
    MRCOMMON_HIDDEN static Quat SlerpExtraSpins(float t, Quat const& p, Quat const& q, int spins) noexcept;
    MRCOMMON_HIDDEN static Quat GetIntermediate(Quat const& a, Quat const& b, Quat const& c) noexcept;
    MRCOMMON_HIDDEN static Quat Squad(float t, Quat const& p, Quat const& a, Quat const& b,
                                      Quat const& q) noexcept;
    ///@}

private:
    MRCOMMON_HIDDEN static std::uint32_t orderKey(float element) noexcept;

    float elements_[4];
};

/// Multiplies element by element.
MRCOMMON_HIDDEN constexpr Quat operator*(float s, Quat const& q) noexcept { return q * s; }

static_assert(sizeof(Quat) == 16 && std::is_trivially_copyable_v<Quat> && std::is_standard_layout_v<Quat>);

// ---------------------------------------------------------------------------

inline Quat::Quat(quarn::Vector3<float> const& axis, float angle) noexcept
    : Quat(quarn::detail::axisAngle<Quat>(axis, angle)) {}

inline Quat::Quat(quarn::Matrix3<double>* m) noexcept
    : Quat(quarn::detail::fromRotation<quarn::detail::ScalarFirst, Quat>(*m)) {}

inline Quat::Quat(quarn::Matrix4<float>* m) noexcept
    : Quat(quarn::detail::fromRotation<quarn::detail::ScalarLast, Quat>(*m)) {}

inline void Quat::FromAxisAngle(quarn::Vector3<float> const& axis, float angle) noexcept {
    *this = Quat(axis, angle);
}

inline void Quat::FromRotationMatrix(quarn::Matrix3<float> const& m) noexcept {
    *this = quarn::detail::fromRotation<quarn::detail::ScalarFirst, Quat>(m);
}

constexpr Quat Quat::operator+(Quat const& b) const noexcept { return quarn::detail::sum(*this, b); }
constexpr Quat Quat::operator-(Quat const& b) const noexcept { return quarn::detail::difference(*this, b); }
constexpr Quat Quat::operator-() const noexcept { return quarn::detail::negated(*this); }
constexpr Quat Quat::operator*(float s) const noexcept { return quarn::detail::scaled(*this, s); }
constexpr Quat Quat::operator/(float s) const noexcept { return quarn::detail::divided(*this, s); }
constexpr Quat Quat::operator*(Quat const& b) const noexcept { return quarn::detail::product(*this, b); }
constexpr Quat Quat::Conjugate() const noexcept { return quarn::detail::conjugate(*this); }
constexpr Quat Quat::getInverse() const noexcept { return quarn::detail::inverse(*this); }

inline int Quat::CompareArrays(Quat const& b) const noexcept {
    return quarn::detail::compareKeys(*this, b, orderKey);
}

inline void Quat::QuatToMatrix(quarn::Matrix3<double>* m) const noexcept {
    using namespace quarn::detail;
    writeRotation<Stored::ForRows>(*m, elements_[1], elements_[2], elements_[3], elements_[0]);
}

inline void Quat::QuatToMatrix(quarn::Matrix4<float>* m) const noexcept {
    using namespace quarn::detail;
    writeRotation<Stored::ForRows>(*m, elements_[0], elements_[1], elements_[2], elements_[3]);
}

inline void Quat::ToAxisAngle(quarn::Vector3<float>& axis, float& angle) const noexcept {
    quarn::detail::toAxisAngle(*this, axis, angle);
}

inline Quat Quat::Exp() const noexcept { return quarn::detail::exponential(*this); }
inline Quat Quat::Log() const noexcept { return quarn::detail::logarithm(*this); }

inline Quat Quat::Slerp(float t, Quat const& p, Quat const& q) noexcept {
    return quarn::detail::slerp(t, p, q);
}

inline Quat Quat::SlerpExtraSpins(float t, Quat const& p, Quat const& q, int spins) noexcept {
    return quarn::detail::slerpExtraSpins(t, p, q, static_cast<float>(spins) * 3.1415927f);
}

inline Quat Quat::GetIntermediate(Quat const& a, Quat const& b, Quat const& c) noexcept {
    return quarn::detail::intermediate(a, b, c);
}

inline Quat Quat::Squad(float t, Quat const& p, Quat const& a, Quat const& b, Quat const& q) noexcept {
    return quarn::detail::squad(t, p, a, b, q);
}

inline std::uint32_t Quat::orderKey(float element) noexcept {
    std::uint32_t pattern;
    std::memcpy(&pattern, &element, sizeof pattern);
    return pattern;
}

#endif
