// Color4: red, green, blue and opacity, contiguous. The default is opaque black, (0, 0, 0, 1).
//     Color4<float> water(0.1f, 0.3f, 0.6f, 1);
#ifndef MRCOMMON_BASIC_COLOR4_H
#define MRCOMMON_BASIC_COLOR4_H

#include <MRCommon/Export.h>

#include <type_traits>

namespace quarn {

template <class T> class MRCOMMON_API Color4 {
public:
    ///@{
    /// Usually from 0 to 1 each; nothing is clamped.
    T r = 0, g = 0, b = 0, a = 1;
    ///@}

    MRCOMMON_HIDDEN constexpr Color4() noexcept = default;
    MRCOMMON_HIDDEN constexpr Color4(T r_, T g_, T b_, T a_) noexcept
        : r(r_), g(g_), b(b_), a(a_) {} ///< red, green, blue, opacity

    MRCOMMON_HIDDEN friend constexpr bool operator==(Color4 const& p, Color4 const& q) noexcept {
        return p.r == q.r && p.g == q.g && p.b == q.b && p.a == q.a;
    }
    MRCOMMON_HIDDEN friend constexpr bool operator!=(Color4 const& p, Color4 const& q) noexcept {
        return !(p == q);
    }
};

static_assert(sizeof(Color4<float>) == 16 && sizeof(Color4<double>) == 32);
static_assert(std::is_trivially_copyable_v<Color4<float>> && std::is_standard_layout_v<Color4<float>>);
static_assert(std::is_trivially_copyable_v<Color4<double>> && std::is_standard_layout_v<Color4<double>>);

} // namespace quarn

#endif
