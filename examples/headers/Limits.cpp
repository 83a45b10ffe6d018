// The widest finite bounds, as ranged vectors have them when they are fresh.
#include <MRCommon/basic/Limits.h>

#include "claim.h"

#include <limits>

namespace constants = quarn::constants;

int main() {
    float lowest = constants::f::MX_MX_MX_MX[0], highest = constants::f::MN_MN_MN_MN[0];
    for (float const height : {2.5f, -1.0f, 7.0f}) {
        lowest = height < lowest ? height : lowest;
        highest = height > highest ? height : highest;
    }
    claim(lowest == -1 && highest == 7, "they are what a search for the least and the greatest begins with");
    claim(constants::d::MN_MN_MN_MN[3] == std::numeric_limits<double>::lowest(), "the minima are negative");
}
