// The programs: whatever they are given, they end with a status of their own, print whole lines that can be read, and
// say what is wrong.
//     byte 0       bit 0: mrcommon-frames instead of mrcommon-records; the other bits are options, see below
//     a piece      the kinds, or a compound extension
//     the rest     the input, a file or the standard input
#include "Input.h"
#include "support/Allocations.h"
#include "support/TempDir.h"

#include <nlohmann/json.hpp>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <sstream>
#include <vector>

int recordsMain(int argc, char** argv);
int framesMain(int argc, char** argv);

namespace {

/// Lets one of the standard descriptors refer to a file for as long as a scope lasts.
class Redirection {
public:
    Redirection(int standard, int replacement) : standard_(standard), kept_(dup(standard)) {
        require(kept_ >= 0 && dup2(replacement, standard) == standard, "a descriptor can be replaced");
    }
    ~Redirection() {
        dup2(kept_, standard_);
        close(kept_);
    }
    Redirection(Redirection const&) = delete;
    Redirection& operator=(Redirection const&) = delete;

private:
    int standard_, kept_;
};

/// A file without a name.
class OpenFile {
public:
    OpenFile() : descriptor_(memfd_create("output", 0)) { require(descriptor_ >= 0, "a file can be made"); }
    explicit OpenFile(std::string const& path) : descriptor_(open(path.c_str(), O_RDONLY)) {
        require(descriptor_ >= 0, "the input can be opened");
    }
    ~OpenFile() { close(descriptor_); }
    OpenFile(OpenFile const&) = delete;
    OpenFile& operator=(OpenFile const&) = delete;

    int descriptor() const { return descriptor_; }
    std::string bytes() const {
        std::string all(static_cast<std::size_t>(lseek(descriptor_, 0, SEEK_END)), '\0');
        require(pread(descriptor_, all.data(), all.size(), 0) == static_cast<ssize_t>(all.size()),
                "the output can be read");
        return all;
    }

private:
    int descriptor_;
};

struct Outcome {
    int status;
    std::string output, errors;
};

/// The messages are caught by exchanging the stream alone, so that reports of the sanitizers are still seen.
Outcome run(int (*program)(int, char**), std::vector<std::string> arguments, std::string const& input) {
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    char* messages = nullptr;
    std::size_t size = 0;
    std::FILE* const previous = stderr;
    OpenFile const output, source(input);
    Outcome outcome;
    std::clearerr(stdin);
    {
        Redirection const in(STDIN_FILENO, source.descriptor()), out(STDOUT_FILENO, output.descriptor());
        std::fseek(stdin, 0, SEEK_SET); // forgets what an earlier input left in its buffer
        stderr = open_memstream(&messages, &size);
        AllocationLimit const limit(1 << 20); // whatever sizes the input claims
        outcome.status = program(static_cast<int>(arguments.size()), pointers.data());
        std::fclose(stderr);
        stderr = previous;
    }
    outcome.output = output.bytes();
    outcome.errors.assign(messages, size);
    std::free(messages);
    return outcome;
}

bool isControl(char c) { return (c >= 0 && c < 32) || c == 127; }

void requireLines(std::string const& text, bool areObjects) {
    require(text.empty() || text.back() == '\n', "lines are whole");
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (areObjects)
            require(nlohmann::json::parse(line, nullptr, false).is_object(), "a line is an object");
        else
            require(std::none_of(line.begin(), line.end(), isControl), "a line has no control characters");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Input input(data, size);
    unsigned int const flags = input.number<unsigned char>();
    std::string const list = without(input.piece(), [](char c) { return c == '\0'; });
    std::string const path = scratch().path("input");
    store(path, input.rest());

    bool const isFrames = flags % 2 != 0, isJson = flags / 2 % 2 != 0, isCheck = flags / 4 % 2 != 0;
    std::vector<std::string> arguments{isFrames ? "mrcommon-frames" : "mrcommon-records"};
    auto const option = [&](unsigned int bit, char const* name) {
        if (flags / bit % 2 != 0) arguments.emplace_back(name);
    };
    option(2, "--json");
    if (isFrames) {
        option(4, "--others");
        option(8, "--missing");
        option(16, "--negative");
        option(32, "--versions-are-names");
        if (!list.empty()) arguments.push_back("--extension=" + list);
        arguments.emplace_back("-");
    } else {
        option(4, "--check");
        option(8, "--repeat");
        option(16, "--endian");
        option(32, "--settings");
        if (flags / 64 % 2 != 0) arguments.emplace_back("--workspace=5087");
        if (!list.empty()) arguments.push_back("--kinds=" + list);
        arguments.push_back(flags / 128 % 2 != 0 ? "-" : path);
    }
    Outcome const outcome = run(isFrames ? framesMain : recordsMain, arguments, path);
    require(outcome.status >= 0 && outcome.status <= 2, "the status is good, bad input or wrong usage");
    requireLines(outcome.output, isJson);
    requireLines(outcome.errors, false);
    bool const saysWhy = isFrames && flags / 8 % 2 != 0; // the gaps that --missing lists are the reason
    require((outcome.status == 0) == outcome.errors.empty() || saysWhy, "a bad end has its reason");
    require(outcome.errors.find("mrcommon-records: out of memory") == std::string::npos &&
                outcome.errors.find("mrcommon-frames: out of memory") == std::string::npos,
            "memory is in proportion to the input");
    require(isFrames || !isCheck || outcome.output.empty(), "a check prints nothing");
    return 0;
}
