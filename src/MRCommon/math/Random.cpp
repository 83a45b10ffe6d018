#include <MRCommon/math/Random.h>

#include <cstdlib>

void resetRandomSequence() { std::srand(1970); }

// The factor is 2^-31. The largest numbers round up to 2^31 as a float, which gives 1.
float DameRandom() { return static_cast<float>(std::rand()) * 4.656613e-10f; }

float DameRandom11() {
    float const half = DameRandom() - 0.5f;
    return half + half;
}
