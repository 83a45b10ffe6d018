// Vector3: three contiguous components x, y, z: a point, a direction, an extent.
//     Vector3<float> v(1, 2, 3);        v.dot(v) is 14
// Default construction leaves the components uninitialised.
#ifndef MRCOMMON_BASIC_VECTOR3_H
#define MRCOMMON_BASIC_VECTOR3_H

#include <MRCommon/Export.h>

#include <cmath>
#include <type_traits>

namespace quarn {

template <class T> class MRCOMMON_API Vector3 {
public:
    ///@{
    /// In the units of the owner.
    T x, y, z;
    ///@}

    MRCOMMON_HIDDEN Vector3() = default;
    MRCOMMON_HIDDEN constexpr Vector3(T x_, T y_, T z_) noexcept : x(x_), y(y_), z(z_) {} ///< unchecked

    ///@{
    /// Returns component 0, 1 or 2. Precondition: the index is one of these.
    MRCOMMON_HIDDEN constexpr T& operator[](int i) noexcept { return i == 0 ? x : i == 1 ? y : z; }
    MRCOMMON_HIDDEN constexpr T const& operator[](int i) const noexcept {
        return i == 0 ? x : i == 1 ? y : z;
    }
    ///@}

    ///@{
    /// Work on each component; a factor scales all three.
    MRCOMMON_HIDDEN constexpr Vector3 operator+(Vector3 const& b) const noexcept {
        return {x + b.x, y + b.y, z + b.z};
    }
    MRCOMMON_HIDDEN constexpr Vector3 operator-(Vector3 const& b) const noexcept {
        return {x - b.x, y - b.y, z - b.z};
    }
    MRCOMMON_HIDDEN constexpr Vector3 operator-() const noexcept { return {-x, -y, -z}; }
    MRCOMMON_HIDDEN constexpr Vector3 operator*(T s) const noexcept { return {x * s, y * s, z * s}; }
    MRCOMMON_HIDDEN constexpr Vector3& operator+=(Vector3 const& b) noexcept { return *this = *this + b; }
    MRCOMMON_HIDDEN constexpr Vector3& operator-=(Vector3 const& b) noexcept { return *this = *this - b; }
    MRCOMMON_HIDDEN constexpr Vector3& operator*=(T s) noexcept { return *this = *this * s; }
    MRCOMMON_HIDDEN friend constexpr Vector3 operator*(T s, Vector3 const& v) noexcept { return v * s; }
    ///@}

    /// Returns the scalar product.
    MRCOMMON_HIDDEN constexpr T dot(Vector3 const& b) const noexcept { return x * b.x + y * b.y + z * b.z; }
    /// Returns the vector product, which is at right angles to both (right-hand rule).
    MRCOMMON_HIDDEN constexpr Vector3 cross(Vector3 const& b) const noexcept {
        return {y * b.z - z * b.y, z * b.x - x * b.z, x * b.y - y * b.x};
    }
    MRCOMMON_HIDDEN T length() const noexcept { return std::sqrt(dot(*this)); } ///< the Euclidean norm

    MRCOMMON_HIDDEN friend constexpr bool operator==(Vector3 const& a, Vector3 const& b) noexcept {
        return a.x == b.x && a.y == b.y && a.z == b.z;
    }
    MRCOMMON_HIDDEN friend constexpr bool operator!=(Vector3 const& a, Vector3 const& b) noexcept {
        return !(a == b);
    }
};

static_assert(sizeof(Vector3<float>) == 12 && sizeof(Vector3<double>) == 24);
static_assert(std::is_trivially_copyable_v<Vector3<float>> && std::is_standard_layout_v<Vector3<float>>);
static_assert(std::is_trivially_copyable_v<Vector3<double>> && std::is_standard_layout_v<Vector3<double>>);

} // namespace quarn

#endif
