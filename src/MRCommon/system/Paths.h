// Paths: splits paths at "/" or backslash, and creates all directories along one.
//     makeSurePathExists("cache/shot/fluid");         // cache, cache/shot and cache/shot/fluid
//     PathFindFileName(path);                         // "/d/a.bin": points at "a.bin"
// Strings end at their NUL, and separators are kept as written, mixed ones included. Intentional: the first
// character never counts as a separator, so "/file" is a file name as a whole. Tested by
// GetFullPathName2.SplitsAtTheLastSeparator and PathFindFileName.ReturnsWhatFollowsTheLastSeparator.
#ifndef MRCOMMON_SYSTEM_PATHS_H
#define MRCOMMON_SYSTEM_PATHS_H

#include <MRCommon/Export.h>

/// Creates every directory along `path`, including the last one, with all permissions that the process's mask
/// allows. Returns whether the path exists afterwards, even as a file; failures of single steps are not
/// reported.
MRCOMMON_API bool makeSurePathExists(char const* path);

/// Splits `path` at its last separator: copies what precedes it to `dir`, points `*filePart` at what follows
/// it in `path`, and returns the length of the whole path. Returns 0, leaving the outputs unchanged, if there
/// is no separator after the first character. `dir` must have room for the whole path and its NUL.
/// Intentional: `bufferLength` is ignored, for the sake of the calling form. Tested by
/// GetFullPathName2.SplitsAtTheLastSeparator.
///     "dir/file"   8, "dir", "file"        "/file"   0
MRCOMMON_API unsigned int GetFullPathName2(char const* path, int bufferLength, char* dir,
                                           char const** filePart) noexcept;

/// Returns the file name inside `path`: what follows the last separator, or the path itself if there is no
/// separator after the first character.
[[nodiscard]] MRCOMMON_API char* PathFindFileName(char* path) noexcept;

/// Overwrites every `from` with `to` and returns their number. If `to` is NUL, only the first one is
/// replaced, since the string then ends there.
MRCOMMON_API unsigned int replaceCharacter(char* text, char from, char to) noexcept;

#endif
