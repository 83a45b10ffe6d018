// A property that holds a list of texts.
#include <MRCommon/properties/PptyArrayString.h>

#include "claim.h"

using namespace quarn;

int main() {
    PptyArrayString layers("layers", {"sea", "foam"});
    claim(layers.toStr() == "[ sea, foam ]", "its text");
    layers.getRefToValue()->push_back("sky");
    claim(layers.getVariantValue().as<Array<QN_String>>()->size() == 3, "the list is there to be changed");

    std::FILE* const file = std::tmpfile();
    claim(file != nullptr, "a temporary file");
    FileStreamEndian stream(file);
    layers.writeTo(stream);
    std::rewind(file);
    PptyArrayString loaded;
    loaded.readFrom(stream);
    claim(loaded.toStr() == "[ sea, foam, sky ]", "lists travel on both stream kinds");
    std::fclose(file);
}
