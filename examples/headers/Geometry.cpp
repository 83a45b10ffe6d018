// Distances, boxes, and triangles that share an edge.
#include <MRCommon/math/Geometry.h>

#include "claim.h"

using Point = quarn::Vector3<float>;

int main() {
    Point const a(0, 0, 0), b(4, 0, 0);
    Point closest;
    float t = 0;
    claim(minDist(Point(7, 4, 0), a, b, true, &t, &closest) == 5, "the segment's end is 5 away");
    claim(t == 1 && closest == b, "the closest point is that end");
    claim(minDist(Point(7, 4, 0), a, b, false, &t, nullptr) == 4, "the infinite line is closer");

    Point const cube[8] = {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2},
                           {2, 2, 0}, {2, 0, 2}, {0, 2, 2}, {2, 2, 2}};
    Point shifted[8];
    for (int i = 0; i < 8; ++i) shifted[i] = cube[i] + Point(1, 1, 1);
    claim(computeBoxVolume(cube) == 8 && intersectVolume(cube, shifted) == 1, "volumes of boxes");

    int opposite = 0, own = 0;
    claim(CrossCheck(1, 2, 3, 2, 3, 4, &opposite, &own), "the triangles share the edge 2, 3");
    claim(own == 1 && opposite == 4, "1 and 4 are the vertices facing it");
}
