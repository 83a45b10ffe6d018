// Paths: folders that are created, and paths that are split.
#include <MRCommon/system/Paths.h>

#include "support/Cases.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <string>

namespace {

bool isFolder(std::string const& path) { return std::filesystem::is_directory(path); }

} // namespace

TEST(MakeSurePathExists, MakesEveryFolderOnTheWay) {
    TempDir folder;
    EXPECT_TRUE(makeSurePathExists(folder.path("a/b//c").c_str()));
    EXPECT_TRUE(isFolder(folder.path("a/b/c")));
    EXPECT_TRUE(makeSurePathExists(folder.path("a/b//c").c_str())) << "it exists already";
    EXPECT_TRUE(makeSurePathExists(folder.path("d\\e/f/").c_str()));
    EXPECT_TRUE(isFolder(folder.path("d"))) << "a backslash is a separator too";
    EXPECT_TRUE(isFolder(folder.path("d\\e/f")));
    folder.touch("file");
    EXPECT_TRUE(makeSurePathExists(folder.path("file").c_str())) << "even if it is a file";
    EXPECT_FALSE(makeSurePathExists(folder.path("file/x/y").c_str()));
    EXPECT_FALSE(makeSurePathExists(""));
    EXPECT_TRUE(makeSurePathExists("/"));
}

TEST(MakeSurePathExists, GrantsWhatTheMaskOfTheProcessAllows) {
    TempDir folder;
    for (mode_t const mask : {0u, 027u}) {
        mode_t const before = umask(mask);
        EXPECT_TRUE(makeSurePathExists(folder.path(std::to_string(mask) + "/inner").c_str()));
        umask(before);
        for (char const* const made : {"", "/inner"}) {
            auto const mode = std::filesystem::status(folder.path(std::to_string(mask) + made)).permissions();
            EXPECT_EQ(static_cast<unsigned int>(mode), 0777u & ~mask) << mask << made;
        }
    }
}

TEST(GetFullPathName2, SplitsAtTheLastSeparator) {
    for (Case const& c : casesOf("Splits")) {
        std::string const &path = c[0], &dir = c[1], &file = c[2];
        char folder[16] = "untouched";
        char const* found = nullptr;
        unsigned int const length = GetFullPathName2(path.c_str(), 1, folder, &found);
        EXPECT_EQ(length, dir.empty() ? 0 : path.size()) << path;
        EXPECT_STREQ(folder, dir.empty() ? "untouched" : dir.c_str());
        EXPECT_EQ(found, dir.empty() ? nullptr : path.c_str() + path.size() - file.size())
            << "into the path, not the copy";
    }
}

TEST(PathFindFileName, ReturnsWhatFollowsTheLastSeparator) {
    for (Case const& c : casesOf("Splits")) {
        std::string text = c[0];
        EXPECT_STREQ(PathFindFileName(text.data()), c.c_str(2)) << c.place;
    }
}

TEST(ReplaceCharacter, CountsWhatItOverwrites) {
    for (Case const& c : casesOf("ReplaceCharacter")) {
        std::string text = c[0];
        EXPECT_EQ(replaceCharacter(text.data(), c[1][0], c[2][0]), c.count(3)) << c.place;
        EXPECT_EQ(text, c[4]) << "nothing changes after a NUL";
    }
}
