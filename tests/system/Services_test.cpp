// Paths, environment, library loading and fixed names.
#include <MRCommon/host/MessageNames.h>
#include <MRCommon/host/WorkSpace.h>
#include <MRCommon/system/Environment.h>
#include <MRCommon/system/LibLoader.h>
#include <MRCommon/system/Paths.h>

#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cstdlib>
#include <string>
#include <tuple>

using namespace std::string_literals;

namespace {

bool isFolder(std::string const& path) { return std::filesystem::is_directory(path); }

} // namespace

TEST(MakeSurePathExists, MakesEveryFolderOnTheWay) {
    TempDir folder;
    EXPECT_TRUE(makeSurePathExists(folder.path("a/b//c").c_str()));
    EXPECT_TRUE(isFolder(folder.path("a/b/c")));
    EXPECT_TRUE(makeSurePathExists(folder.path("a/b//c").c_str())) << "it exists already";
    EXPECT_TRUE(makeSurePathExists(folder.path("d\\e/f/").c_str()));
    EXPECT_TRUE(isFolder(folder.path("d"))) << "a backslash separates, too";
    EXPECT_TRUE(isFolder(folder.path("d\\e/f")));
    folder.touch("file");
    EXPECT_TRUE(makeSurePathExists(folder.path("file").c_str())) << "whatever it is";
    EXPECT_FALSE(makeSurePathExists(folder.path("file/x/y").c_str()));
    EXPECT_FALSE(makeSurePathExists(""));
    EXPECT_TRUE(makeSurePathExists("/"));
}

TEST(PathSplitting, NeverLooksAtTheFirstCharacter) {
    // An empty folder stands for a path without a separator.
    // clang-format off
    std::tuple<std::string, std::string, std::string> const cases[] = {
        {"dir/file", "dir", "file"}, {"a\\b/c", "a\\b", "c"}, {"a/b\\c", "a/b", "c"}, {"/a/b", "/a", "b"},
        {"dir/", "dir", ""}, {"//", "/", ""}, {"/file", "", "/file"}, {"abc", "", "abc"}, {"/", "", "/"},
        {"", "", ""}};
    // clang-format on
    for (auto const& [path, dir, file] : cases) {
        std::string text = path;
        EXPECT_STREQ(PathFindFileName(text.data()), file.c_str()) << path;
        char folder[16] = "untouched";
        char const* found = nullptr;
        unsigned int const length = GetFullPathName2(path.c_str(), 1, folder, &found);
        EXPECT_EQ(length, dir.empty() ? 0 : path.size()) << path;
        EXPECT_STREQ(folder, dir.empty() ? "untouched" : dir.c_str());
        EXPECT_EQ(found, dir.empty() ? nullptr : path.c_str() + path.size() - file.size())
            << "into the path, not the copy";
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
        EXPECT_EQ(text, result) << "behind a NUL the text stays";
    }
}

TEST(Environment, KnowsVariablesByNameAlone) {
    setenv("MRCOMMON_TEST_EMPTY", "", 1);
    EXPECT_TRUE(isEnvironmentVariableDefined("MRCOMMON_TEST_EMPTY"));
    unsetenv("MRCOMMON_TEST_EMPTY");
    EXPECT_FALSE(isEnvironmentVariableDefined("MRCOMMON_TEST_EMPTY"));
}

TEST(LibLoader, LoadsAPlugIn) {
    using quarn::LibLoader;
    void* const plugin = LibLoader::load(TEST_PLUGIN);
    ASSERT_NE(plugin, nullptr);
    void* const again = loadLibUnix(TEST_PLUGIN);
    void* const address = LibLoader::getFunctionPtr(plugin, "testPluginAnswer");
    ASSERT_NE(address, nullptr);
    EXPECT_EQ(reinterpret_cast<int (*)()>(address)(), 42);
    EXPECT_EQ(getSymbolAddressUnix(again, "testPluginAnswer"), address);
    EXPECT_EQ(LibLoader::getFunctionPtr(plugin, "testPluginanswer"), nullptr);
    EXPECT_EQ(unloadLibUnix(again), 0);
    EXPECT_EQ(LibLoader::unload(plugin), 0);
    EXPECT_EQ(dlopen(TEST_PLUGIN, RTLD_NOW | RTLD_NOLOAD), nullptr) << "closed as often as opened";
}

TEST(LibLoader, MakesSymbolsVisibleToAll) {
    ASSERT_EQ(dlsym(RTLD_DEFAULT, "testPluginAnswer"), nullptr);
    void* const plugin = quarn::LibLoader::load(TEST_PLUGIN);
    EXPECT_NE(dlsym(RTLD_DEFAULT, "testPluginAnswer"), nullptr);
    EXPECT_EQ(quarn::LibLoader::unload(plugin), 0);
}

TEST(LibLoader, PassesFailuresThrough) {
    EXPECT_EQ(quarn::LibLoader::load("/no/such/plugin.so"), nullptr);
    EXPECT_EQ(loadLibUnix(__FILE__), nullptr) << "no library at all";
    EXPECT_EQ(quarn::LibLoader::unload(nullptr), -1);
    EXPECT_EQ(getSymbolAddressUnix(nullptr, "malloc"), nullptr);
}

TEST(Names, KeepTheirIrregularities) {
    using namespace quarn::mr_mesgs;
    EXPECT_STREQ(PARTICLES_TYPE_LWR_NAME, "particles");
    EXPECT_STREQ(OBJECT_TYPE_LRW_NAME, "object");
    EXPECT_STREQ(CMD_TYPE_LRW_NAME, "Command");
    EXPECT_EQ(CMD_TYPE_LRW_NAME, CMD_TYPE_CAP_NAME);
    static_assert(quarn::marelle::WorkSpace::NUM_USR_TOOLBARS == 0);
}
