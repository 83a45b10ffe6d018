// Three angles for the rotation from one direction to another.
#include <MRCommon/math/EulerAngles.h>

#include "claim.h"

#include <cmath>

using quarn::Vector3;

int main() {
    Vector3<float> from(2, 0, 0); // any length
    Vector3<float> const degrees = getEulerAngles(&from, Vector3<float>(0, 1, 0), 1);
    claim(std::abs(degrees.z - 90) < 1e-4f, "from x to y is a quarter turn about z");
    claim(std::abs(degrees.x) < 1e-4f && std::abs(degrees.y) < 1e-4f, "and nothing about x and y");

    Vector3<float> const backwards = getEulerAngles(&from, Vector3<float>(0, 1, 0), 2);
    claim(std::abs(backwards.z + 90) < 1e-4f, "mode 2 gives the inverse rotation");
    claim(getEulerAngles(&from, Vector3<float>(1, 0, 0), 1) == Vector3<float>(0, 0, 0),
          "equal directions give zeros");
}
