// Rotations in double precision.
#include <MRCommon/math/DQuat.h>

#include "claim.h"

#include <cmath>

using quarn::Vector3;

int main() {
    double const pi = std::acos(-1.0);
    DQuat const quarter(Vector3<double>(0, 0, 1), pi / 2); // 90 degrees about z
    claim(std::abs(quarter[0] - std::sqrt(0.5)) < 1e-15, "element 0 is the cosine of half the angle");

    quarn::Matrix3<double> m;
    quarter.QuatToMatrix(&m);
    claim(std::abs(m(1, 0) - 1) < 1e-15, "for column vectors the matrix takes x to y");
    claim((quarter * Vector3<double>(1, 0, 0)).y < -0.99,
          "the product with a vector rotates it backwards: intentional");

    Vector3<double> axis;
    double angle = 0;
    DQuat::Slerp(0.5, DQuat::IDENTITY, quarter).ToAxisAngle(axis, angle);
    claim(std::abs(angle - pi / 4) < 1e-15 && axis.z == 1, "half of the way is half of the angle");
    claim(DQuat() != DQuat::IDENTITY, "a default quaternion is not the identity: intentional");
}
