// Paths: splitting loses nothing and stays inside its buffer; the parts agree with naive versions.
//     bytes 0, 1    the characters to replace and to put there
//     the rest      a path
#include "Input.h"

#include <MRCommon/system/Paths.h>

#include <vector>

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Input input(data, size);
    char const from = input.number<char>(), to = input.number<char>();
    std::string const path = std::string(input.rest()).c_str();

    std::size_t const last = path.find_last_of("/\\");
    bool const hasFolder = last != std::string::npos && last != 0;
    std::vector<char> folder(path.size() + 1, '?');
    char const* file = nullptr;
    unsigned int const length =
        GetFullPathName2(path.c_str(), static_cast<int>(folder.size()), folder.data(), &file);
    require(length == (hasFolder ? path.size() : 0), "the length of a path with a folder");
    if (hasFolder)
        require(folder.data() == path.substr(0, last) && file == path.c_str() + last + 1, "folder and file");
    else
        require(file == nullptr && folder[0] == '?', "the outputs stay as they were");

    std::vector<char> copy(path.c_str(), path.c_str() + path.size() + 1);
    require(PathFindFileName(copy.data()) == copy.data() + (hasFolder ? last + 1 : 0), "the file's name");

    std::string expected = path;
    std::size_t const first = from == '\0' ? std::string::npos : path.find(from);
    auto count = static_cast<unsigned int>(std::count(path.begin(), path.end(), from));
    if (from == '\0') count = 0;
    std::replace(expected.begin(), expected.end(), from, to);
    if (to == '\0' && first != std::string::npos) {
        expected.resize(first);
        count = 1;
    }
    if (from == '\0') expected = path;
    require(replaceCharacter(copy.data(), from, to) == count && copy.data() == expected,
            "every character is replaced, up to the end");
    return 0;
}
