#include <MRCommon/system/LibLoader.h>

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

/// A fixed buffer: a string would need a destructor at the end of each thread, and a library with such a
/// destructor pending cannot be unloaded.
thread_local std::array<char, 1024> error{};

/// Stores the end of the message, since the reason comes after the path.
void keepError(std::string_view message) {
    constexpr std::string_view omission = "...";
    char* out = error.data();
    std::size_t const room = error.size() - 1;
    if (message.size() > room) {
        out = std::copy(omission.begin(), omission.end(), out);
        message.remove_prefix(message.size() - (room - omission.size()));
    }
    *std::copy(message.begin(), message.end(), out) = '\0';
}

/// Returns what a call of the platform returned, after storing its message. A symbol may be at address 0, so
/// only the message distinguishes success and failure.
void* withError(void* result) {
    char const* const message = result == nullptr ? dlerror() : nullptr;
    keepError(message == nullptr ? "" : message);
    return result;
}

} // namespace

void* loadLibUnix(quarn::QN_String const& path) {
    return withError(dlopen(path.c_str(), RTLD_NOW | RTLD_GLOBAL));
}

int unloadLibUnix(void* library) { return library == nullptr ? -1 : dlclose(library); }

void* getSymbolAddressUnix(void* library, quarn::QN_String const& symbol) {
    // A null handle would mean the whole process on one platform and an error on another.
    if (library == nullptr) {
        keepError("null library handle");
        return nullptr;
    }
    dlerror(); // discards the message of an earlier call
    return withError(dlsym(library, symbol.c_str()));
}

namespace quarn {

void* LibLoader::load(QN_String const& path) { return loadLibUnix(path); }

int LibLoader::unload(void* library) { return unloadLibUnix(library); }

void* LibLoader::getFunctionPtr(void* library, QN_String const& symbol) {
    return getSymbolAddressUnix(library, symbol);
}

char const* LibLoader::lastError() noexcept { return error.data(); }

} // namespace quarn
