// The sequence that gives the same simulation again.
#include <MRCommon/math/Random.h>

#include "claim.h"

int main() {
    resetRandomSequence();
    float const first = DameRandom(), second = DameRandom11();
    claim(first >= 0 && first <= 1, "DameRandom lies in [0, 1]");
    claim(second >= -1 && second <= 1, "DameRandom11 in [-1, 1]");

    resetRandomSequence();
    claim(DameRandom() == first && DameRandom11() == second, "started anew, the sequence is the same");
}
