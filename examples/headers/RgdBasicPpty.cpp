// Numbers with bounds.
#include <MRCommon/properties/RgdBasicPpty.h>

#include "claim.h"

#include <climits>
#include <cmath>

using namespace quarn;

int main() {
    RFloatPpty opacity("opacity", 0.5f, 0, 1);
    claim(opacity.setValue(1.0f), "a bound belongs to the range");
    claim(!opacity.setValue(1.5f) && *opacity.getRefToValue() == 1,
          "what lies outside is refused, not clamped");
    claim(!opacity.setValue(std::nanf("")), "so is NaN");

    opacity.setValue(ItemVariant(1.5f));
    claim(*opacity.getRefToValue() == 1.5f, "a variant passes by the bounds: meant");
    claim(!RIntPpty("n").setValue(INT_MIN), "fresh int bounds are symmetric: meant");
}
