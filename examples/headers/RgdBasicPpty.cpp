// Numbers with bounds.
#include <MRCommon/properties/RgdBasicPpty.h>

#include "claim.h"

#include <climits>
#include <cmath>

using namespace quarn;

int main() {
    RFloatPpty opacity("opacity", 0.5f, 0, 1);
    claim(opacity.setValue(1.0f), "the bounds are inclusive");
    claim(!opacity.setValue(1.5f) && *opacity.getRefToValue() == 1,
          "a value outside is refused, not clamped");
    claim(!opacity.setValue(std::nanf("")), "so is NaN");

    opacity.setValue(ItemVariant(1.5f));
    claim(*opacity.getRefToValue() == 1.5f, "a variant is not tested: intentional");
    claim(!RIntPpty("n").setValue(INT_MIN), "the default bounds of an int are symmetric: intentional");
}
