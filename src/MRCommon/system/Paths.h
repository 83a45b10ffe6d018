// Paths: splitting paths at "/" or backslash, and making all directories on the way to one.
//     makeSurePathExists("cache/shot/fluid");         // cache, cache/shot and cache/shot/fluid
//     PathFindFileName(path);                         // "/d/a.bin": points at "a.bin"
// Texts end at their NUL and separators are kept as written, mixed ones included. Meant: the first character
// is never taken for a separator, so "/file" is a file name as a whole.
#ifndef MRCOMMON_SYSTEM_PATHS_H
#define MRCOMMON_SYSTEM_PATHS_H

#include <MRCommon/Export.h>

/// Makes every directory along `path`, the last part included, open to all that the process's mask allows.
/// Tells whether the path exists afterwards, whatever it is; a step that fails is not reported by itself.
MRCOMMON_API bool makeSurePathExists(char const* path);

/// Splits `path` at its last separator: `dir` receives what stands before, `*filePart` points behind it, into
/// `path`. The length of the whole path; 0, outputs untouched, where there is no separator behind the first
/// character. `bufferLength` is ignored, as it is meant: `dir` must have room for the whole path and its NUL.
///     "dir/file"   8, "dir", "file"        "/file"   0
MRCOMMON_API unsigned int GetFullPathName2(char const* path, int bufferLength, char* dir,
                                           char const** filePart);

/// The file name inside `path`: behind the last separator, the path itself where there is none behind the
/// first character.
MRCOMMON_API char* PathFindFileName(char* path);

/// Overwrites every `from` with `to` and returns their number. With NUL as `to` only the first is replaced,
/// since the text ends there.
MRCOMMON_API unsigned int replaceCharacter(char* text, char from, char to);

#endif
