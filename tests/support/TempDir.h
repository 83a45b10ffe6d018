// TempDir: an empty temporary folder, gone with everything in it at the end of its scope.
//     TempDir folder;
//     folder.touch("fluid_00012.bin");
//     folder.path("fluid")              // "/dev/shm/mrcommon-4711-aX3k9z/fluid"
//     store(folder.path("fluid"), "bytes");
#ifndef MRCOMMON_TESTS_SUPPORT_TEMPDIR_H
#define MRCOMMON_TESTS_SUPPORT_TEMPDIR_H

#include <filesystem>
#include <string>
#include <string_view>

class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(TempDir const&) = delete;
    TempDir& operator=(TempDir const&) = delete;

    std::string path(std::string const& name) const { return (root_ / name).string(); }
    void touch(std::string const& name) const; ///< an empty file, with the folders on the way to it

private:
    std::filesystem::path root_;
};

/// The folder of this process; left behind if it is killed.
inline TempDir const& scratch() {
    static TempDir const folder;
    return folder;
}

void store(std::filesystem::path const& path, std::string_view bytes);
std::string bytesIn(std::filesystem::path const& path);

#endif
