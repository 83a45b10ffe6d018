#include "LoadedPlugIn.h"

#include <MRCommon/system/LibLoader.h>

#include <stdexcept>

using quarn::LibLoader;

namespace {

template <class Function>
void find(void* library, std::string const& path, char const* name, Function& function) {
    function = reinterpret_cast<Function>(LibLoader::getFunctionPtr(library, name));
    if (function == nullptr)
        throw std::invalid_argument("the plug-in " + path + " lacks the function " + name);
}

} // namespace

LoadedPlugIn::LoadedPlugIn(std::string const& path) : library_(LibLoader::load(path.c_str())) {
    if (library_ == nullptr)
        throw std::invalid_argument("the plug-in " + path + " cannot be loaded: " + LibLoader::lastError());
    find(library_.get(), path, "fountainSettingsClass", settingsClass_);
    find(library_.get(), path, "fountainAccelerate", accelerate_);
}

void LoadedPlugIn::Unload::operator()(void* library) const { LibLoader::unload(library); }
