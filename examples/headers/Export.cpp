// A class and a function of a plug-in's own, visible outside although all else is hidden.
#include <MRCommon/Export.h>

#include "claim.h"

class MRCOMMON_API Palette {
public:
    virtual ~Palette() = default;
    virtual int size() const { return 16; } // the macro shows all members, virtual table and type information
};

MRCOMMON_API int paletteSize();
int paletteSize() { return Palette().size(); }

int main() { claim(paletteSize() == 16, "what is exported is called like anything else"); }
