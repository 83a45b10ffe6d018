// Properties with one plain value.
#include <MRCommon/properties/BasicPpty.h>

#include "claim.h"

#include <memory>

using namespace quarn;

int main() {
    PptyFloat gravity("gravity", -9.81f);
    claim(gravity.getName() == "gravity" && gravity.getType() == Ppty::TYPE_FLOAT, "name and kind");
    claim(gravity.toStr() == " -9.810000 ", "the value as a string");
    claim(gravity.setValue(-1.62f), "a new value");

    std::unique_ptr<Ppty> const moon(gravity.cloneWithNewName("moon"));
    claim(moon->toStr() == " -1.620000 " && moon->getName() == "moon", "a copy under another name");

    claim(PptyBool("collide", true).toStr() == "True", "a bool");
    claim(PptyInt64("five", 5).toStr() == " 564 ", "the low 32 bits, then 64: intentional");
    claim(PptyColor4F("water", {0, 0, 1, 1}).toStr() ==
              "r: 0.000000 \n, g: 0.000000 \n, b: 1.000000 \n, a: 1.000000 \n",
          "a colour, component by component");
}
