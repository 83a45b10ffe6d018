// What a plug-in exports: C functions that its host looks up by name. Its classes stay hidden: the host reaches them
// through virtual functions and the registry.
#include <MRCommon/Export.h>

#include "claim.h"

class Palette {
public:
    int size() const { return 16; }
};

extern "C" MRCOMMON_API int paletteSize();
int paletteSize() { return Palette().size(); }

int main() { claim(paletteSize() == 16, "an exported function is called like any other"); }
