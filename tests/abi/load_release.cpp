// Loads a release's plug-in, lets it check the library, and makes sure that its class goes when it goes.
//     load <plug-in>
#include <MRCommon/system/LibLoader.h>
#include <qn_basic/QN_MetaClassBase.h>

#include <cstdio>

using namespace quarn;

int main(int, char** arguments) {
    void* const plugIn = LibLoader::load(arguments[1]);
    auto const check = reinterpret_cast<char const* (*)()>(LibLoader::getFunctionPtr(plugIn, "checkRelease"));
    char const* const wrong = check == nullptr ? "loading the plug-in" : check();
    if (wrong != nullptr) std::printf("not as it was: %s\n", wrong);
    LibLoader::unload(plugIn);
    bool const gone = QN_MetaClassBase::find("Measure") == nullptr;
    if (!gone) std::printf("the plug-in stays in memory\n");
    return wrong == nullptr && gone ? 0 : 1;
}
