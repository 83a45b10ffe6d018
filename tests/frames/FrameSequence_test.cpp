#include <MRCommon/frames/FrameSequence.h>

#include "support/Allocations.h"
#include "support/Cases.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <dirent.h>
#include <dlfcn.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <limits>
#include <set>
#include <stdexcept>

using namespace quarn;

namespace {

using Names = std::vector<std::string>;

Names split(std::string const& text) {
    Names pieces;
    std::size_t begin = 0;
    for (std::size_t end; (end = text.find('|', begin)) != std::string::npos; begin = end + 1)
        pieces.push_back(text.substr(begin, end - begin));
    pieces.push_back(text.substr(begin));
    return pieces;
}

std::string textOf(std::vector<FrameRange> const& ranges) {
    std::string text;
    for (FrameRange const& range : ranges) {
        text += ' ' + std::to_string(range.first);
        if (range.last != range.first) text += ".." + std::to_string(range.last);
    }
    return text;
}

/// "fluid.<4>.exr 1..3 5|? notes.txt": two sequences with their paddings and ranges, a name without a frame.
std::string textOf(FrameScan const& scan) {
    std::string text;
    for (FrameSequence const& s : scan.sequences)
        text += s.head + '<' + std::to_string(s.padding) + '>' + s.tail + textOf(s.ranges) + '|';
    for (std::string const& name : scan.others) text += "? " + name + '|';
    if (!text.empty()) text.pop_back();
    return text;
}

/// Every name that a scan stands for.
std::set<std::string> namesIn(FrameScan const& scan) {
    std::set<std::string> names(scan.others.begin(), scan.others.end());
    for (FrameSequence const& sequence : scan.sequences)
        for (FrameRange const& range : sequence.ranges)
            for (long long frame = range.first; frame <= range.last; ++frame)
                EXPECT_TRUE(names.insert(sequence.fileName(frame)).second) << sequence.fileName(frame);
    return names;
}

FrameScanOptions with(bool negative, bool versions, Names const& extensions = {}) {
    FrameScanOptions options;
    options.negativeFrames = negative;
    options.versionsAreNames = versions;
    options.compoundExtensions = extensions;
    return options;
}

/// Checks each list of names of a table in both orders, as it is and as a folder on the disk.
void checkFolders(std::string const& table, FrameScanOptions const& options = {}) {
    for (Case const& c : casesOf(table)) {
        SCOPED_TRACE(c.place);
        Names names = split(c[0]);
        FrameScan const scan = groupFrames(names, options);
        EXPECT_EQ(textOf(scan), c[1]);
        EXPECT_EQ(namesIn(scan), std::set<std::string>(names.begin(), names.end()));
        std::reverse(names.begin(), names.end());
        EXPECT_EQ(textOf(groupFrames(names, options)), c[1]);
        TempDir disk;
        for (std::string const& name : names) disk.touch(name);
        EXPECT_EQ(textOf(scanFrames(disk.path(""), options)), c[1]);
    }
}

/// During its life, entries of folders have no type, and reading fails with `error`, unless 0, after some entries.
class FolderFault {
public:
    explicit FolderFault(int error = 0, int entriesBefore = 0) : error_(error), left_(entriesBefore) {
        active = this;
    }
    ~FolderFault() { active = nullptr; }
    FolderFault(FolderFault const&) = delete;
    FolderFault& operator=(FolderFault const&) = delete;

    dirent* spoil(dirent* entry) {
        if (error_ != 0 && left_-- == 0) {
            errno = error_;
            return nullptr;
        }
        if (entry != nullptr) entry->d_type = DT_UNKNOWN;
        return entry;
    }

    static FolderFault* active;

private:
    int error_, left_;
};

FolderFault* FolderFault::active = nullptr;

} // namespace

extern "C" dirent* readdir(DIR* folder) {
    static auto* const systems = reinterpret_cast<dirent* (*)(DIR*)>(dlsym(RTLD_NEXT, "readdir"));
    dirent* const entry = systems(folder);
    return FolderFault::active == nullptr ? entry : FolderFault::active->spoil(entry);
}

TEST(GroupFrames, FindsTheFrameInEveryOrderOfName) { checkFolders("FindsTheFrameInEveryOrderOfName"); }

TEST(GroupFrames, ListsNamesWithoutAFrame) {
    checkFolders("ListsNamesWithoutAFrame");
    EXPECT_EQ(textOf(groupFrames({"", "a", "", "a"})), "? |? |? a|? a");
    EXPECT_EQ(textOf(groupFrames({})), "");
}

TEST(GroupFrames, SeparatesVersionsViewsAndTiles) { checkFolders("SeparatesVersionsViewsAndTiles"); }

TEST(GroupFrames, KeepsEveryByteOfAName) {
    checkFolders("KeepsEveryByteOfAName");
    std::string const withNul("a\0.7.b", 6);
    EXPECT_EQ(groupFrames({withNul}).sequences.at(0).fileName(7), withNul);
}

TEST(GroupFrames, AssignsFramesToPaddings) { checkFolders("AssignsFramesToPaddings"); }

TEST(GroupFrames, FindsGaps) {
    checkFolders("FindsGaps");
    FrameScan const twice = groupFrames({"f.01.x", "f.02.x", "f.01.x", "f.04.x", "f.02.x"});
    EXPECT_EQ(textOf(twice), "f.<2>.x 1..2 4");
    EXPECT_EQ(twice.sequences[0].count(), 3u);
}

TEST(GroupFrames, ExaminesTheLastPartOfAPathOnly) {
    EXPECT_EQ(textOf(groupFrames({"./a.1.x", "./a.2.x", "d.1/readme", "d1.x/readme", "d/.a.1.x", "d/", "d/7",
                                  "v2.1/a.exr.0003"})),
              "./a.<1>.x 1..2|d/<1> 7|v2.1/a.exr.<4> 3|? d.1/readme|? d/|? d/.a.1.x|? d1.x/readme");
    EXPECT_EQ(textOf(groupFrames({"d/-1.x", "d/v2.x"}, with(true, true))), "d/<2>.x -1|? d/v2.x");
}

TEST(GroupFrames, TakesAMinusForASignOnRequest) {
    checkFolders("TakesAMinusForASignOnRequest");
    checkFolders("TakesAMinusForASignOnRequest, negative frames", with(true, false));
}

TEST(GroupFrames, LeavesVersionsInNamesOnRequest) {
    checkFolders("LeavesVersionsInNamesOnRequest, versions are names", with(false, true));
    checkFolders("LeavesVersionsInNamesOnRequest, negative frames too", with(true, true));
}

TEST(GroupFrames, TakesCompoundExtensionsWhole) {
    checkFolders("TakesCompoundExtensionsWhole, four extensions",
                 with(false, false, {"gz", "tar.gz", "", "bgeo.sc"}));
    checkFolders("TakesCompoundExtensionsWhole, the longest", with(false, false, {"b2.c", "c"}));
}

TEST(GroupFrames, ReportsProgressAndStopsOnRequest) {
    Names const names(3500, "a.1.x");
    std::vector<std::size_t> calls;
    FrameScanOptions options;
    options.progress = [&](std::size_t count) {
        calls.push_back(count);
        return true;
    };
    EXPECT_TRUE(groupFrames(names, options).complete);
    EXPECT_EQ(calls, (std::vector<std::size_t>{1000, 2000, 3000}));

    Names mixed(1500, "a.1.x");
    mixed.emplace_back("late.2.x");
    mixed[10] = "other";
    options.progress = [](std::size_t) { return false; };
    FrameScan const cancelled = groupFrames(mixed, options);
    EXPECT_FALSE(cancelled.complete);
    EXPECT_EQ(textOf(cancelled), "a.<1>.x 1|? other"); // what came before

    TempDir disk;
    for (int i = 0; i < 1001; ++i) disk.touch("f." + std::to_string(i) + ".exr");
    EXPECT_FALSE(scanFrames(disk.path(""), options).complete);
    options.progress = [](std::size_t) -> bool { throw std::runtime_error("enough"); };
    AllocationCounter allocations;
    EXPECT_THROW((void)scanFrames(disk.path(""), options), std::runtime_error);
    EXPECT_THROW((void)groupFrames(names, options), std::runtime_error);
    EXPECT_EQ(allocations.alive(), 0);
}

TEST(FrameSequence, DescribesItsFrames) {
    FrameSequence s;
    s.head = "f.";
    s.tail = ".x";
    s.padding = 5;
    EXPECT_EQ(s.first(), 0);
    EXPECT_EQ(s.last(), 0);
    EXPECT_EQ(s.count(), 0u);
    EXPECT_FALSE(s.contains(0));
    EXPECT_TRUE(s.missing().empty());
    s.ranges = {{-3, -2}, {0, 0}, {7, 999999999999999999}};
    EXPECT_EQ(s.first(), -3);
    EXPECT_EQ(s.last(), 999999999999999999);
    EXPECT_EQ(s.count(), 3u + 999999999999999993u);
    EXPECT_EQ(textOf(s.missing()), " -1 1..6");
    for (long long const frame : {-3, -2, 0, 7, 8}) EXPECT_TRUE(s.contains(frame)) << frame;
    for (long long const frame : {-4, -1, 1, 6}) EXPECT_FALSE(s.contains(frame)) << frame;
    EXPECT_FALSE(s.contains(1000000000000000000));
    EXPECT_EQ(s.fileName(12), "f.00012.x");
    EXPECT_EQ(s.fileName(-3), "f.-0003.x");
    EXPECT_EQ(s.fileName(-123456), "f.-123456.x");
    EXPECT_EQ(s.fileName(std::numeric_limits<long long>::min()), "f.-9223372036854775808.x");
    s.padding = 0;
    EXPECT_EQ(s.fileName(0), "f.0.x");
}

TEST(ScanFrames, LeavesOutDirectoriesOnly) {
    TempDir disk;
    disk.touch("f.0001.x");
    disk.touch("f.0002.x/inside.0001.x");
    std::filesystem::create_symlink(disk.path("f.0001.x"), disk.path("f.0003.x"));
    std::filesystem::create_symlink(disk.path("gone"), disk.path("f.0004.x"));
    std::filesystem::create_directory_symlink(disk.path("f.0002.x"), disk.path("f.0006.x"));
    EXPECT_EQ(textOf(scanFrames(disk.path(""))), "f.<4>.x 1 3..4 6");
}

TEST(ScanFrames, TakesEntriesWithoutATypeForFiles) {
    TempDir disk;
    disk.touch("f.0001.x");
    disk.touch("f.0002.x/inside.0001.x");
    disk.touch("notes/inside");
    FolderFault const fault;
    EXPECT_EQ(textOf(scanFrames(disk.path(""))), "f.<4>.x 1..2|? notes");
}

TEST(ScanFrames, ThrowsTheReasonOfTheSystem) {
    TempDir disk;
    disk.touch("file");
    auto const reasonFor = [](std::string const& folder) {
        try {
            (void)scanFrames(folder);
        } catch (std::filesystem::filesystem_error const& error) {
            EXPECT_EQ(error.path1(), folder);
            return error.code();
        }
        return std::error_code();
    };
    EXPECT_EQ(reasonFor(disk.path("none")), std::errc::no_such_file_or_directory);
    EXPECT_EQ(reasonFor(disk.path("file")), std::errc::not_a_directory);
    EXPECT_EQ(reasonFor(""), std::errc::no_such_file_or_directory);
    EXPECT_EQ(reasonFor(disk.path(std::string(300, 'n'))), std::errc::filename_too_long);
    for (int const entries : {0, 2}) {
        AllocationCounter const allocations;
        FolderFault const fault(EIO, entries);
        EXPECT_EQ(reasonFor(disk.path("")), std::errc::io_error);
        EXPECT_EQ(allocations.alive(), 0);
    }
}
