// The bounds of any ranged property.
#include <MRCommon/properties/RangePpty.h>
#include <MRCommon/properties/RgdBasicPpty.h>

#include "claim.h"

template <class T, unsigned int TypeCode> T middle(quarn::RangePpty<T, TypeCode> const& property) {
    return property.getMin() + (property.getMax() - property.getMin()) / 2;
}

int main() {
    quarn::RIntPpty frames("frames", 60, 0, 100);
    claim(middle(frames) == 50, "its bounds are at hand");

    frames.setMax(50);
    claim(*frames.getRefToValue() == 60, "a new bound does not change the value");
    claim(!frames.setValue(60) && frames.setValue(50), "but the next one must fit");
    claim(frames.toStr() == "", "ranged kinds have no string: intentional");
}
