// Matrix4: sixteen components row by row; element (r, c) stands at position 4 r + c.
//     A point is a row vector, p' = p M; the translation stands in row 3, positions 12, 13, 14.
// Default construction leaves the components unwritten. An index outside 0..3 is a caller's error.
#ifndef MRCOMMON_BASIC_MATRIX4_H
#define MRCOMMON_BASIC_MATRIX4_H

#include <MRCommon/Export.h>

#include <type_traits>

namespace quarn {

template <class T> class MRCOMMON_API Matrix4 {
public:
    ///@{
    /// One element, counted from 0.
    MRCOMMON_HIDDEN constexpr T& operator()(int row, int column) { return elements_[4 * row + column]; }
    MRCOMMON_HIDDEN constexpr T const& operator()(int row, int column) const {
        return elements_[4 * row + column];
    }
    ///@}
    ///@{
    /// All 16 components, row by row.
    MRCOMMON_HIDDEN constexpr T* data() { return elements_; }
    MRCOMMON_HIDDEN constexpr T const* data() const { return elements_; }
    ///@}

private:
    T elements_[16];
};

static_assert(sizeof(Matrix4<float>) == 64 && sizeof(Matrix4<double>) == 128);
static_assert(std::is_trivially_copyable_v<Matrix4<float>> && std::is_standard_layout_v<Matrix4<float>>);

} // namespace quarn

#endif
