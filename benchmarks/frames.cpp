// Reading a folder of frames and finding the range of one sequence, compared with programs that use the standard
// library's directory iterator.
#include "Comparison.h"

#include <MRCommon/frames/FileNameStitcher.h>
#include <MRCommon/frames/FrameSequence.h>

#include <dirent.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <list>
#include <map>
#include <random>
#include <regex>
#include <string>

namespace fs = std::filesystem;
using quarn::FrameScan;
using quarn::FrameSequence;

namespace quarn {

static std::string shown(FrameScan const& scan) {
    std::string text;
    for (FrameSequence const& sequence : scan.sequences) {
        text += sequence.head + '#' + sequence.tail + ' ' + std::to_string(sequence.padding);
        for (FrameRange const& range : sequence.ranges)
            text += ' ' + std::to_string(range.first) + '-' + std::to_string(range.last);
        text += '\n';
    }
    for (std::string const& name : scan.others) text += name + '\n';
    return text;
}

} // namespace quarn

namespace {

std::string nameOf(std::string const& what, int frame) {
    std::string const number = std::to_string(frame);
    return what + '.' + std::string(6 - number.size(), '0') + number + ".exr";
}

/// Returns the names of two sequences of one padding with a gap in each, and one name without a frame.
std::vector<std::string> mixedNames(int files) {
    std::vector<std::string> names = {"notes.txt"};
    for (int i = 1; i < files; ++i)
        names.push_back(nameOf(i % 2 == 0 ? "fluid" : "foam", i / 2 + (i > files / 2 ? 1 : 0)));
    return names;
}

/// Returns the names of the frames from 0 on.
std::vector<std::string> sequenceNames(int files) {
    std::vector<std::string> names;
    for (int frame = 0; frame < files; ++frame) names.push_back(nameOf("fluid", frame));
    return names;
}

/// A temporary folder of empty files.
class FolderOfFrames {
public:
    explicit FolderOfFrames(std::vector<std::string> const& names)
        : path_(fs::temp_directory_path() / ("mrcommon-frames-" + std::to_string(std::random_device()()))) {
        fs::create_directory(path_);
        for (std::string const& name : names) std::ofstream(path_ / name);
    }
    ~FolderOfFrames() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    FolderOfFrames(FolderOfFrames const&) = delete;
    FolderOfFrames& operator=(FolderOfFrames const&) = delete;

    std::string path() const { return path_.string(); }

private:
    fs::path path_;
};

/// What a program does without the library: names of one padding, no versions, no minus signs.
FrameScan byRegularExpression(std::string const& folder) {
    static std::regex const pattern(R"((.*?)(\d+)(\.[^.]*))");
    struct Found {
        std::size_t padding;
        std::vector<long long> frames;
    };
    std::map<std::pair<std::string, std::string>, Found> found;
    FrameScan scan;
    for (fs::directory_entry const& entry : fs::directory_iterator(folder)) {
        std::string const name = entry.path().filename().string();
        std::smatch match;
        if (entry.is_directory()) continue;
        if (!std::regex_match(name, match, pattern)) {
            scan.others.push_back(name);
            continue;
        }
        std::string const digits = match.str(2);
        Found& sequence = found[{match.str(1), match.str(3)}];
        sequence.padding = digits.size();
        sequence.frames.push_back(std::stoll(digits));
    }
    std::sort(scan.others.begin(), scan.others.end());
    for (auto& [key, sequence] : found) {
        std::vector<long long>& frames = sequence.frames;
        std::sort(frames.begin(), frames.end());
        FrameSequence result;
        result.head = key.first;
        result.tail = key.second;
        result.padding = static_cast<unsigned int>(sequence.padding);
        for (long long const frame : frames)
            if (result.ranges.empty() || frame != result.ranges.back().last + 1)
                result.ranges.push_back({frame, frame});
            else
                result.ranges.back().last = frame;
        scan.sequences.push_back(std::move(result));
    }
    return scan;
}

unsigned long bothOf(unsigned int first, unsigned int last) { return first * 1000000ul + last; }

unsigned long rangeByStitcher(std::string const& folder, int known) {
    unsigned int first = 0, last = 0, padding = 0;
    FrameExtensionOrder order{};
    FileNameStitcher::frameExtensionFromPath((folder + '/' + nameOf("fluid", known)).c_str(), first, last,
                                             padding, order);
    return bothOf(first, last);
}

/// What a program does without the library: reads the whole folder, sorts the frames and looks around the known one.
unsigned long rangeByWalk(std::string const& folder, int known) {
    std::string const path = nameOf("fluid", known);
    std::string const head = path.substr(0, 6), tail = path.substr(12);
    std::vector<unsigned int> frames;
    for (fs::directory_entry const& entry : fs::directory_iterator(folder)) {
        std::string const name = entry.path().filename().string();
        if (name.size() != path.size() || name.compare(0, 6, head) != 0 || name.compare(12, 4, tail) != 0)
            continue;
        unsigned int frame = 0;
        char const* const end = name.data() + 12;
        if (std::from_chars(name.data() + 6, end, frame).ptr == end) frames.push_back(frame);
    }
    std::sort(frames.begin(), frames.end());
    auto const at = std::lower_bound(frames.begin(), frames.end(), static_cast<unsigned int>(known));
    auto first = at, last = at;
    while (first != frames.begin() && *(first - 1) == *first - 1) --first;
    while (last + 1 != frames.end() && *(last + 1) == *last + 1) ++last;
    return bothOf(*first, *last);
}

/// Times what any program has to do: it asks the system for the names and does nothing with them.
void addFloor(std::string const& row, std::string const& folder, int files) {
    Report::add(row, "floor", static_cast<std::size_t>(files), [folder](benchmark::State& state) {
        for (auto _ : state) {
            DIR* const stream = opendir(folder.c_str());
            while (readdir(stream) != nullptr) {
            }
            closedir(stream);
        }
    });
}

void range(std::string const& row, std::string const& folder, int known) {
    Comparison(row, [=] { return rangeByStitcher(folder, known); }).against("std_walk", [=] {
        return rangeByWalk(folder, known);
    });
}

} // namespace

int main(int argc, char** argv) {
    std::list<FolderOfFrames> folders;
    for (int const files : {1000, 10000, 100000}) {
        std::string const size = std::to_string(files);
        std::string const mixed = folders.emplace_back(mixedNames(files)).path();
        Comparison(
            "scan_folder_" + size, [mixed] { return quarn::scanFrames(mixed); },
            static_cast<std::size_t>(files))
            .against("std_regex", [mixed] { return byRegularExpression(mixed); });
        addFloor("scan_folder_" + size, mixed, files);
        std::string const sequence = folders.emplace_back(sequenceNames(files)).path();
        range("range_middle_" + size, sequence, files / 2);
        range("range_end_" + size, sequence, files - 1);
    }
    return Report::run("frames", argc, argv);
}
