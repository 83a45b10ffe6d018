#include <MRCommon/math/Random.h>

#include <cstdlib>

void resetRandomSequence() { std::srand(1970); }

// The factor is 2^-31. A draw near the largest rounds up as a float, which is how 1 comes about.
float DameRandom() { return static_cast<float>(std::rand()) * 4.656613e-10f; }

float DameRandom11() {
    float const half = DameRandom() - 0.5f;
    return half + half;
}
