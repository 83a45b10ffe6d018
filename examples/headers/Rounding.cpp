// Converting a number to an int, as the application has always rounded.
#include <MRCommon/math/Rounding.h>

#include "claim.h"

#include <limits>

int main() {
    claim(Redondea(2.4) == 2 && Redondea(2.5) == 3, "halves go up");
    claim(Redondea(-2.4) == -2 && Redondea(-2.7) == -1,
          "numbers below 0 are not rounded to nearest: intentional");
    claim(Redondea(1e300) == std::numeric_limits<int>::min(),
          "a result that does not fit is the smallest int");
}
