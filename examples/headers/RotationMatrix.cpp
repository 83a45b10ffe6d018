// Where a placed body points, and the quaternion of its rotation.
#include <MRCommon/math/RotationMatrix.h>

#include "claim.h"

#include <cmath>

using namespace quarn;

int main() {
    Matrix4<double> placement; // for row vectors: 90 degrees about z, twice as large, moved
    double const rows[16] = {0, 2, 0, 0, -2, 0, 0, 0, 0, 0, 2, 0, 7, 8, 9, 1};
    for (int i = 0; i < 16; ++i) placement.data()[i] = rows[i];
    claim(TransformaEje(placement, Vector3<double>(1, 0, 0)) == Vector3<double>(0, 1, 0),
          "its x axis points along y, whatever scale and translation");

    Matrix3<double> m;
    for (int i = 0; i < 9; ++i) m(i / 3, i % 3) = placement(i / 3, i % 3) / 2;
    Quaternion<double> q;
    matrix3tools::getQuaternion_VERSION3(m, q);
    claim(std::abs(q.z - std::sqrt(0.5)) < 1e-15 && std::abs(q.z - q.w) < 1e-15, "a quarter turn about z");
}
