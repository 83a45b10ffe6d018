// Version.h: the version of the headers, known at compile time, and that of the library that is loaded.
//     #if MRCOMMON_VERSION >= 10200                     // version 1.2.0 or newer
//     quarn::versionString()                            // "1.0.0"
//
// A plug-in runs with the library that its host has loaded, which may be older than the headers that the plug-in was
// compiled with. It works if `versionNumber()` is at least MRCOMMON_VERSION and the major versions are equal. The
// build reads the project's version from the three macros below.
#ifndef MRCOMMON_VERSION_H
#define MRCOMMON_VERSION_H

#include <MRCommon/Export.h>

#define MRCOMMON_VERSION_MAJOR 1 ///< raised if callers must be rebuilt
#define MRCOMMON_VERSION_MINOR 0 ///< raised if something is added
#define MRCOMMON_VERSION_PATCH 0 ///< raised if nothing changes for callers

/// The three numbers as one that can be compared: 10203 for version 1.2.3.
#define MRCOMMON_VERSION                                                                                     \
    (MRCOMMON_VERSION_MAJOR * 10000 + MRCOMMON_VERSION_MINOR * 100 + MRCOMMON_VERSION_PATCH)

namespace quarn {

/// Returns the version of the loaded library as text, such as "1.2.3".
[[nodiscard]] MRCOMMON_API char const* versionString() noexcept;

/// Returns the version of the loaded library in the form of MRCOMMON_VERSION.
[[nodiscard]] MRCOMMON_API int versionNumber() noexcept;

} // namespace quarn

#endif
