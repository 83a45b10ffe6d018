// A vector with bounds for each component.
#include <MRCommon/properties/RangeVectPpty.h>

#include "claim.h"

using namespace quarn;

int main() {
    RangeVect3FPpty position("position", {0, 0, 0}, {0, 0, 0}, {1, 1, 1});
    claim(position.setValue({0.5f, 1, 0}), "the bounds themselves fit");
    claim(!position.setValue({0.5f, 2, 0.5f}), "one component outside is enough to refuse");
    claim(*position.getRefToValue() == Vector3<float>(0.5f, 1, 0), "the value stays as it was");

    RangeVect3DPpty const byDefault;
    claim(byDefault.getMax().x > 1e308, "the default bounds are the widest finite ones");
}
