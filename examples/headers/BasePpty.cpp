// The access to the value that every kind of property has.
#include <MRCommon/properties/BasePpty.h>
#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/properties/RgdBasicPpty.h>

#include "claim.h"

// Works for a plain float and for a ranged one.
template <unsigned int TypeCode> float doubled(quarn::BasePpty<float, TypeCode>& property) {
    property.setValue(*property.getRefToValue() * 2);
    return *property.getVariantValue().template as<float>();
}

int main() {
    quarn::PptyFloat plain("speed", 3);
    quarn::RFloatPpty ranged("opacity", 0.75f, 0, 1);
    claim(doubled(plain) == 6, "the plain value is doubled");
    claim(doubled(ranged) == 0.75f, "the ranged one refuses 1.5");

    *ranged.getRefToValue() = 1.5f;
    claim(*ranged.getVariantValue().as<float>() == 1.5f, "writing through the pointer tests no bound");
    claim(plain.getVariantValue().tag() == ranged.getVariantValue().tag(), "both have the tag of a float");
}
