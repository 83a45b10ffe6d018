#include <MRCommon/system/LibLoader.h>

#include <dlfcn.h>

void* loadLibUnix(quarn::QN_String const& path) { return dlopen(path.c_str(), RTLD_NOW | RTLD_GLOBAL); }

int unloadLibUnix(void* library) { return library == nullptr ? -1 : dlclose(library); }

void* getSymbolAddressUnix(void* library, quarn::QN_String const& symbol) {
    // A null handle would mean the whole process on one platform and an error on another.
    return library == nullptr ? nullptr : dlsym(library, symbol.c_str());
}

namespace quarn {

void* LibLoader::load(QN_String const& path) { return loadLibUnix(path); }

int LibLoader::unload(void* library) { return unloadLibUnix(library); }

void* LibLoader::getFunctionPtr(void* library, QN_String const& symbol) {
    return getSymbolAddressUnix(library, symbol);
}

} // namespace quarn
