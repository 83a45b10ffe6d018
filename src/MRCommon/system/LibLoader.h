// LibLoader: opens plug-in libraries and finds their functions.
//     void* plugin = LibLoader::load("/app/plugins/libWaves.so");
//     auto make = reinterpret_cast<Maker*>(LibLoader::getFunctionPtr(plugin, "makeWaves"));
// All symbols of a library are bound when it is opened and are visible to those opened later. The path is
// taken as it is, with no search of our own and no suffix added; no message is kept.
#ifndef MRCOMMON_SYSTEM_LIBLOADER_H
#define MRCOMMON_SYSTEM_LIBLOADER_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>

/// The library's handle, to be given back with unloadLibUnix; null when it cannot be opened.
MRCOMMON_API void* loadLibUnix(quarn::QN_String const& path);

/// What the platform answers, 0 for success; -1 for a null handle.
MRCOMMON_API int unloadLibUnix(void* library);

/// Where the symbol of this very name lies; null when there is none, and for a null handle.
MRCOMMON_API void* getSymbolAddressUnix(void* library, quarn::QN_String const& symbol);

namespace quarn {

/// The same three under the names of the product.
class MRCOMMON_API LibLoader {
public:
    ///@{
    /// As loadLibUnix, unloadLibUnix and getSymbolAddressUnix.
    static void* load(QN_String const& path);
    static int unload(void* library);
    static void* getFunctionPtr(void* library, QN_String const& symbol);
    ///@}
};

} // namespace quarn

#endif
