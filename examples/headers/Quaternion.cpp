// The quaternion with its scalar part last, and the angles that it turns by.
#include <MRCommon/basic/Quaternion.h>

#include "claim.h"

#include <cmath>

using namespace quarn;

int main() {
    double const r = std::sqrt(0.5);
    Quaternion<double> const quarter(0, 0, r, r); // 90 degrees about z

    Tuple3<double, double, double> radians(9, 9, 9);
    quarter.getAngles(PERMUTATION_XYZ_012, radians);
    claim(std::abs(radians[2] - std::acos(0.0)) < 1e-12,
          "in the order x, y, z the third angle is 90 degrees");
    claim(radians[0] == 0 && radians[1] == 0, "the others are 0");

    quarter.getAngles(static_cast<QN_PERMUTATION_XYZ>(6), radians);
    claim(radians[0] == 0, "a number that names no order changes nothing");
}
