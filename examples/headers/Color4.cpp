// A colour with its opacity.
#include <MRCommon/basic/Color4.h>

#include "claim.h"

int main() {
    quarn::Color4<float> const fresh;
    claim(fresh.r == 0 && fresh.g == 0 && fresh.b == 0 && fresh.a == 1, "a fresh colour is opaque black");

    quarn::Color4<float> water(0.1f, 0.3f, 0.6f, 1);
    water.a = 0.25f;
    claim(water == quarn::Color4<float>(0.1f, 0.3f, 0.6f, 0.25f),
          "the four components are written one by one");
    claim(water != fresh, "two colours are equal when all four are");
}
