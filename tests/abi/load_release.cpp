// Loads the plug-in of a release, lets it check the library, and checks that its class is gone after it is closed.
//     load_release <plug-in>
#include <MRCommon/system/LibLoader.h>
#include <qn_basic/QN_MetaClassBase.h>

#include <cstdio>

using namespace quarn;

int main(int, char** arguments) {
    void* const plugIn = LibLoader::load(arguments[1]);
    auto const check = reinterpret_cast<char const* (*)()>(LibLoader::getFunctionPtr(plugIn, "checkRelease"));
    char const* const wrong = check == nullptr ? "loading the plug-in" : check();
    if (wrong != nullptr) std::printf("changed since the release: %s\n", wrong);
    LibLoader::unload(plugIn);
    bool const gone = QN_MetaClassBase::find("Measure") == nullptr;
    if (!gone) std::printf("the plug-in stays in memory\n");
    return wrong == nullptr && gone ? 0 : 1;
}
