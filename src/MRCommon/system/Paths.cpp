#include <MRCommon/system/Paths.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view separators = "/\\";

/// Returns where the file name begins; 0 without a separator after the first character.
std::size_t fileNameStart(std::string_view path) {
    std::size_t const last = path.find_last_of(separators);
    return last == std::string_view::npos || last == 0 ? 0 : last + 1;
}

void makeDirectory(char const* path) { mkdir(path, 0777); } // one that exists already is fine

} // namespace

bool makeSurePathExists(char const* path) {
    std::string built(path);
    for (std::size_t at = built.find_first_of(separators, 1); at != std::string::npos;
         at = built.find_first_of(separators, at + 1)) {
        built[at] = '\0';
        makeDirectory(built.c_str());
        built[at] = path[at];
    }
    makeDirectory(path);
    return access(path, F_OK) == 0;
}

unsigned int GetFullPathName2(char const* path, int, char* dir, char const** filePart) noexcept {
    std::size_t const length = std::strlen(path);
    std::size_t const start = fileNameStart({path, length});
    if (start == 0) return 0;
    *filePart = path + start;
    std::memmove(dir, path, length + 1); // `dir` may be the path itself
    dir[start - 1] = '\0';
    return static_cast<unsigned int>(length);
}

char* PathFindFileName(char* path) noexcept { return path + fileNameStart(path); }

unsigned int replaceCharacter(char* text, char from, char to) noexcept {
    unsigned int count = 0;
    for (; *text != '\0'; ++text) {
        if (*text != from) continue;
        *text = to;
        ++count;
        if (to == '\0') break;
    }
    return count;
}
