#include "support/TempDir.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace {

/// A folder in memory if there is one: tests of files make thousands of them.
std::filesystem::path temporaryRoot() {
    std::filesystem::path const inMemory = "/dev/shm";
    return access(inMemory.c_str(), W_OK | X_OK) == 0 ? inMemory : std::filesystem::temp_directory_path();
}

} // namespace

TempDir::TempDir() {
    // A new folder: a killed process may have left one, and process numbers return.
    std::string path = temporaryRoot() / ("mrcommon-" + std::to_string(getpid()) + "-XXXXXX");
    if (mkdtemp(path.data()) == nullptr) throw std::runtime_error("cannot make " + path);
    root_ = path;
}

TempDir::~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
}

void TempDir::touch(std::string const& name) const {
    std::filesystem::create_directories((root_ / name).parent_path());
    if (!std::ofstream(root_ / name)) throw std::runtime_error("cannot make " + path(name));
}

void store(std::filesystem::path const& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
    if (!file) throw std::runtime_error("cannot write " + path.string());
}

std::string bytesIn(std::filesystem::path const& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
