// A property with a list of strings.
#include <MRCommon/properties/PptyArrayString.h>

#include "claim.h"

using namespace quarn;

int main() {
    PptyArrayString layers("layers", {"sea", "foam"});
    claim(layers.toStr() == "[ sea, foam ]", "the list as a string");
    layers.getRefToValue()->push_back("sky");
    claim(layers.getVariantValue().as<Array<QN_String>>()->size() == 3, "the list can be changed");

    std::FILE* const file = std::tmpfile();
    claim(file != nullptr, "a temporary file");
    FileStreamEndian stream(file);
    layers.writeTo(stream);
    claim(stream.finish(), "the list is written");
    std::rewind(file);
    PptyArrayString loaded;
    loaded.readFrom(stream);
    claim(loaded.toStr() == "[ sea, foam, sky ]", "both stream kinds store the list");
    std::fclose(file);
}
