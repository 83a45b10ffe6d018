// One folder read twice: what the stitcher says about each of its files, and what scanFrames() says about all.
//     frame_sequences             in a temporary folder
//     frame_sequences cache       in a new folder of this name, which is kept
#include <MRCommon/frames/FileNameStitcher.h>
#include <MRCommon/frames/FrameSequence.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr char const* files[] = {"cam.8.jpg",      "cam.9.jpg",      "cam.10.jpg",     "fluid.0001.exr",
                                 "fluid.0002.exr", "fluid.0003.exr", "fluid.0005.exr", "fluid.0006.exr",
                                 "notes.txt",      "slap_-0001.abc", "slap_00000.abc", "slap_00001.abc",
                                 "smoke_v2.vdb",   "smoke_v3.vdb"};

void printStitched(fs::path const& folder, char const* file) {
    quarn::QN_String name, ext;
    unsigned int first = 0, last = 0, padding = 0;
    FrameExtensionOrder order{};
    std::string const path = (folder / file).string();
    FileNameStitcher::frameExtensionFromPath(path.c_str(), name, ext, first, last, padding, order);
    std::string const bare = fs::path(name.c_str()).filename().string();
    std::printf("%-15s name %-12s padding %u  frames %u..%u\n", file, bare.c_str(), padding, first, last);
}

void printRanges(char const* what, std::vector<quarn::FrameRange> const& ranges) {
    std::printf("  %s", what);
    for (quarn::FrameRange const& range : ranges) std::printf(" %lld..%lld", range.first, range.last);
}

void printScan(fs::path const& folder, quarn::FrameScanOptions const& options) {
    quarn::FrameScan const scan = quarn::scanFrames(folder.string(), options);
    for (quarn::FrameSequence const& sequence : scan.sequences) {
        std::printf("%s*%s  padding %u", sequence.head.c_str(), sequence.tail.c_str(), sequence.padding);
        printRanges("frames", sequence.ranges);
        if (sequence.ranges.size() > 1) printRanges("missing", sequence.missing());
        std::printf("\n");
    }
    for (std::string const& name : scan.others) std::printf("%s has no frame\n", name.c_str());
}

} // namespace

int main(int argc, char** argv) try {
    bool const keep = argc > 1;
    fs::path const folder =
        keep ? fs::path(argv[1])
             : fs::temp_directory_path() / ("mrcommon-sequences-" + std::to_string(std::random_device()()));
    if (!fs::create_directory(folder)) {
        std::fprintf(stderr, "%s: is already there\n", folder.c_str());
        return 1;
    }
    for (char const* const file : files) std::ofstream const created(folder / file);

    std::printf("frameExtensionFromPath\n");
    for (char const* const file : files) printStitched(folder, file);
    std::printf("\nscanFrames\n");
    printScan(folder, {});
    std::printf("\nscanFrames with negativeFrames and versionsAreNames\n");
    quarn::FrameScanOptions options;
    options.negativeFrames = true;
    options.versionsAreNames = true;
    printScan(folder, options);
    if (!keep) fs::remove_all(folder);
} catch (std::exception const& exception) {
    std::fprintf(stderr, "%s\n", exception.what());
    return 1;
}
