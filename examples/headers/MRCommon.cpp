// Everything public in one include.
#include <MRCommon/MRCommon.h>

#include "claim.h"

int main() {
    quarn::RFloatPpty opacity("opacity", 0.5f, 0, 1);
    claim(opacity.setValue(0.75f) && !opacity.setValue(1.5f), "a ranged property keeps its bounds");
    claim(opacity.getClassName() == "RFloatPpty", "it knows its class");

    FileNameStitcher const& names = FileNameStitcher::instance();
    claim(names.doIt("fluid", 12, "bin") == "fluid00012.bin", "a frame has a file name");
    claim(StringTools::format("%s_%03d", "dunes", 7) == "dunes_007", "a text is printed");
    claim(Redondea(2.5) == 3, "a number is rounded");
}
