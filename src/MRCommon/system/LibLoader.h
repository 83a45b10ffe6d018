// LibLoader: opens plug-in libraries and finds their functions.
//     void* plugin = LibLoader::load("/app/plugins/libWaves.so");
//     if (plugin == nullptr) std::fprintf(stderr, "%s\n", LibLoader::lastError());
//     auto make = reinterpret_cast<Maker*>(LibLoader::getFunctionPtr(plugin, "makeWaves"));
// All symbols of a library are bound when it is opened, and they are visible to libraries opened later. The
// path is passed to the platform unchanged: nothing is searched here and no suffix is added.
#ifndef MRCOMMON_SYSTEM_LIBLOADER_H
#define MRCOMMON_SYSTEM_LIBLOADER_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>

/// Returns the library's handle, to be closed with `unloadLibUnix`; null if the library cannot be opened.
[[nodiscard]] MRCOMMON_API void* loadLibUnix(quarn::QN_String const& path);

/// Closes a library. Returns 0 for success and the platform's code for a failure; -1 for a null handle.
MRCOMMON_API int unloadLibUnix(void* library);

/// Returns the address of the symbol with exactly this name; null if it is missing, and for a null handle.
[[nodiscard]] MRCOMMON_API void* getSymbolAddressUnix(void* library, quarn::QN_String const& symbol);

namespace quarn {

/// The same three functions under the names of the product, and the reason of a failure.
class MRCOMMON_API LibLoader {
public:
    ///@{
    /// Same as `loadLibUnix`, `unloadLibUnix` and `getSymbolAddressUnix`.
    [[nodiscard]] static void* load(QN_String const& path);
    static int unload(void* library);
    [[nodiscard]] static void* getFunctionPtr(void* library, QN_String const& symbol);
    ///@}

    /// Returns why the calling thread's last `load` or `getFunctionPtr` failed, in the platform's words;
    /// empty after a success and before the first call. The free functions set it too, `unload` does not. The
    /// text is valid until the thread's next such call. Of a text beyond 1023 characters, the beginning is
    /// replaced by "...".
    [[nodiscard]] static char const* lastError() noexcept;
};

} // namespace quarn

#endif
