// mrcommon-frames: lists the sequences of frames in folders, and what is wrong with them.
//     mrcommon-frames /cache/shot
//     fluid.####.exr  1-3 5-6  (missing 4)
//     take_#.bin  7
// docs/man/mrcommon-frames.1 describes the options.
#include <MRCommon/frames/FrameSequence.h>

#include "CommandLine.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

using namespace quarn;
using Json = nlohmann::ordered_json;

namespace {

struct Request {
    std::vector<std::string> folders;
    FrameScanOptions scan;
    bool json = false;
    bool missing = false;
    bool check = false;
    bool others = false;
};

constexpr char const* standardInput = "-";

std::string textOf(std::vector<FrameRange> const& ranges) {
    std::string text;
    for (FrameRange const& range : ranges) {
        if (!text.empty()) text += ' ';
        text += std::to_string(range.first);
        if (range.last != range.first) text += '-' + std::to_string(range.last);
    }
    return text;
}

Json jsonOf(std::vector<FrameRange> const& ranges) {
    Json list = Json::array();
    for (FrameRange const& range : ranges) list.push_back({range.first, range.last});
    return list;
}

std::string systemReason() { return std::generic_category().message(errno); }

/// Throws, as scanFrames() does, if the standard input cannot be read to its end.
std::vector<std::string> namesOnStandardInput() {
    struct Free {
        void operator()(char* line) const { std::free(line); }
    };
    std::unique_ptr<char, Free> buffer;
    std::size_t room = 0;
    std::vector<std::string> names;
    for (;;) {
        char* line = buffer.release();
        ssize_t size = getline(&line, &room, stdin);
        buffer.reset(line);
        CommandLine::endIfInterrupted();
        if (size < 0) break;
        if (line[size - 1] == '\n') --size;
        if (size != 0) names.emplace_back(line, static_cast<std::size_t>(size));
    }
    if (std::feof(stdin) != 0) return names;
    std::error_code const reason(errno, std::generic_category());
    throw std::filesystem::filesystem_error("cannot read names", standardInput, reason);
}

/// A file of a sequence as the disk knows it.
struct FrameFile {
    std::string name;
    unsigned long long size;
};

/// The nearest files of a sequence on both sides; at an end, the two next to it.
std::vector<unsigned long long> sizesBeside(std::vector<FrameFile> const& files, std::size_t i) {
    std::size_t const count = files.size();
    std::size_t const begin =
        std::min(i - std::min<std::size_t>(i, 1), count - std::min<std::size_t>(count, 3));
    std::size_t const end = std::min(begin + 3, count);
    std::vector<unsigned long long> sizes;
    for (std::size_t k = begin; k < end; ++k)
        if (k != i) sizes.push_back(files[k].size);
    return sizes;
}

/// Whether a size is ten times as large as all of its neighbours', or a tenth.
bool standsOut(unsigned long long size, std::vector<unsigned long long> const& beside) {
    constexpr unsigned long long factor = 10;
    if (beside.empty()) return false;
    auto const [least, largest] = std::minmax_element(beside.begin(), beside.end());
    return size / factor >= *largest || *least / factor >= size;
}

class Listing {
public:
    Listing(Request const& request, CommandLine& program) : request_(request), program_(program) {}

    void list(std::string const& folder) {
        FrameScan const scan = scanOf(folder);
        bool const checkOnly = request_.check && !request_.missing;
        for (FrameSequence const& sequence : scan.sequences) {
            bool const hasGaps = sequence.ranges.size() > 1;
            if (request_.missing && hasGaps) program_.fail();
            if (!checkOnly && (hasGaps || !request_.missing)) print(folder, sequence);
            if (request_.check) check(folder, sequence);
        }
        if (request_.others)
            for (std::string const& name : scan.others) printOther(folder, name);
    }

private:
    FrameScan scanOf(std::string const& folder) {
        FrameScanOptions options = request_.scan;
        options.progress = [&](std::size_t names) {
            showCount(folder, names, "names");
            return true;
        };
        FrameScan scan = folder == standardInput ? groupFrames(namesOnStandardInput(), options)
                                                 : scanFrames(folder, options);
        CommandLine::endIfInterrupted();
        return scan;
    }

    void showCount(std::string const& folder, std::size_t count, char const* what) {
        CommandLine::endIfInterrupted();
        if (count % 1000 == 0)
            program_.showProgress(printable(folder) + ": " + std::to_string(count) + ' ' + what);
    }

    /// The path of a name in a folder, for people; without the folder if there is one folder only.
    std::string shown(std::string const& folder, std::string const& name) const {
        bool const clear = request_.folders.size() == 1 || folder == standardInput;
        return printable(clear ? name : pathOf(folder, name));
    }

    static std::string pathOf(std::string const& folder, std::string const& name) {
        return folder == standardInput ? name : (std::filesystem::path(folder) / name).string();
    }

    void print(std::string const& folder, FrameSequence const& sequence) {
        std::vector<FrameRange> const missing = sequence.missing();
        if (request_.json) {
            program_.printJson({{"folder", folder},
                                {"head", sequence.head},
                                {"tail", sequence.tail},
                                {"padding", sequence.padding},
                                {"first", sequence.first()},
                                {"last", sequence.last()},
                                {"count", sequence.count()},
                                {"ranges", jsonOf(sequence.ranges)},
                                {"missing", jsonOf(missing)}});
            return;
        }
        std::string const frame(sequence.padding, '#');
        std::string line =
            shown(folder, sequence.head + frame + sequence.tail) + "  " + textOf(sequence.ranges);
        if (!missing.empty()) line += "  (missing " + textOf(missing) + ")";
        program_.print(line);
    }

    void printOther(std::string const& folder, std::string const& name) {
        if (request_.json)
            program_.printJson({{"folder", folder}, {"other", name}});
        else
            program_.print(shown(folder, name));
    }

    /// Reports empty files, and among the others those whose size stands out.
    void check(std::string const& folder, FrameSequence const& sequence) {
        std::size_t checked = 0;
        std::vector<FrameFile> filled;
        for (FrameRange const& range : sequence.ranges)
            for (long long frame = range.first; frame <= range.last; ++frame) {
                showCount(folder, ++checked, "files");
                std::string name = sequence.fileName(frame);
                std::optional<unsigned long long> const size = sizeOf(pathOf(folder, name));
                if (size && *size == 0)
                    printFault(folder, {name, 0}, {});
                else if (size)
                    filled.push_back({std::move(name), *size});
            }
        for (std::size_t i = 0; i < filled.size(); ++i) {
            std::vector<unsigned long long> const beside = sizesBeside(filled, i);
            if (standsOut(filled[i].size, beside)) printFault(folder, filled[i], beside);
        }
    }

    /// Returns nothing, after a message, if the file cannot be asked.
    std::optional<unsigned long long> sizeOf(std::string const& path) {
        struct stat status = {};
        if (stat(path.c_str(), &status) == 0) return static_cast<unsigned long long>(status.st_size);
        program_.complain(path, systemReason());
        return std::nullopt;
    }

    /// An empty list of sizes beside it stands for an empty file.
    void printFault(std::string const& folder, FrameFile const& file,
                    std::vector<unsigned long long> const& beside) {
        program_.fail();
        if (request_.json) {
            program_.printJson(
                {{"folder", folder}, {"file", file.name}, {"size", file.size}, {"beside", beside}});
            return;
        }
        std::string line = shown(folder, file.name) + "  ";
        if (beside.empty())
            line += "empty";
        else
            line += std::to_string(file.size) + " bytes beside " + std::to_string(beside.front());
        if (beside.size() > 1) line += " and " + std::to_string(beside.back());
        program_.print(line);
    }

    Request const& request_;
    CommandLine& program_;
};

void addOptions(CommandLine& program, Request& request) {
    program.addList("FOLDER", request.folders, "Folders; - reads names from the standard input, one a line")
        ->required();
    auto const flag = [&](char const* name, bool& value, char const* description) {
        program.options.add_flag(name, value, description);
    };
    flag("--json", request.json, "Print one JSON object a line");
    flag("--missing", request.missing,
         "Print only sequences with gaps; the exit status is 1 if there are any");
    flag("--check", request.check,
         "Print only files that are empty, or ten times larger or smaller than the files beside them; the "
         "exit "
         "status is 1 if there are any");
    flag("--others", request.others, "Print the names without a frame, too");
    flag("--negative", request.scan.negativeFrames, "Let a minus before the digits belong to the frame");
    flag("--versions-are-names", request.scan.versionsAreNames, "Do not take a number after a v for a frame");
    program
        .addList("--extension", request.scan.compoundExtensions,
                 "An extension with dots inside, such as tar.gz; may be repeated")
        ->type_name("EXT")
        ->allow_extra_args(false);
}

} // namespace

int main(int argc, char** argv) {
    CommandLine program("mrcommon-frames", "Lists the sequences of frames in folders.");
    Request request;
    addOptions(program, request);
    return program.run(argc, argv, [&] {
        Listing listing(request, program);
        for (std::string const& folder : request.folders) {
            try {
                listing.list(folder);
            } catch (std::filesystem::filesystem_error const& error) {
                program.complain(folder, error.code().message());
            }
        }
    });
}
