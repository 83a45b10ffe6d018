// A few values side by side.
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/basic/Tuple.h>

#include "claim.h"

using namespace quarn;

int main() {
    Tuple2<QN_String, int> const choice("High", 20);
    auto const& [label, index] = choice;
    claim(label == "High" && index == 20, "a pair comes apart by itself");

    Tuple3<double, double, double> angles(0.1, 0.2, 0.3);
    angles[2] = 0.4;
    claim(angles.third == 0.4, "three of one type have numbers, too");

    TupleN<4, int> const four{{1, 2, 3, 4}};
    claim(four.size() == 4 && four[3] == 4, "and so have as many as you like");
}
