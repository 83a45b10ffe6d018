// Matrix4: sixteen components row by row; element (r, c) is at index 4 r + c.
//     Points are row vectors, p' = p M; the translation is in row 3, at the indices 12, 13, 14.
// Default construction leaves the components uninitialised.
#ifndef MRCOMMON_BASIC_MATRIX4_H
#define MRCOMMON_BASIC_MATRIX4_H

#include <MRCommon/Export.h>

#include <type_traits>

namespace quarn {

template <class T> class MRCOMMON_API Matrix4 {
public:
    ///@{
    /// Returns one element. Precondition: row and column are from 0 to 3.
    MRCOMMON_HIDDEN constexpr T& operator()(int row, int column) noexcept {
        return elements_[4 * row + column];
    }
    MRCOMMON_HIDDEN constexpr T const& operator()(int row, int column) const noexcept {
        return elements_[4 * row + column];
    }
    ///@}
    ///@{
    /// Returns the first of the 16 contiguous components, row by row.
    MRCOMMON_HIDDEN constexpr T* data() noexcept { return elements_; }
    MRCOMMON_HIDDEN constexpr T const* data() const noexcept { return elements_; }
    ///@}

private:
    T elements_[16];
};

static_assert(sizeof(Matrix4<float>) == 64 && sizeof(Matrix4<double>) == 128);
static_assert(std::is_trivially_copyable_v<Matrix4<float>> && std::is_standard_layout_v<Matrix4<float>>);

} // namespace quarn

#endif
