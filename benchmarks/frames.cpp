// Reading a folder of frames, beside the standard library's directory iterator with a regular expression.
#include "Comparison.h"

#include <MRCommon/frames/FrameSequence.h>

#include <algorithm>
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

/// A temporary folder of empty files: two sequences of one padding with a gap in each, and one name without a frame.
class FolderOfFrames {
public:
    explicit FolderOfFrames(int files)
        : path_(fs::temp_directory_path() / ("mrcommon-frames-" + std::to_string(std::random_device()()))) {
        fs::create_directory(path_);
        touch("notes.txt");
        for (int i = 1; i < files; ++i)
            touch(nameOf(i % 2 == 0 ? "fluid" : "foam", i / 2 + (i > files / 2 ? 1 : 0)));
    }
    ~FolderOfFrames() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    FolderOfFrames(FolderOfFrames const&) = delete;
    FolderOfFrames& operator=(FolderOfFrames const&) = delete;

    std::string path() const { return path_.string(); }

private:
    static std::string nameOf(char const* what, int frame) {
        std::string const number = std::to_string(frame);
        return std::string(what) + '.' + std::string(6 - number.size(), '0') + number + ".exr";
    }
    void touch(std::string const& name) const { std::ofstream(path_ / name); }

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

} // namespace

int main(int argc, char** argv) {
    std::list<FolderOfFrames> folders;
    for (int const files : {1000, 10000, 100000}) {
        std::string const path = folders.emplace_back(files).path();
        Comparison(
            "scan_folder_" + std::to_string(files), [path] { return quarn::scanFrames(path); },
            static_cast<std::size_t>(files))
            .against("std_regex", [path] { return byRegularExpression(path); });
    }
    return Report::run("frames", argc, argv);
}
