// A program that knows the library only through a plug-in: the library stays when the plug-in goes.
//     stranger <plug-in>
#include <dlfcn.h>

#include <cstdio>

int main(int, char** arguments) {
    void* const plugIn = dlopen(arguments[1], RTLD_LAZY | RTLD_GLOBAL);
    if (plugIn == nullptr) return std::puts(dlerror()), 1;
    bool const closed = dlclose(plugIn) == 0 && dlopen(arguments[1], RTLD_LAZY | RTLD_NOLOAD) == nullptr;
    bool const stays = dlopen("libMRCommon.so.1", RTLD_LAZY | RTLD_NOLOAD) != nullptr;
    if (!closed) std::puts("the plug-in stays in memory");
    if (!stays) std::puts("the library left with the plug-in");
    return closed && stays ? 0 : 1;
}
