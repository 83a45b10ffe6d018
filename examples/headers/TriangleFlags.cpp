// What is known of a triangle, one bit for each fact.
#include <MRCommon/basic/TriangleFlags.h>

#include "claim.h"

int main() {
    unsigned int flags = quarn::triangleFlags_2SIDED;
    claim((flags & quarn::triangleFlags_OBTUSE) == 0, "two-sided, but not obtuse");
    flags |= quarn::triangleFlags_OBTUSE;
    claim(flags == 3, "the two are bits of their own");
}
