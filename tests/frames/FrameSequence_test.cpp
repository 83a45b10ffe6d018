#include <MRCommon/frames/FrameSequence.h>

#include "support/Allocations.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <dirent.h>
#include <dlfcn.h>
#include <regex.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <stdexcept>
#include <tuple>

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

struct Folder {
    char const* names;
    char const* expected;
};

/// Checks each list of names in both orders, as it is and as a folder on the disk.
void checkFolders(std::vector<Folder> const& folders, FrameScanOptions const& options = {}) {
    for (Folder const& folder : folders) {
        SCOPED_TRACE(folder.names);
        Names names = split(folder.names);
        FrameScan const scan = groupFrames(names, options);
        EXPECT_EQ(textOf(scan), folder.expected);
        EXPECT_EQ(namesIn(scan), std::set<std::string>(names.begin(), names.end()));
        std::reverse(names.begin(), names.end());
        EXPECT_EQ(textOf(groupFrames(names, options)), folder.expected);
        TempDir disk;
        for (std::string const& name : names) disk.touch(name);
        EXPECT_EQ(textOf(scanFrames(disk.path(""), options)), folder.expected);
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

TEST(GroupFrames, FindsTheFrameInEveryOrderOfName) {
    checkFolders({
        {"fluid.0001.exr|fluid.0002.exr|fluid.0003.exr", "fluid.<4>.exr 1..3"},
        {"fluid00012.bin|fluid00013.bin", "fluid<5>.bin 12..13"},
        {"fluid_00012.bin|fluid_00013.bin", "fluid_<5>.bin 12..13"},
        {"fluid.bin.00012|fluid.bin.00013", "fluid.bin.<5> 12..13"},
        {"fluid.00012.bin|fluid00012.bin|fluid_00012.bin|fluid.bin.00012",
         "fluid<5>.bin 12|fluid.<5>.bin 12|fluid.bin.<5> 12|fluid_<5>.bin 12"},
        {"0001.jpg|0002.jpg", "<4>.jpg 1..2"},
        {"10.exr", "<2>.exr 10"},
        {"0001|0002|0004", "<4> 1..2 4"},
        {"0", "<1> 0"},
        {"frame1|frame2|frame10", "frame<1> 1..2 10"},
        {"take_7.bin", "take_<1>.bin 7"},
        {"12.0007", "12.<4> 7"},
        {"1.2|1.2.3", "1.<1> 2|1.2.<1> 3"},
        {"take7.", "take<1>. 7"},
        {"a..0001", "a..<4> 1"},
        {"log.1|log.2|log.10", "log.<1> 1..2 10"},
        {"mesh.007.3ds", "mesh.<3>.3ds 7"},
        {"part.001.7z|part.002.7z", "part.<3>.7z 1..2"},
        {"movie.mp4|movie.mp4.001|movie.mp4.002", "movie.mp4.<3> 1..2|? movie.mp4"},
        {"fluid.0001.exr.1", "fluid.0001.exr.<1> 1"},
        {"t.123456789012345678.raw", "t.<18>.raw 123456789012345678"},
        {"t.000000000000000001|t.000000000000000003", "t.<18> 1 3"},
        {"scan_20261121093000.raw|scan_20261121093001.raw", "scan_<14>.raw 20261121093000..20261121093001"},
    });
}

TEST(GroupFrames, ListsNamesWithoutAFrame) {
    checkFolders({
        {"notes.txt|README|Makefile", "? Makefile|? README|? notes.txt"},
        {".0001.exr|.DS_Store|.fluid.0001.bin", "? .0001.exr|? .DS_Store|? .fluid.0001.bin"},
        {"fluid.0001.exr.tmp|fluid.0001.exr.part", "? fluid.0001.exr.part|? fluid.0001.exr.tmp"},
        {"render.0001.exr|render.0001.exr.lock", "render.<4>.exr 1|? render.0001.exr.lock"},
        {"hero.0001.L.exr|hero.0001.R.exr", "? hero.0001.L.exr|? hero.0001.R.exr"},
        {"render (1).png|render (2).png", "? render (1).png|? render (2).png"},
        {"a 1 .png", "? a 1 .png"},
        {"archive.tar.gz|part1.tar.gz", "? archive.tar.gz|? part1.tar.gz"},
        {"fluid.12abc|take2b", "? fluid.12abc|? take2b"},
        {"fluid.####.exr|fluid.%04d.exr", "? fluid.####.exr|? fluid.%04d.exr"},
        {"a1..", "? a1.."},
        {"t.1234567890123456789.raw|1234567890123456789|t.0000000000000000001",
         "? 1234567890123456789|? t.0000000000000000001|? t.1234567890123456789.raw"},
        {"take1.1234567890123456789",
         "? take1.1234567890123456789"},  // the frame's place holds too many digits
        {"f\u0663.png", "? f\u0663.png"}, // a digit, but not one of ASCII
        {"scene.scn|scene.scn~|scene.0001.scn~", "scene.<4>.scn~ 1|? scene.scn|? scene.scn~"},
    });
    EXPECT_EQ(textOf(groupFrames({"", "a", "", "a"})), "? |? |? a|? a");
    EXPECT_EQ(textOf(groupFrames({})), "");
}

TEST(GroupFrames, SeparatesVersionsViewsAndTiles) {
    checkFolders({
        {"hero.left.0001.exr|hero.right.0001.exr|hero.left.0002.exr|hero.right.0002.exr",
         "hero.left.<4>.exr 1..2|hero.right.<4>.exr 1..2"},
        {"comp_v003.0101.dpx|comp_v003.0102.dpx|comp_v004.0101.dpx",
         "comp_v003.<4>.dpx 101..102|comp_v004.<4>.dpx 101"},
        {"smoke_v1.vdb|smoke_v2.vdb", "smoke_v<1>.vdb 1..2"},
        {"v2", "v<1> 2"},
        {"skin.1001.tx|skin.1002.tx|skin.1011.tx", "skin.<4>.tx 1001..1002 1011"},
        {"skin_1001.0001.tif|skin_1002.0001.tif", "skin_1001.<4>.tif 1|skin_1002.<4>.tif 1"},
        {"tile_03_0001.exr|tile_03_0002.exr|tile_04_0001.exr", "tile_03_<4>.exr 1..2|tile_04_<4>.exr 1"},
        {"cloth.0001.25.bgeo|cloth.0001.50.bgeo|cloth.0002.25.bgeo",
         "cloth.0001.<2>.bgeo 25 50|cloth.0002.<2>.bgeo 25"},
        {"x1y2.dat|x1y3.dat|x2y2.dat", "x1y<1>.dat 2..3|x2y<1>.dat 2"},
        {"IMG_0001.JPG|IMG_0001.jpg|IMG_0002.JPG", "IMG_<4>.JPG 1..2|IMG_<4>.jpg 1"},
        {"b.1.x|a.1.y|a.1.x", "a.<1>.x 1|a.<1>.y 1|b.<1>.x 1"},
        {"shot_010_beauty.1001.exr|shot_010_depth.1001.exr|shot_020_beauty.1001.exr",
         "shot_010_beauty.<4>.exr 1001|shot_010_depth.<4>.exr 1001|shot_020_beauty.<4>.exr 1001"},
    });
}

TEST(GroupFrames, KeepsEveryByteOfAName) {
    checkFolders({
        {"my shot 001.png|my shot 002.png", "my shot <3>.png 1..2"},
        {"Frame 1.tga|Frame 2.tga|Frame 12.tga", "Frame <1>.tga 1..2 12"},
        {" .1.a|  1 .2", "  1 .<1> 2| .<1>.a 1"},
        {"größe_0001.exr|größe_0002.exr", "größe_<4>.exr 1..2"},
        {"z.1.a|\u00e9.1.a|a.1.a", "a.<1>.a 1|z.<1>.a 1|\u00e9.<1>.a 1"},
        {"bad\xff.01.bin|bad\x80.01.bin|bad\xff", "bad\x80.<2>.bin 1|bad\xff.<2>.bin 1|? bad\xff"},
        {"two\nlines.1.txt", "two\nlines.<1>.txt 1"},
        {"a+0001.exr|a#0001.exr", "a#<4>.exr 1|a+<4>.exr 1"},
        {"back\\slash.1.x|quo\"te.1.x", "back\\slash.<1>.x 1|quo\"te.<1>.x 1"},
    });
    std::string const withNul("a\0.7.b", 6);
    EXPECT_EQ(groupFrames({withNul}).sequences.at(0).fileName(7), withNul);
}

TEST(GroupFrames, AssignsFramesToPaddings) {
    checkFolders({
        {"f.8.png|f.9.png|f.10.png|f.11.png", "f.<1>.png 8..11"},
        {"sim.0998.bgeo|sim.0999.bgeo|sim.1000.bgeo", "sim.<4>.bgeo 998..1000"},
        {"sim.9999.vdb|sim.10000.vdb|sim.0001.vdb", "sim.<4>.vdb 1 9999..10000"},
        {"cam.9999.jpg|cam.10000.jpg", "cam.<4>.jpg 9999..10000"},
        {"p.1.tif|p.01.tif|p.001.tif", "p.<1>.tif 1|p.<2>.tif 1|p.<3>.tif 1"},
        {"p.5.tif|p.010.tif|p.100.tif|p.0100.tif", "p.<1>.tif 5|p.<3>.tif 10 100|p.<4>.tif 100"},
        {"part12.raw|part012.raw", "part<2>.raw 12|part<3>.raw 12"},
        {"part01.raw|part2.raw|part10.raw", "part<1>.raw 2|part<2>.raw 1 10"},
        {"s.099.a|s.100.a|s.0099.a|s.1000.a", "s.<3>.a 99..100|s.<4>.a 99 1000"},
        {"s.00.a|s.7.a|s.77.a|s.777.a", "s.<1>.a 7|s.<2>.a 0 77 777"},
        {"c.0.ass|c.1.ass", "c.<1>.ass 0..1"},
        {"c.0.ass|c.0000.ass|c.1000.ass", "c.<1>.ass 0|c.<4>.ass 0 1000"},
        {"c.12.ass|c.123.ass|c.01234.ass", "c.<2>.ass 12 123|c.<5>.ass 1234"},
        {"c.000.ass|c.00.ass|c.0.ass", "c.<1>.ass 0|c.<2>.ass 0|c.<3>.ass 0"},
    });
}

TEST(GroupFrames, FindsGaps) {
    checkFolders({
        {"beauty.1001.exr|beauty.1002.exr|beauty.1005.exr|beauty.1009.exr",
         "beauty.<4>.exr 1001..1002 1005 1009"},
        {"shot-010.mov|shot-020.mov", "shot-<3>.mov 10 20"},
        {"f.1|f.3|f.5", "f.<1> 1 3 5"},
        {"f.0000.x|f.9999.x", "f.<4>.x 0 9999"},
    });
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
    char const* const slap = "slap.-0002.abc|slap.-0001.abc|slap.0000.abc|slap.0001.abc";
    checkFolders({
        {slap, "slap.<4>.abc 0..1|slap.-<4>.abc 1..2"},
        {"-1.a", "-<1>.a 1"},
    });
    FrameScanOptions const negative = with(true, false);
    checkFolders(
        {
            {slap, "slap.<4>.abc 0..1|slap.<5>.abc -2..-1"},
            {"slap.-002.abc|slap.-001.abc|slap.0000.abc|slap.0001.abc", "slap.<4>.abc -2..1"},
            {"fluid_-0003.bin|fluid_00001.bin", "fluid_<5>.bin -3 1"},
            {"fluid-0003.bin", "fluid-<4>.bin 3"},
            {"-5.a|-4.a|3.a", "<1>.a -5..-4 3"},
            {"-5|-4|7", "<1> -5..-4 7"},
            {"a.-0.b|a.-00.b|a.0.b", "a.<1>.b 0|a.-<1>.b 0|a.-<2>.b 0"},
            {"a.--1.b", "a.--<1>.b 1"},
            {"take 1 -5.a|take-5.a", "take 1 -<1>.a 5|take-<1>.a 5"},
            {"fluid.bin.-0003", "? fluid.bin.-0003"}, // the last piece is not all digits
            {"a_-12.x|a_-9.x|a_10.x|a_-100.x", "a_<2>.x -100 -12 -9 10"},
            {"a.-10.x|a.-09.x|a.5.x", "a.<1>.x 5|a.<3>.x -10..-9"},
            {"a.-123456789012345678.x", "a.<19>.x -123456789012345678"},
            {"a.-1234567890123456789.x", "? a.-1234567890123456789.x"},
        },
        negative);
}

TEST(GroupFrames, LeavesVersionsInNamesOnRequest) {
    checkFolders(
        {
            {"smoke_v1.vdb|smoke_v2.vdb", "? smoke_v1.vdb|? smoke_v2.vdb"},
            {"comp_v003.0101.dpx|comp_v003.0102.dpx", "comp_v003.<4>.dpx 101..102"},
            {"v2.exr|V3.exr|v4", "? V3.exr|? v2.exr|? v4"},
            {"mov2.exr|mov3.exr", "mov<1>.exr 2..3"},
            {"rev2.txt|shot010v2.exr", "rev<1>.txt 2|? shot010v2.exr"},
            {"smoke.v2.vdb|smoke v 2.vdb", "smoke v <1>.vdb 2|? smoke.v2.vdb"},
            {"scene.v.0001|scene.v2", "scene.v.<4> 1|? scene.v2"},
            {"\u00e9v2.exr", "? \u00e9v2.exr"}, // letters are those of ASCII
        },
        with(false, true));
    checkFolders({{"a_v-5.x|a_-5.x", "a_<2>.x -5|a_v-<1>.x 5"}}, with(true, true));
}

TEST(GroupFrames, TakesCompoundExtensionsWhole) {
    checkFolders(
        {
            {"fluid.0001.tar.gz|fluid.0002.tar.gz", "fluid.<4>.tar.gz 1..2"},
            {"fluid0001.bgeo.sc|fluid0002.bgeo.sc", "fluid<4>.bgeo.sc 1..2"},
            {"0001.tar.gz", "<4>.tar.gz 1"},
            {"0001.gz|5.TAR.GZ", "<4>.gz 1|? 5.TAR.GZ"},
            {"tar.gz|x1tar.gz|.tar.gz|1.tar2.gz", "1.tar<1>.gz 2|? .tar.gz|? tar.gz|? x1tar.gz"},
            {"fluid.tar.gz.0001", "fluid.tar.gz.<4> 1"},
            {"a2.b1.tar.gz", "a2.b<1>.tar.gz 1"},
        },
        with(false, false, {"gz", "tar.gz", "", "bgeo.sc"}));
    checkFolders({{"a1.b2.c", "a<1>.b2.c 1"}}, with(false, false, {"b2.c", "c"}));
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

    options.progress = [](std::size_t) -> bool { throw std::runtime_error("enough"); };
    TempDir disk;
    for (int i = 0; i < 1000; ++i) disk.touch("f." + std::to_string(i) + ".exr");
    AllocationCounter allocations;
    EXPECT_THROW((void)scanFrames(disk.path(""), options), std::runtime_error);
    EXPECT_THROW((void)groupFrames(names, options), std::runtime_error);
    EXPECT_EQ(allocations.alive(), 0);
}

TEST(GroupFrames, LeaksNothingWhenMemoryRunsOut) {
    Names const names = {"a long name that is on the heap.0001.exr", "b.1.x", "b.2.x", "b.4.x",
                         "another long name without a frame.txt"};
    AllocationCounter allocations;
    EXPECT_GT(failEveryAllocation([&] { (void)groupFrames(names); }), 10);
    EXPECT_EQ(allocations.alive(), 0);
}

namespace {

/// The same answer by regular expressions and by comparing everything with everything.
class NaiveGrouping {
public:
    NaiveGrouping(Names const& names, FrameScanOptions const& options) {
        for (std::string const& name : names) add(name, options);
    }

    std::string text() {
        std::map<std::tuple<std::string, std::string, std::size_t>, std::set<long long>> sequences;
        for (auto const& [key, frames] : frames_)
            for (std::string const& frame : frames)
                sequences[{key.first, key.second, paddingOf(frame, frames)}].insert(std::stoll(frame));
        std::string text;
        for (auto const& [key, frames] : sequences) {
            auto const& [head, tail, padding] = key;
            text += head + '<' + std::to_string(padding) + '>' + tail;
            for (auto at = frames.begin(); at != frames.end();) {
                auto end = at;
                long long last = *at;
                while (++end != frames.end() && *end == last + 1) ++last;
                text += ' ' + std::to_string(*at) + (last != *at ? ".." + std::to_string(last) : "");
                at = end;
            }
            text += '|';
        }
        for (std::string const& name : others_) text += "? " + name + '|';
        if (!text.empty()) text.pop_back();
        return text;
    }

private:
    void add(std::string const& name, FrameScanOptions const& options) {
        bool const tar = !options.compoundExtensions.empty() && matches(name, ".+\\.tar\\.gz");
        char const* const beforeExtension =
            tar ? "(|.*[^0-9])([0-9]+)(\\.tar\\.gz)" : "(|.*[^0-9])([0-9]+)(\\.[^.]*)";
        Names parts;
        bool const found = !matches(name, "|\\..*") && (matches(name, "(.+\\.)([0-9]+)", &parts) ||
                                                        matches(name, beforeExtension, &parts) ||
                                                        matches(name, "(|[^.]*[^.0-9])([0-9]+)", &parts));
        parts.resize(3);
        std::string& head = parts[0];
        std::string& frame = parts[1];
        if (!found || frame.size() > 18 ||
            (options.versionsAreNames && matches(head, "(|.*[^A-Za-z])[vV]"))) {
            others_.insert(name);
            return;
        }
        if (options.negativeFrames && matches(head, "(|.*[._])-") && !matches(frame, "0+")) {
            head.pop_back();
            frame = '-' + frame;
        }
        frames_[{head, parts[2]}].insert(frame);
    }

    static bool matches(std::string const& text, std::string const& pattern, Names* groups = nullptr) {
        regex_t compiled;
        EXPECT_EQ(regcomp(&compiled, ("^(" + pattern + ")$").c_str(), REG_EXTENDED), 0);
        std::array<regmatch_t, 6> found;
        bool const matched = regexec(&compiled, text.c_str(), found.size(), found.data(), 0) == 0;
        regfree(&compiled);
        if (matched && groups != nullptr)
            for (std::size_t i = 2; i < found.size() && found[i].rm_so >= 0; ++i)
                groups->push_back(text.substr(static_cast<std::size_t>(found[i].rm_so),
                                              static_cast<std::size_t>(found[i].rm_eo - found[i].rm_so)));
        return matched;
    }

    static bool fixesPadding(std::string const& frame) { return matches(frame, "-?0[0-9]+"); }

    static std::size_t paddingOf(std::string const& frame, std::set<std::string> const& all) {
        auto const fixedFor = [&](std::string const& one) {
            std::size_t widest = 0;
            for (std::string const& other : all)
                if (fixesPadding(other) && other.size() <= one.size())
                    widest = std::max(widest, other.size());
            return widest;
        };
        if (std::size_t const fixed = fixedFor(frame)) return fixed;
        std::size_t least = frame.size();
        for (std::string const& other : all)
            if (fixedFor(other) == 0) least = std::min(least, other.size());
        return least;
    }

    std::map<std::pair<std::string, std::string>, std::set<std::string>> frames_;
    std::multiset<std::string> others_;
};

} // namespace

TEST(GroupFrames, AgreesWithANaiveVersionOnRandomNames) {
    std::mt19937 random(20261121);
    auto const below = [&](std::size_t count) { return static_cast<std::size_t>(random() % count); };
    Names const pieces = {"a", "v", "V",  "_", "-",       ".",        ".",    "0",
                          "0", "1", "10", "9", ".tar.gz", "99999999", "\xc3", ".exr"};
    for (int round = 0; round < 600; ++round) {
        Names names(1 + below(30));
        std::string const common = below(2) == 0 ? "" : "a.";
        for (std::string& name : names) {
            name = common;
            for (std::size_t i = below(6); i != 0; --i) name += pieces[below(pieces.size())];
        }
        FrameScanOptions const options =
            with(below(2) == 0, below(2) == 0, below(2) == 0 ? Names{} : Names{"tar.gz"});
        FrameScan const scan = groupFrames(names, options);
        ASSERT_EQ(textOf(scan), NaiveGrouping(names, options).text()) << "round " << round;
        for (FrameSequence const& sequence : scan.sequences)
            ASSERT_EQ(sequence.count() != 0 && !sequence.ranges.empty(), true);
        std::set<std::string> const given(names.begin(), names.end());
        for (FrameSequence const& sequence : scan.sequences)
            for (FrameRange const& range : sequence.ranges)
                for (long long const frame : {range.first, range.last})
                    ASSERT_EQ(given.count(sequence.fileName(frame)), 1u) << sequence.fileName(frame);
    }
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
