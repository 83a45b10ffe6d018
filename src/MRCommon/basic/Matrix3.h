// Matrix3: nine components row by row; element (r, c) is at index 3 r + c.
//     Matrix3<double> m;  m(0, 2) = 1;          // the third of the nine
// Default construction leaves the components uninitialised.
#ifndef MRCOMMON_BASIC_MATRIX3_H
#define MRCOMMON_BASIC_MATRIX3_H

#include <MRCommon/Export.h>

#include <type_traits>

namespace quarn {

template <class T> class MRCOMMON_API Matrix3 {
public:
    ///@{
    /// Returns one element. Precondition: row and column are from 0 to 2.
    MRCOMMON_HIDDEN constexpr T& operator()(int row, int column) noexcept {
        return elements_[3 * row + column];
    }
    MRCOMMON_HIDDEN constexpr T const& operator()(int row, int column) const noexcept {
        return elements_[3 * row + column];
    }
    ///@}
    ///@{
    /// Returns the first of the 9 contiguous components, row by row.
    MRCOMMON_HIDDEN constexpr T* data() noexcept { return elements_; }
    MRCOMMON_HIDDEN constexpr T const* data() const noexcept { return elements_; }
    ///@}

private:
    T elements_[9];
};

static_assert(sizeof(Matrix3<float>) == 36 && sizeof(Matrix3<double>) == 72);
static_assert(std::is_trivially_copyable_v<Matrix3<double>> && std::is_standard_layout_v<Matrix3<double>>);

} // namespace quarn

#endif
