// A placement: rotation rows and, in row 3, where it puts the origin. Points are row vectors.
#include <MRCommon/basic/Matrix4.h>
#include <MRCommon/basic/Vector3.h>

#include "claim.h"

using namespace quarn;

int main() {
    Matrix4<float> m;
    for (int i = 0; i < 16; ++i) m.data()[i] = i % 5 == 0 ? 1.0f : 0.0f;
    m(3, 0) = 10;
    claim(m.data()[12] == 10, "the translation stands in positions 12, 13, 14");

    Vector3<float> const p(1, 2, 3);
    Vector3<float> moved;
    for (int c = 0; c < 3; ++c) moved[c] = p.x * m(0, c) + p.y * m(1, c) + p.z * m(2, c) + m(3, c);
    claim(moved == Vector3<float>(11, 2, 3), "p' = p M moves the point by 10 along x");
}
