// Nine components, row by row.
#include <MRCommon/basic/Matrix3.h>

#include "claim.h"

int main() {
    quarn::Matrix3<double> m; // unwritten
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) m(row, column) = row == column ? 1 : 0;

    m(0, 2) = 5;
    claim(m.data()[2] == 5, "row 0, column 2 is the third of the nine");
    claim(m.data()[4] == 1 && m(2, 0) == 0, "the others are those of the unit matrix");
}
