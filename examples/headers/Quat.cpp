// Rotations in single precision, and the rotation of a placement.
#include <MRCommon/math/Quat.h>

#include "claim.h"

#include <cmath>

int main() {
    float const r = std::sqrt(0.5f);
    Quat const turn(0, 0, r, r); // the 4x4 forms take element 3 for the scalar part: 90 degrees about z

    quarn::Matrix4<float> placement;
    for (int i = 0; i < 16; ++i) placement.data()[i] = 0;
    placement(3, 0) = 5;
    turn.QuatToMatrix(&placement);
    claim(std::abs(placement(0, 1) - 1) < 1e-6f, "the row of the x axis points along y");
    claim(placement(3, 0) == 5, "the translation is kept");

    claim(std::abs(Quat(&placement).Dot(turn) - 1) < 1e-6f, "the placement converts back to the quaternion");
    claim(Quat(1, 0, 0, 0) < Quat(-1, 0, 0, 0), "bit patterns are ordered, not numbers: intentional");
}
