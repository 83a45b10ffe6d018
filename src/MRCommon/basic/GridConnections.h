// GridConnections: one bit for each of the 27 cells around and including a cell of a 3-D grid.
//     GRID3_CONNECTION_Xn_Yo_Zp         the neighbour at offset (-1, 0, +1): bit 9*0 + 3*1 + 2
//     GRID3_CONNECTION_MASK_Xn          the nine bits whose x offset is -1
// The letter after an axis is n for offset -1, o for 0, p for +1.
#ifndef MRCOMMON_BASIC_GRIDCONNECTIONS_H
#define MRCOMMON_BASIC_GRIDCONNECTIONS_H

#include <MRCommon/Export.h>

namespace MRCOMMON_HIDDEN quarn {

namespace detail::grid {

constexpr unsigned int n = 0, o = 1, p = 2;

constexpr unsigned int bit(unsigned int x, unsigned int y, unsigned int z) {
    return 1u << (9 * x + 3 * y + z);
}

/// Returns the nine bits whose offset on `axis` (0, 1, 2 for x, y, z) is `side`.
constexpr unsigned int slice(unsigned int axis, unsigned int side) {
    unsigned int mask = 0;
    for (unsigned int i = 0; i < 3; ++i)
        for (unsigned int j = 0; j < 3; ++j)
            mask |= axis == 0 ? bit(side, i, j) : axis == 1 ? bit(i, side, j) : bit(i, j, side);
    return mask;
}

/// Returns what a cell at this side of a box is connected to along `axis`: itself and the cells inwards.
constexpr unsigned int inward(unsigned int axis, unsigned int side) {
    return slice(axis, o) | slice(axis, side == n ? p : n);
}

constexpr unsigned int corner(unsigned int x, unsigned int y, unsigned int z) {
    return inward(0, x) & inward(1, y) & inward(2, z);
}

} // namespace detail::grid

// Each name contains the arguments of the function that computes its value.
#define GRID3_CELL(X, Y, Z)                                                                                  \
    inline constexpr unsigned int GRID3_CONNECTION_X##X##_Y##Y##_Z##Z =                                      \
        detail::grid::bit(detail::grid::X, detail::grid::Y, detail::grid::Z)
#define GRID3_ROW(X, Y)                                                                                      \
    GRID3_CELL(X, Y, n);                                                                                     \
    GRID3_CELL(X, Y, o);                                                                                     \
    GRID3_CELL(X, Y, p)
#define GRID3_PLANE(X)                                                                                       \
    GRID3_ROW(X, n);                                                                                         \
    GRID3_ROW(X, o);                                                                                         \
    GRID3_ROW(X, p)
#define GRID3_SLICES(AXIS, INDEX)                                                                            \
    inline constexpr unsigned int GRID3_CONNECTION_MASK_##AXIS##n =                                          \
        detail::grid::slice(INDEX, detail::grid::n);                                                         \
    inline constexpr unsigned int GRID3_CONNECTION_MASK_##AXIS##o =                                          \
        detail::grid::slice(INDEX, detail::grid::o);                                                         \
    inline constexpr unsigned int GRID3_CONNECTION_MASK_##AXIS##p =                                          \
        detail::grid::slice(INDEX, detail::grid::p)
#define GRID3_CORNER(X, Y, Z)                                                                                \
    inline constexpr unsigned int GRID3_CONNECTION_MASK_BOX_CORNER_X##X##_Y##Y##_Z##Z =                      \
        detail::grid::corner(detail::grid::X, detail::grid::Y, detail::grid::Z)

///@{
/// The bit of one neighbour; the letters are its offsets on the three axes.
GRID3_PLANE(n);
GRID3_PLANE(o);
GRID3_PLANE(p);
///@}

///@{
/// The nine bits whose offset on one axis is that of the letter.
GRID3_SLICES(X, 0);
GRID3_SLICES(Y, 1);
GRID3_SLICES(Z, 2);
///@}

inline constexpr unsigned int GRID3_CONNECTION_MASK = ///< All 27 bits.
    GRID3_CONNECTION_MASK_Xn | GRID3_CONNECTION_MASK_Xo | GRID3_CONNECTION_MASK_Xp;

///@{
/// The cells that a cell in a corner of a box is connected to: itself and the seven inwards.
GRID3_CORNER(n, n, n);
GRID3_CORNER(p, n, n);
GRID3_CORNER(n, p, n);
GRID3_CORNER(p, p, n);
GRID3_CORNER(n, n, p);
GRID3_CORNER(p, n, p);
GRID3_CORNER(n, p, p);
GRID3_CORNER(p, p, p);
///@}

#undef GRID3_CORNER
#undef GRID3_SLICES
#undef GRID3_PLANE
#undef GRID3_ROW
#undef GRID3_CELL

/// The eight corner masks; index x + 2 y + 4 z with n = 0, p = 1.
inline constexpr unsigned int GRID3_CONNECTION_MASK_BOX_CORNER[8] = {
    GRID3_CONNECTION_MASK_BOX_CORNER_Xn_Yn_Zn, GRID3_CONNECTION_MASK_BOX_CORNER_Xp_Yn_Zn,
    GRID3_CONNECTION_MASK_BOX_CORNER_Xn_Yp_Zn, GRID3_CONNECTION_MASK_BOX_CORNER_Xp_Yp_Zn,
    GRID3_CONNECTION_MASK_BOX_CORNER_Xn_Yn_Zp, GRID3_CONNECTION_MASK_BOX_CORNER_Xp_Yn_Zp,
    GRID3_CONNECTION_MASK_BOX_CORNER_Xn_Yp_Zp, GRID3_CONNECTION_MASK_BOX_CORNER_Xp_Yp_Zp};

} // namespace quarn

#endif
