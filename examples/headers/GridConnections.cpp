// Which of the 27 cells around a cell it is connected to, one bit for each.
#include <MRCommon/basic/GridConnections.h>

#include "claim.h"

using namespace quarn;

int main() {
    claim(GRID3_CONNECTION_Xn_Yo_Zp == 1u << 5, "the neighbour at (-1, 0, +1) is bit 9*0 + 3*1 + 2");

    unsigned int const open = GRID3_CONNECTION_MASK & ~GRID3_CONNECTION_MASK_Zn;
    claim((open & GRID3_CONNECTION_Xo_Yo_Zn) == 0, "on the floor of the grid there is nothing below");
    claim((open & GRID3_CONNECTION_Xo_Yo_Zp) != 0, "but something above");

    unsigned int const corner = GRID3_CONNECTION_MASK_BOX_CORNER[1]; // x + 2 y + 4 z: high x, low y, low z
    claim(corner == GRID3_CONNECTION_MASK_BOX_CORNER_Xp_Yn_Zn, "corners have names and numbers");
    claim((corner & GRID3_CONNECTION_MASK_Xp) == 0, "and no neighbour outside the box");
}
