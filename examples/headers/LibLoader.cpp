// A library opened at run time. A plug-in of a host's own is opened by its path: see the page on plug-ins.
#include <MRCommon/system/LibLoader.h>

#include "claim.h"

using quarn::LibLoader;

#ifdef __APPLE__
constexpr char const* mathLibrary = "libm.dylib";
#else
constexpr char const* mathLibrary = "libm.so.6";
#endif

int main() {
    void* const library = LibLoader::load(mathLibrary);
    claim(library != nullptr, "the library is opened");
    auto* const root = reinterpret_cast<double (*)(double)>(LibLoader::getFunctionPtr(library, "sqrt"));
    claim(root != nullptr && root(9) == 3, "its function is called");
    claim(LibLoader::getFunctionPtr(library, "no_such_function") == nullptr, "a missing function is null");
    claim(LibLoader::unload(library) == 0, "it is closed");
    claim(LibLoader::load("none/libnone.so") == nullptr, "a missing library is null");
    claim(LibLoader::lastError()[0] != '\0', "and the reason is known");
}
