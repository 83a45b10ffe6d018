// A number to an int, as the application has always rounded.
#include <MRCommon/math/Rounding.h>

#include "claim.h"

int main() {
    claim(Redondea(2.4) == 2 && Redondea(2.5) == 3, "halves go up");
    claim(Redondea(-2.4) == -2 && Redondea(-2.7) == -1, "below 0 it is not to nearest: meant");
    claim(Redondea(1e300) == std::numeric_limits<int>::min(), "what does not fit is the smallest int");
}
