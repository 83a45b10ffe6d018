// Folders are created, paths are split.
#include <MRCommon/system/Paths.h>

#include "claim.h"

#include <cstdlib>
#include <cstring>
#include <string>

int main() {
    char folder[] = "/tmp/example_paths_XXXXXX";
    claim(mkdtemp(folder) != nullptr, "a temporary folder");
    std::string const path = std::string(folder) + "/shot/fluid";
    claim(makeSurePathExists(path.c_str()), "every folder on the way is created");
    claim(std::system(("rm -r " + std::string(folder)).c_str()) == 0, "and removed");

    char dir[16];
    char const* file = nullptr;
    claim(GetFullPathName2("shot/a.bin", 0, dir, &file) == 10, "the length of the whole path");
    claim(std::strcmp(dir, "shot") == 0 && std::strcmp(file, "a.bin") == 0, "folder and file");

    char windows[] = "shot\\fluid\\a.bin";
    claim(std::strcmp(PathFindFileName(windows), "a.bin") == 0, "both separators count");
    claim(replaceCharacter(windows, '\\', '/') == 2 && std::strcmp(windows, "shot/fluid/a.bin") == 0,
          "replaced");
}
