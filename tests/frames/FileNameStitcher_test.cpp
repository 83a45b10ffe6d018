// FileNameStitcher: built names, parsed paths with real files, probes of the disk, and the saved record.
#include <MRCommon/frames/FileNameStitcher.h>

#include <qn_fileio/qn_fileio.h>

#include "support/Allocations.h"
#include "support/TempDir.h"
#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <filesystem>
#include <tuple>
#include <vector>

using quarn::QN_String;

namespace {

FrameExtensionOrder orderOf(int value) { return static_cast<FrameExtensionOrder>(value); }

/// The settings before any test changed them.
struct Settings {
    std::string prefix, sceneName;
    unsigned int padding;
    FrameExtensionOrder order;
} const defaults = [] {
    FileNameStitcher const& s = FileNameStitcher::instance();
    return Settings{s.prefix, s.sceneName, s.padding, s.order};
}();

/// Returns the process-wide stitcher with the given settings.
FileNameStitcher& stitcher(std::string const& prefix, unsigned int padding, int order) {
    FileNameStitcher& s = FileNameStitcher::instance();
    s.prefix = prefix;
    s.padding = padding;
    s.order = orderOf(order);
    return s;
}

/// What the library asked the disk since the last reset. (No list of calls: it would allocate.)
struct {
    int calls, modes; ///< for a path, or for a name in an open folder
    int entriesRead;
} accesses;

bool foldersCannotBeOpened = false;

struct Reading {
    char const *path, *result;
};

/// Returns what parsing says of a path below `folder`: "name|extension first..last width order", or "no".
std::string parsed(std::string const& folder, std::string const& path) {
    QN_String name("untouched"), ext("untouched");
    unsigned int first = 7, last = 7, padding = 7;
    FrameExtensionOrder order = orderOf(0);
    bool const found = FileNameStitcher::frameExtensionFromPath((folder + path).c_str(), name, ext, first,
                                                                last, padding, order);
    std::string shortName = name.c_str();
    if (shortName.compare(0, folder.size(), folder) == 0) shortName.erase(0, folder.size());
    return (found ? "" : "no ") + shortName + "|" + ext.c_str() + " " + std::to_string(first) + ".." +
           std::to_string(last) + " " + std::to_string(padding) + " " + std::to_string(order);
}

} // namespace

/// Replace the platform's functions for the library under test too.
extern "C" int faccessat(int folder, char const* path, int mode, int /*flags*/) noexcept {
    ++accesses.calls;
    accesses.modes |= mode;
    struct stat ignored {};
    return fstatat(folder, path, &ignored, 0); // knows existence alone
}

extern "C" int access(char const* path, int mode) noexcept { return faccessat(AT_FDCWD, path, mode, 0); }

extern "C" DIR* opendir(char const* folder) {
    static auto const platform = reinterpret_cast<DIR* (*)(char const*)>(dlsym(RTLD_NEXT, "opendir"));
    return foldersCannotBeOpened ? nullptr : platform(folder);
}

extern "C" dirent* readdir(DIR* stream) {
    static auto const platform = reinterpret_cast<dirent* (*)(DIR*)>(dlsym(RTLD_NEXT, "readdir"));
    ++accesses.entriesRead;
    return platform(stream);
}

TEST(FileNameStitcher, StartsWithItsDefaults) {
    EXPECT_EQ(&FileNameStitcher::instance(), &FileNameStitcher::instance());
    EXPECT_EQ(defaults.prefix + defaults.sceneName, "");
    EXPECT_EQ(defaults.padding, 5u);
    EXPECT_EQ(defaults.order, FRAME_ORDER_NAME_FRAME_DOT_EXT);
}

TEST(FileNameStitcher, BuildsNames) {
    FileNameStitcher::instance().setSceneName("shot.take2.scn");
    // clang-format off
    std::tuple<char const*, unsigned int, int, int, char const*, char const*> const cases[] = {
        {"/cache/$(SCENENAME)/", 5, 2, 12, ".bin", "/cache/shot/fluid00012.bin"},
        {"/cache/$(SCENENAME)/", 5, 0, 12, ".bin", "/cache/shot/fluid.00012.bin"},
        {"/cache/$(SCENENAME)/", 5, 1, 12, ".bin", "/cache/shot/fluid.bin.00012"},
        {"/cache/$(SCENENAME)/", 5, 3, 12, ".bin", "/cache/shot/fluid_00012.bin"},
        {"/cache/$(SCENENAME)/", 3, 3, 1234, "bin", "/cache/shot/fluid_1234.bin"},
        {"$(SCENENAME)$(SCENENAME)", 1, 2, 0, "x", "shot$(SCENENAME)fluid0.x"},
        {"$(SCENENAME", 0, 2, 0, "tar.gz", "$(SCENENAMEfluid0.targz"}, {"", 5, 2, -3, "x", "fluid-0003.x"},
        {"", 2, 2, -34, "x", "fluid-34.x"}, {"", 0, 1, INT_MIN, "", "fluid..-2147483648"},
        {"", 12, 0, INT_MAX, "..", "fluid.002147483647."}, {"", 5, 4, 1, "x", ""}, {"", 5, -1, 1, "x", ""}};
    // clang-format on
    for (auto const& [prefix, padding, order, frame, ext, result] : cases)
        EXPECT_EQ(stitcher(prefix, padding, order).doIt("fluid", frame, ext), result);
}

TEST(FileNameStitcher, BuildsNamesOfAnyLength) {
    std::string const name(5000, 'n');
    EXPECT_EQ(stitcher(name, 1000, 3).doIt(name, -5, name),
              name + name + "_-" + std::string(998, '0') + "5." + name);
    for (unsigned int const padding : {65535u, 65536u, UINT_MAX})
        EXPECT_EQ(stitcher("", padding, 1).doIt("", 1, ""), ".." + std::string(65534, '0') + "1");
    EXPECT_EQ(stitcher("", 1, 2).doIt(std::string("a\0b", 3), 1, std::string("c\0d", 3)), "a1.c")
        << "parts end at their NUL, as printed texts do";
}

TEST(FileNameStitcher, CutsTheSceneNameAtItsFirstDot) {
    FileNameStitcher& s = FileNameStitcher::instance();
    for (auto const& [text, stored] : {std::pair("shot", "shot"), {".scn", ""}, {"a.b.c", "a"}}) {
        s.setSceneName(text);
        EXPECT_EQ(s.sceneName, stored);
    }
}

TEST(FileNameStitcher, WritesFormats) {
    // clang-format off
    std::tuple<int, unsigned int, char const*> const cases[] = {
        {0, 4, "%s.%04d.%s"}, {1, 4, "%s.%s.%04d"}, {2, 4, "%s%04d.%s"}, {3, 4, "%s_%04d.%s"},
        {0, 0, "%s.%s"}, {1, 0, "%s.%s.%00d"}, {2, 0, "%s.%s"}, {3, 0, "%s.%s"},
        {3, 0x80000000, "%s_%0-2147483648d.%s"}, {4, 4, "untouched"}, {-1, 4, "untouched"}};
    // clang-format on
    for (auto const& [order, padding, format] : cases) {
        char out[21] = "untouched";
        FileNameStitcher::setFormatStr(out, orderOf(order), padding);
        EXPECT_STREQ(out, format);
    }
}

TEST(FrameProbe, UsesThePathsOfEachLayout) {
    TempDir folder;
    std::vector<std::string> const texts{"f.007.x", "f.x.007", "f007.x", "f_007.x"};
    for (int order = 0; order < 4; ++order) {
        folder.touch(texts[static_cast<std::size_t>(order)]);
        EXPECT_EQ(FileNameStitcher::findMaxValue(orderOf(order), folder.path("f").c_str(), "x", 3, 7), 7u);
        EXPECT_EQ(FileNameStitcher::findMaxValue(orderOf(order), folder.path("f").c_str(), "x", 4, 7), 6u);
    }
    for (int const order : {-1, 4}) {
        EXPECT_EQ(FileNameStitcher::findMinValue(orderOf(order), "f", "x", 3, 7), 7u);
        EXPECT_EQ(FileNameStitcher::findMaxValue(orderOf(order), "f", "x", 3, 7), 6u);
    }
    folder.touch("g0.x"), folder.touch("g1.x");
    EXPECT_EQ(FileNameStitcher::findMinValue(orderOf(2), folder.path("g").c_str(), "x", 0, 1), 0u);
    EXPECT_EQ(FileNameStitcher::findMinValue(orderOf(2), folder.path("g").c_str(), "x", UINT_MAX, 1), 1u);
}

TEST(FrameProbe, NeverTruncatesAPath) {
    TempDir folder;
    std::string longFolder = folder.path("");
    while (longFolder.size() < 1000)
        longFolder += std::string(std::min<std::size_t>(150, 1000 - longFolder.size()), 'd') + "/";
    std::string const relative = longFolder.substr(folder.path("").size());
    for (std::size_t const length : {1022u, 1023u, 1024u, 1040u}) {
        std::string const name = std::string(length - longFolder.size() - 4, 'n');
        for (char const* const file : {"1.x", "2.x", "1.xy", "2.xy", "1.xyz", "2.xyz"})
            folder.touch(relative + name + file);
        unsigned int const last =
            FileNameStitcher::findMaxValue(orderOf(2), (longFolder + name).c_str(), "xyz", 1, 1);
        EXPECT_EQ(last, length + 1 < 1024 ? 2u : 0u) << length + 1;
    }
}

TEST(FrameProbe, AsksForExistenceAlone) {
    TempDir folder;
    std::filesystem::create_directory(folder.path("f1.x"));
    std::filesystem::create_symlink("f1.x", folder.path("f2.x"));
    std::filesystem::create_symlink("no such file", folder.path("f3.x"));
    EXPECT_EQ(FileNameStitcher::findMaxValue(orderOf(2), folder.path("f").c_str(), "x", 1, 1), 2u)
        << "a folder and a link to one exist, a dangling link does not";
    folder.touch("g1.x");
    std::filesystem::permissions(folder.path("g1.x"), std::filesystem::perms::none);
    accesses = {};
    EXPECT_EQ(FileNameStitcher::findMinValue(orderOf(2), folder.path("g").c_str(), "x", 1, 2), 1u);
    EXPECT_EQ(accesses.calls, 2);
    static_assert(F_OK == 0);
    EXPECT_EQ(accesses.modes, F_OK) << "permissions do not matter";
}

TEST(FrameProbe, GivesTheSameAnswersWhetherOrNotTheFolderIsRead) {
    for (int order = 0; order < 4; ++order) {
        TempDir folder;
        auto const name = [order](char const* what, std::string const& frame) {
            std::string const mark = order == 0 ? "." : order == 3 ? "_" : "";
            return what + (order == 1 ? ".x." + frame : mark + frame + ".x");
        };
        auto const link = [&](std::string const& target, std::string const& file) {
            std::filesystem::create_symlink(target, folder.path(file));
        };
        for (int i = 0; i <= 400; ++i) {
            std::string const frame = QN_String().format("%04d", i).c_str();
            if (i == 200)
                std::filesystem::create_directory(folder.path(name("f", frame)));
            else if (i == 201)
                link(name("f", "0001"), name("f", frame));
            else if (i == 300)
                link("no such file", name("f", frame));
            else
                folder.touch(name("f", frame));
            if (i != 250) folder.touch(name("g", frame));
        }
        // None of these is frame 250.
        for (char const* const other :
             {"250", "00250", "+250", " 250", "0xFA", "4294967546", "0250 ", "-250"})
            folder.touch(name("g", other));
        for (bool const refused : {false, true}) {
            foldersCannotBeOpened = refused;
            auto const last = [&](char const* what, unsigned int known) {
                return FileNameStitcher::findMaxValue(orderOf(order), folder.path(what).c_str(), "x", 4,
                                                      known);
            };
            accesses = {};
            EXPECT_EQ(last("f", 0), 299u);
            EXPECT_EQ(accesses.calls < 150, !refused) << accesses.calls;
            EXPECT_EQ(accesses.entriesRead > 0, !refused);
            EXPECT_EQ(last("f", 150), 299u);
            EXPECT_EQ(last("f", 301), 400u);
            EXPECT_EQ(last("g", 0), 249u);
            EXPECT_EQ(last("g", 251), 400u);
        }
        foldersCannotBeOpened = false;
    }
}

TEST(FrameProbe, FindsFramesThatAreFolders) {
    TempDir folder;
    for (int frame = 0; frame < 80; ++frame) folder.touch(QN_String().format("d.%02d.x/file", frame).c_str());
    EXPECT_EQ(FileNameStitcher::findMaxValue(orderOf(0), folder.path("d").c_str(), "x/file", 2, 0), 79u);
}

TEST(FrameProbe, ReadsNoMoreThanItsQuestionsCost) {
    TempDir folder;
    for (int i = 0; i < 1500; ++i) folder.touch("other" + std::to_string(i));
    for (int frame = 100; frame < 500; ++frame) folder.touch(QN_String().format("f%d.x", frame).c_str());
    accesses = {};
    EXPECT_EQ(FileNameStitcher::findMaxValue(orderOf(2), folder.path("f").c_str(), "x", 3, 100), 499u);
    EXPECT_LE(accesses.calls, 410);
    EXPECT_LE(accesses.entriesRead, 3 * 400) << "three entries cost no more than one question";
}

TEST(FrameExtensionFromPath, FindsSequences) {
    TempDir folder;
    // clang-format off
    std::tuple<char const*, int, int, char const*, char const*> const cases[] = {
        {"fluid_%05d.bin", 10, 20, "fluid_00012.bin", "fluid|bin 10..20 5 3"},
        {"fluid.bin.%04d", 1, 9, "fluid.bin.0007", "fluid|bin 1..9 4 1"},
        {"mesh.%03d.obj", 0, 5, "mesh.003.obj", "mesh|obj 0..5 3 0"},
        {"smoke%02d.vdb", 8, 9, "smoke09.vdb", "smoke|vdb 8..9 2 2"},
        {"long12%010d.bin", 1, 2, "long120000000001.bin", "long12|bin 1..2 10 2"},
        {"v1.2/part_%03d.bin", 1, 3, "v1.2/part_002.bin", "v1.2/part|bin 1..3 3 3"},
        {"%04d.bin", 5, 6, "0005.bin", "|bin 5..6 4 2"},
        {"take%d.bin", 1, 2, "take2.bin", "take|bin 1..2 1 2"},
        {"smoke_v%d.vdb", 1, 2, "smoke_v2.vdb", "smoke_v|vdb 1..2 1 2"},
        {"minus-%04d.x", 2, 3, "minus-0003.x", "minus-|x 2..3 4 2"},
        {"last.x.%05d", -3, 1, "last.x.-0002", "last|x 4294967293..1 5 1"},
        {"sign.x.%02d", 7, 8, "sign.x.+7", "sign|x 7..8 2 1"},
        {"blank.x.%03d", 7, 8, "blank.x. +7", "blank|x 7..8 3 1"}};
    // clang-format on
    for (auto const& [format, first, last, path, result] : cases) {
        for (int frame = first; frame <= last; ++frame)
            folder.touch(QN_String().format(format, frame).c_str());
        EXPECT_EQ(parsed(folder.path(""), path), result);
    }
}

TEST(FrameExtensionFromPath, AcceptsFilesWithoutNeighbours) {
    TempDir folder;
    // clang-format off
    Reading const cases[] = {
        {"take2.bin", "take2|bin 0..0 0 2"}, {"smoke_v2.vdb", "smoke_v2|vdb 0..0 0 2"},
        {"notes.txt", "notes|txt 0..0 0 1"}, {"notes\xB2.txt", "notes\xB2|txt 0..0 0 1"},
        {"d.x/readme", "d|x/readme 0..0 0 1"}, {"fluid_7.bin", "fluid|bin 7..7 1 3"},
        {"fluid.7.bin", "fluid|bin 7..7 1 0"}, {"fluid.bin.0000", "fluid|bin 0..0 4 1"},
        {"fluid..bin", "fluid.|bin 0..0 0 1"}, {"fluid.", "fluid| 0..0 0 1"},
        {"fluid.bin.00x", "fluid.bin|00x 0..0 0 1"},
        {"minus_-0003.x", "minus_-0003|x 0..0 0 2"},
        // A frame, although no name is built like that: the search finds no file.
        {"fluid.bin.12abc", "fluid|bin 12..11 5 1"}, {"fluid.bin.+7", "fluid|bin 7..6 2 1"},
        {"r.x/mesh.3ds", "r|x/mesh 3..2 3 1"}};
    // clang-format on
    for (Reading const& c : cases) {
        folder.touch(c.path);
        EXPECT_EQ(parsed(folder.path(""), c.path), c.result);
    }
}

TEST(FrameExtensionFromPath, ReadsPathsWithoutAFile) {
    // clang-format off
    Reading const cases[] = {
        {"no_such_readme", "no untouched|untouched 7..7 7 1"}, {"", "no untouched|untouched 7..7 7 1"},
        {"12.0007", "|12 7..6 4 1"}, {".", "| 0..0 0 1"}, {".0", "| 0..4294967295 1 1"},
        {"n.-2", "|n 4294967294..4294967293 2 1"}, {"d.1/readme", "|d 1..0 8 1"},
        {"no_such_9999999999.x", "no_such|x 1410065407..1410065406 10 3"},
        {"no_such.2000000000.x", "no_such|x 2000000000..2000000000 10 0"},
        {"n.x.99999999999999999999", "n|x 4294967295..4294967294 20 1"}};
    // clang-format on
    for (Reading const& c : cases) EXPECT_EQ(parsed("", c.path), c.result) << c.path;
    QN_String path("no_such_5.x");
    FrameExtensionOrder order = orderOf(0);
    unsigned int number = 0;
    EXPECT_TRUE(FileNameStitcher::frameExtensionFromPath(path, path, path, number, number, number, order));
    EXPECT_STREQ(path.c_str(), "x") << "the outputs may be the path itself";
    EXPECT_TRUE(FileNameStitcher::frameExtensionFromPath("no_such.5.x", order));
    EXPECT_EQ(order, FRAME_ORDER_NAME_DOT_FRAME_DOT_EXT);
}

TEST(FrameExtensionFromPath, AsksTheDiskOnlyForTheRange) {
    TempDir folder;
    for (char const* const file : {"a.1.x", "a1.x", "a_1.x", "a.x.1", "a.x"}) {
        folder.touch(file);
        QN_String const path(folder.path(file).c_str());
        unsigned int number = 0;
        FrameExtensionOrder order{}, alone{};
        accesses = {};
        EXPECT_TRUE(FileNameStitcher::frameExtensionFromPath(path, alone));
        EXPECT_EQ(accesses.calls, 0) << file;
        EXPECT_TRUE(FileNameStitcher::frameExtensionFromPath(path, number, number, number, order));
        EXPECT_EQ(accesses.calls == 0, path == folder.path("a.x").c_str()) << file;
        EXPECT_EQ(alone, order) << file;
    }
    FrameExtensionOrder order = orderOf(3);
    EXPECT_FALSE(FileNameStitcher::frameExtensionFromPath("no dot", order));
    EXPECT_EQ(order, FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME);
}

TEST(FrameExtensionFromPath, LeavesTheOutputsAloneIfMemoryIsExhausted) {
    TempDir folder;
    folder.touch("a_1.x");
    QN_String const path(folder.path("a_1.x").c_str());
    QN_String name("a name"), ext("an extension");
    unsigned int first = 7, last = 7, padding = 7;
    FrameExtensionOrder order{};
    auto const parse = [&] {
        EXPECT_TRUE(name == "a name" && ext == "an extension" && first == 7 && last == 7 && padding == 7);
        FileNameStitcher::frameExtensionFromPath(path, name, ext, first, last, padding, order);
    };
    EXPECT_GT(failEveryAllocation(parse), 1);
    EXPECT_TRUE(ext == "x" && first == 1 && padding == 1);
}

TEST(FileNameStitcher, ReadsTheRecordThatItWrote) {
    TempFile file;
    SetCurrentStream(file);
    stitcher("ab/", 4, 3).save();
    EXPECT_EQ(file.bytes(), hex("00000003 61622F 00000004 00000003"));
    stitcher("next", 5, 1).save();
    file.rewind();
    FileNameStitcher& s = stitcher("a longer prefix", 9, 0);
    s.sceneName = "shot";
    s.load();
    EXPECT_EQ(s.prefix + s.sceneName, "ab/shot");
    EXPECT_TRUE(s.padding == 4 && s.order == 3);
    s.load();
    SetCurrentStream(nullptr);
    EXPECT_TRUE(s.prefix == "next" && s.padding == 5 && s.order == 1) << "the record after it";
}

TEST(FileNameStitcher, KeepsWhatACutRecordLacks) {
    using namespace std::string_literals;
    // clang-format off
    std::tuple<char const*, std::string, unsigned int, int> const cases[] = {
        {"", "", 9, 3}, {"000000", "", 9, 3}, {"00000004 61", "aefg", 9, 3},
        {"00000006 6162", "abfg\0\0"s, 9, 3}, {"00000001 61 0000", "a", 9, 3},
        {"00000001 61 00000004", "a", 4, 3}, {"00000001 61 00000004 000000", "a", 4, 3}};
    // clang-format on
    for (auto const& [record, prefix, padding, order] : cases) {
        TempFile file(hex(record));
        FileNameStitcher& s = stitcher("defg", 9, 3);
        SetCurrentStream(file);
        s.load();
        SetCurrentStream(nullptr);
        EXPECT_EQ(s.prefix, prefix) << record;
        EXPECT_TRUE(s.padding == padding && s.order == order) << record;
    }
    FileNameStitcher& s = stitcher("defg", 9, 3);
    s.load();
    EXPECT_EQ(s.prefix, "") << "there is no stream";
    EXPECT_TRUE(s.padding == 9 && s.order == 3);
}

TEST(FileNameStitcher, SurvivesAbsurdRecords) {
    TempFile file(hex("00000002 6100 FFFFFFFF 00000077"));
    FileNameStitcher& s = stitcher("ab/", 4, 3);
    SetCurrentStream(file);
    s.load();
    EXPECT_EQ(s.order, 0x77);
    EXPECT_EQ(s.doIt("n", 1, "x"), "");
    s.order = FRAME_ORDER_NAME_FRAME_DOT_EXT;
    EXPECT_EQ(s.doIt("n", 1, "x").size(), 1u + 1 + 65535 + 2) << "the prefix ends at its NUL";
    EXPECT_EQ(FileNameStitcher::findMinValue(s.order, "n", "x", s.padding, 5), 5u);

    TempFile huge(hex("7FFFFFFF 61 00000004 00000002"));
    SetCurrentStream(huge);
    stitcher("ab/", 4, 3);
    {
        FailingAllocation const failing(0);
        EXPECT_THROW(s.load(), std::bad_alloc);
    }
    SetCurrentStream(nullptr);
    EXPECT_TRUE(s.prefix == "ab/" && s.padding == 4 && s.order == 3);
}

TEST(FileNameStitcher, ChangesNothingUnlessACheckedRecordIsWhole) {
    Bytes const whole = hex("00000003 61622F 00000004 00000003");
    FileNameStitcher& s = FileNameStitcher::instance();
    auto const loads = [&](std::FILE* file) {
        stitcher("old", 9, 1);
        SetCurrentStream(file);
        AllocationLimit const limit(70000);
        bool const loaded = s.loadChecked();
        SetCurrentStream(nullptr);
        EXPECT_TRUE(loaded || (s.prefix == "old" && s.padding == 9 && s.order == 1));
        return loaded;
    };
    EXPECT_TRUE(loads(TempFile(whole)));
    EXPECT_TRUE(s.prefix == "ab/" && s.padding == 4 && s.order == 3);
    EXPECT_FALSE(loads(nullptr));
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(loads(TempFile(Bytes(whole.begin(), whole.begin() + static_cast<long>(size))))) << size;
    for (char const* const damaged :
         {"FFFFFFFF 61622F 00000004 00000003", "0000000C 61622F 00000004 00000003",
          "00000003 61622F 00000004 00000004", "00000003 61622F 00000004 FFFFFFFF"})
        EXPECT_FALSE(loads(TempFile(hex(damaged)))) << damaged;
    EXPECT_TRUE(loads(TempFile(hex("00000000 FFFFFFFF 00000000")))) << "every padding can be used";
    EXPECT_TRUE(s.prefix.empty() && s.padding == UINT_MAX && s.order == 0);
}

TEST(FileNameStitcher, LoadsCheckedRecordsFromPipesWithoutTrustingTheirLength) {
    FileNameStitcher& s = stitcher("old", 9, 1);
    for (bool const isDamaged : {false, true}) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        Bytes const record =
            hex(isDamaged ? "FFFFFFFF 61622F 00000004 00000003" : "00000003 61622F 00000004 00000003");
        ASSERT_EQ(write(ends[1], record.data(), record.size()), static_cast<long>(record.size()));
        close(ends[1]);
        std::FILE* const file = fdopen(ends[0], "rb");
        SetCurrentStream(file);
        {
            AllocationLimit const limit(70000);
            EXPECT_EQ(s.loadChecked(), !isDamaged);
        }
        SetCurrentStream(nullptr);
        std::fclose(file);
        EXPECT_TRUE(s.prefix == "ab/" && s.padding == 4 && s.order == 3);
    }
}

TEST(FileNameStitcher, PassesMemoryExhaustionOn) {
    FileNameStitcher const& s = stitcher("", 100, 2);
    EXPECT_GT(failEveryAllocation([&] { static_cast<void>(s.doIt("n", 1, "x")); }), 0);
}

TEST(FrameProbe, AllocatesNothing) {
    TempDir folder;
    for (int frame = 10; frame < 60; ++frame) folder.touch("f" + std::to_string(frame) + ".x");
    for (int frame = 100; frame < 400; ++frame) folder.touch("f" + std::to_string(frame) + ".x");
    QN_String const name(folder.path("f").c_str());
    QN_String const ext("x");
    AllocationCounter count;
    EXPECT_EQ(FileNameStitcher::findMaxValue(orderOf(2), name, ext, 3, 10), 9u);
    EXPECT_EQ(FileNameStitcher::findMaxValue(orderOf(2), name, ext, 2, 10), 59u);
    EXPECT_EQ(FileNameStitcher::findMinValue(orderOf(2), name, ext, 2, 40), 10u);
    EXPECT_EQ(FileNameStitcher::findMaxValue(orderOf(2), name, ext, 3, 100), 399u);
    EXPECT_EQ(count.made(), 0);
}
