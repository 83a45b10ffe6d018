// A choice from a table.
#include <MRCommon/properties/PptyEnum.h>

#include "claim.h"

using namespace quarn;

int main() {
    PptyEnum quality("quality");
    quality.itemLabels = {"Low", "High"};
    quality.itemValues = {10, 20};
    claim(quality.toStr() == " PptyEnum : quality( , -1 )\n", "at first there is no choice");

    claim(quality.setValue(ItemVariant("High")), "chosen by label");
    claim(*quality.getVariantValue().as<int>() == 20, "the number is set too");
    claim(quality.setValue(ItemVariant(10)), "chosen by number");
    claim(*quality.getVariantValue().as<QN_String>() == "Low", "the label is set too");
    claim(!quality.setValue(ItemVariant(15)), "a number that is not in the table is refused");
}
