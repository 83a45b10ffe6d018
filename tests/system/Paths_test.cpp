// Paths: folders that are created, and paths that are split.
#include <MRCommon/system/Paths.h>

#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <tuple>

using namespace std::string_literals;

namespace {

bool isFolder(std::string const& path) { return std::filesystem::is_directory(path); }

struct Split {
    std::string path, dir, file; // no dir: the path has no separator that counts
};

// clang-format off
Split const splits[] = {
    {"dir/file", "dir", "file"}, {"a\\b/c", "a\\b", "c"}, {"a/b\\c", "a/b", "c"}, {"/a/b", "/a", "b"},
    {"dir/", "dir", ""}, {"//", "/", ""}, {"/file", "", "/file"}, {"abc", "", "abc"}, {"/", "", "/"},
    {"", "", ""}};
// clang-format on

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
    for (auto const& [path, dir, file] : splits) {
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
    for (auto const& [path, dir, file] : splits) {
        std::string text = path;
        EXPECT_STREQ(PathFindFileName(text.data()), file.c_str()) << path;
    }
}

TEST(ReplaceCharacter, CountsWhatItOverwrites) {
    // clang-format off
    std::tuple<std::string, char, char, unsigned int, std::string> const cases[] = {
        {"a.b.c", '.', '_', 2, "a_b_c"}, {"abc", '.', '_', 0, "abc"}, {"", 'a', 'b', 0, ""},
        {"aa", 'a', 'a', 2, "aa"}, {"a.b.c", '.', '\0', 1, "a\0b.c"s}, {"abc", '\0', 'x', 0, "abc"}};
    // clang-format on
    for (auto const& [before, from, to, count, result] : cases) {
        std::string text = before;
        EXPECT_EQ(replaceCharacter(text.data(), from, to), count) << before;
        EXPECT_EQ(text, result) << "nothing changes after a NUL";
    }
}
