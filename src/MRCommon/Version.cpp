#include <MRCommon/Version.h>

#define TEXT_OF(number) #number
#define VERSION_TEXT(major, minor, patch) TEXT_OF(major) "." TEXT_OF(minor) "." TEXT_OF(patch)

namespace quarn {

char const* versionString() noexcept {
    return VERSION_TEXT(MRCOMMON_VERSION_MAJOR, MRCOMMON_VERSION_MINOR, MRCOMMON_VERSION_PATCH);
}

int versionNumber() noexcept { return MRCOMMON_VERSION; }

} // namespace quarn
