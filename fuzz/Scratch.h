// Scratch: a folder for the files of one process, removed at its end.
//     std::string const path = scratchFolder() + "/input";
//     store(path, bytes);
#ifndef MRCOMMON_FUZZ_SCRATCH_H
#define MRCOMMON_FUZZ_SCRATCH_H

#include "Input.h"

#include <filesystem>
#include <fstream>
#include <iterator>

/// A program that a law ends leaves the folder behind.
inline std::string const& scratchFolder() {
    struct Folder {
        Folder() {
            std::filesystem::path const memory = "/dev/shm"; // writing there costs no access to a disk
            bool const hasMemory = std::filesystem::is_directory(memory);
            path = (hasMemory ? memory : std::filesystem::temp_directory_path()) / "mrcommon-fuzz-XXXXXX";
            require(mkdtemp(path.data()) != nullptr, "a folder can be made");
        }
        ~Folder() {
            std::error_code ignored;
            std::filesystem::remove_all(path, ignored);
        }
        std::string path;
    };
    static Folder const folder;
    return folder.path;
}

inline void store(std::string const& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    require(file.good(), "a file can be written");
}

inline std::string bytesIn(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

#endif
