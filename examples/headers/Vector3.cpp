// A point, a direction, an extent.
#include <MRCommon/basic/Vector3.h>

#include "claim.h"

using Vector = quarn::Vector3<double>;

int main() {
    Vector const a(1, 2, 2), b(0, 3, 4);
    claim(a + b == Vector(1, 5, 6) && 2.0 * a == Vector(2, 4, 4), "they are calculated with");
    claim(a.length() == 3 && a.dot(b) == 14, "length and scalar product");

    Vector const normal = a.cross(b);
    claim(normal.dot(a) == 0 && normal.dot(b) == 0, "the vector product stands at right angles to both");
    claim(Vector(1, 0, 0).cross(Vector(0, 1, 0)) == Vector(0, 0, 1), "by the right hand");
    claim(a[2] == a.z, "components have numbers, too");
}
