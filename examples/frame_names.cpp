// Frame names both ways: the files of a folder as the four layouts name them, and how each name is parsed.
#include <MRCommon/frames/FileNameStitcher.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace fs = std::filesystem;

namespace {

struct Row {
    char const *file, *name, *ext;
    unsigned int padding, first, last;
    FrameExtensionOrder order;
};

// clang-format off
constexpr Row rows[] = {
    {"fluid.00012.bin",      "fluid",            "bin",  5, 11, 13, FRAME_ORDER_NAME_DOT_FRAME_DOT_EXT},
    {"fluid.bin.00012",      "fluid",            "bin",  5, 11, 13, FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME},
    {"fluid00012.bin",       "fluid",            "bin",  5, 11, 13, FRAME_ORDER_NAME_FRAME_DOT_EXT},
    {"fluid_00012.bin",      "fluid",            "bin",  5, 11, 13, FRAME_ORDER_NAME_UNDERSCORE_FRAME_DOT_EXT},
    {"take_7.bin",           "take",             "bin",  1,  7,  7, FRAME_ORDER_NAME_UNDERSCORE_FRAME_DOT_EXT},
    {"smoke_v2.vdb",         "smoke_v2",         "vdb",  0,  0,  0, FRAME_ORDER_NAME_FRAME_DOT_EXT},
    {"fire_v1.vdb",          "fire_v",           "vdb",  1,  1,  2, FRAME_ORDER_NAME_FRAME_DOT_EXT},
    {"fire_v2.vdb",          "fire_v",           "vdb",  1,  1,  2, FRAME_ORDER_NAME_FRAME_DOT_EXT},
    {"mesh.0000.obj",        "mesh",             "obj",  4,  0,  0, FRAME_ORDER_NAME_DOT_FRAME_DOT_EXT},
    {"mesh.obj.0000",        "mesh",             "obj",  4,  0,  0, FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME},
    {"mesh.007.3ds",         "mesh",             "007",  3,  3,  2, FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME},
    {"chalk.x.+7",           "chalk",            "x",    2,  7,  6, FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME},
    {"ice-0003.x",           "ice-0003",         "x",    0,  0,  0, FRAME_ORDER_NAME_FRAME_DOT_EXT},
    {"ice.x.-0003",          "ice",              "x",    5, 4294967293u, 4294967293u, FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME},
    {"part120000000007.raw", "part12",           "raw", 10,  7,  8, FRAME_ORDER_NAME_FRAME_DOT_EXT},
    {"part120000000008.raw", "part12",           "raw", 10,  7,  8, FRAME_ORDER_NAME_FRAME_DOT_EXT},
    {"scan202611210007.raw", "scan202611210007", "raw",  0,  0,  0, FRAME_ORDER_NAME_FRAME_DOT_EXT},
    {"notes.txt",            "notes",            "txt",  0,  0,  0, FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME},
};
// clang-format on

void touch(fs::path const& path) { std::ofstream const file(path); }

void fill(fs::path const& folder) {
    FileNameStitcher& stitcher = FileNameStitcher::instance();
    stitcher.prefix = folder.string() + "/";
    for (Row const& row : rows) {
        touch(folder / row.file);
        stitcher.order = row.order;
        for (int const frame : {11, 13}) // the neighbours of frame 12
            if (row.first == 11) touch(stitcher.doIt(row.name, frame, row.ext));
    }
}

bool holds(Row const& row, fs::path const& folder) {
    quarn::QN_String name, ext;
    unsigned int first, last, padding;
    FrameExtensionOrder order;
    std::string const path = (folder / row.file).string();
    if (!FileNameStitcher::frameExtensionFromPath(path.c_str(), name, ext, first, last, padding, order))
        return false;
    std::string const bare = fs::path(name.c_str()).filename().string();
    std::printf("%-22s %-18s %-4s %2u digits %3u..%-3u layout %d\n", row.file, bare.c_str(), ext.c_str(),
                padding, first, last, order);
    return bare == row.name && ext == row.ext && padding == row.padding && first == row.first &&
           last == row.last && order == row.order;
}

} // namespace

int main() {
    fs::path const folder =
        fs::temp_directory_path() / ("frame_names" + std::to_string(std::random_device()()));
    fs::create_directories(folder);
    fill(folder);
    int wrong = 0;
    for (Row const& row : rows) wrong += holds(row, folder) ? 0 : 1;
    fs::remove_all(folder);
    return wrong;
}
