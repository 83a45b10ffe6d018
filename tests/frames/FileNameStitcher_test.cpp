// FileNameStitcher: built names, parsed paths with real files, probes of the disk, and the saved record.
#include <MRCommon/frames/FileNameStitcher.h>

#include <qn_fileio/qn_fileio.h>

#include "support/Allocations.h"
#include "support/Cases.h"
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

/// Calls with `file` as the current stream, and returns what the settings are then: prefix, padding and order.
template <class Act> std::string settingsAfter(std::FILE* file, Act const& act) {
    SetCurrentStream(file);
    act();
    SetCurrentStream(nullptr);
    FileNameStitcher const& s = FileNameStitcher::instance();
    return s.prefix + " " + std::to_string(s.padding) + " " + std::to_string(s.order);
}

/// What the library asked the disk since the last reset. (No list of calls: it would allocate.)
struct {
    int calls, modes; ///< for a path, or for a name in an open folder
    int entriesRead;
} accesses;

bool foldersCannotBeOpened = false;

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
    for (Case const& c : casesOf("BuildsNames"))
        EXPECT_EQ(stitcher(c[0], c.count(1), c.integer(2)).doIt("fluid", c.integer(3), c[4]), c[5])
            << c.place;
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
    for (Case const& c : casesOf("WritesFormats")) {
        char out[21] = "untouched";
        FileNameStitcher::setFormatStr(out, orderOf(c.integer(0)), c.count(1));
        EXPECT_EQ(out, c[2]) << c.place;
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
        auto const before = std::filesystem::current_path();
        std::filesystem::current_path(folder.path(""));
        accesses = {};
        EXPECT_EQ(FileNameStitcher::findMaxValue(orderOf(order), "f", "x", 4, 0), 299u);
        EXPECT_LT(accesses.calls, 150) << "a name without a folder";
        std::filesystem::current_path(before);
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
    for (Case const& c : casesOf("FindsSequences")) {
        for (int frame = c.integer(1); frame <= c.integer(2); ++frame)
            folder.touch(QN_String().format(c.c_str(0), frame).c_str());
        EXPECT_EQ(parsed(folder.path(""), c[3]), c[4]) << c.place;
    }
}

TEST(FrameExtensionFromPath, AcceptsFilesWithoutNeighbours) {
    TempDir folder;
    for (Case const& c : casesOf("AcceptsFilesWithoutNeighbours")) {
        folder.touch(c[0]);
        EXPECT_EQ(parsed(folder.path(""), c[0]), c[1]) << c.place;
    }
}

TEST(FrameExtensionFromPath, ReadsPathsWithoutAFile) {
    for (Case const& c : casesOf("ReadsPathsWithoutAFile")) EXPECT_EQ(parsed("", c[0]), c[1]) << c.place;
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

TEST(FileNameStitcher, ReadsTheRecordThatItWrote) {
    TempFile file;
    settingsAfter(file, [] { stitcher("ab/", 4, 3).save(); });
    EXPECT_EQ(file.bytes(), hex("00000003 61622F 00000004 00000003"));
    settingsAfter(file, [] { stitcher("next", 5, 1).save(); });
    file.rewind();
    FileNameStitcher& s = stitcher("a longer prefix", 9, 0);
    s.sceneName = "shot";
    EXPECT_EQ(settingsAfter(file, [&] { s.load(); }), "ab/ 4 3");
    EXPECT_EQ(s.sceneName, "shot");
    EXPECT_EQ(settingsAfter(file, [&] { s.load(); }), "next 5 1") << "the record after it";
}

TEST(FileNameStitcher, KeepsWhatACutRecordLacks) {
    for (Case const& c : casesOf("KeepsWhatACutRecordLacks")) {
        TempFile file(hex(c[0]));
        FileNameStitcher& s = stitcher("defg", 9, 3);
        EXPECT_EQ(settingsAfter(file, [&] { s.load(); }), c[1] + " " + c[2] + " " + c[3]) << c.place;
    }
    FileNameStitcher& s = stitcher("defg", 9, 3);
    EXPECT_EQ(settingsAfter(nullptr, [&] { s.load(); }), " 9 3") << "there is no stream";
}

TEST(FileNameStitcher, SurvivesAbsurdRecords) {
    TempFile file(hex("00000002 6100 FFFFFFFF 00000077"));
    FileNameStitcher& s = stitcher("ab/", 4, 3);
    EXPECT_EQ(settingsAfter(file, [&] { s.load(); }), std::string("a\0 4294967295 119", 17));
    EXPECT_EQ(s.doIt("n", 1, "x"), "");
    s.order = FRAME_ORDER_NAME_FRAME_DOT_EXT;
    EXPECT_EQ(s.doIt("n", 1, "x").size(), 1u + 1 + 65535 + 2) << "the prefix ends at its NUL";
    EXPECT_EQ(FileNameStitcher::findMinValue(s.order, "n", "x", s.padding, 5), 5u);

    TempFile huge(hex("7FFFFFFF 61 00000004 00000002"));
    stitcher("ab/", 4, 3);
    auto const loadWithoutMemory = [&] {
        FailingAllocation const failing(0);
        EXPECT_THROW(s.load(), std::bad_alloc);
    };
    EXPECT_EQ(settingsAfter(huge, loadWithoutMemory), "ab/ 4 3");
}

TEST(FileNameStitcher, LoadsCheckedRecordsWithAnyPaddingAndNothingWithoutAStream) {
    FileNameStitcher& s = stitcher("old", 9, 1);
    EXPECT_EQ(settingsAfter(nullptr, [&] { EXPECT_FALSE(s.loadChecked()); }), "old 9 1");
    TempFile file(hex("00000003 61622F FFFFFFFF 00000000"));
    EXPECT_EQ(settingsAfter(file, [&] { EXPECT_TRUE(s.loadChecked()); }), "ab/ 4294967295 0");
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
        auto const load = [&] {
            AllocationLimit const limit(70000);
            EXPECT_EQ(s.loadChecked(), !isDamaged);
        };
        EXPECT_EQ(settingsAfter(file, load), "ab/ 4 3");
        std::fclose(file);
    }
}

TEST(FrameProbe, AllocatesNothing) {
    TempDir folder;
    for (int frame = 10; frame < 400; ++frame)
        if (frame < 60 || frame >= 100) folder.touch("f" + std::to_string(frame) + ".x");
    QN_String const name(folder.path("f").c_str());
    QN_String const ext("x");
    AllocationCounter count;
    EXPECT_EQ(FileNameStitcher::findMaxValue(orderOf(2), name, ext, 3, 10), 9u);
    EXPECT_EQ(FileNameStitcher::findMaxValue(orderOf(2), name, ext, 2, 10), 59u);
    EXPECT_EQ(FileNameStitcher::findMinValue(orderOf(2), name, ext, 2, 40), 10u);
    EXPECT_EQ(FileNameStitcher::findMaxValue(orderOf(2), name, ext, 3, 100), 399u);
    EXPECT_EQ(count.made(), 0);
}
