// A reproducible random sequence.
#include <MRCommon/math/Random.h>

#include "claim.h"

int main() {
    resetRandomSequence();
    float const first = DameRandom(), second = DameRandom11();
    claim(first >= 0 && first <= 1, "DameRandom is in [0, 1]");
    claim(second >= -1 && second <= 1, "DameRandom11 in [-1, 1]");

    resetRandomSequence();
    claim(DameRandom() == first && DameRandom11() == second, "after a restart the sequence is the same");
}
