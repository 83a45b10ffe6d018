// Runs a fuzz target over the files of folders, without the engine: as they are, cut after every byte, with a bit of
// every byte changed, and damaged at random, each time in the same ways.
//     fuzz_text_replay fuzz/corpus/text
// A law that does not hold ends the program and leaves the input in the file fuzz-failed; so does a folder without files.
#include "Input.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace {

constexpr int damagedRuns = 1000; // of each file
constexpr std::size_t longest = 4096;

std::string current;

void run(std::string const& input) {
    current = input;
    LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(current.data()), current.size());
}

extern "C" void keepInput(int) {
    std::ofstream("fuzz-failed", std::ios::binary) << current;
    std::signal(SIGABRT, SIG_DFL);
    std::abort();
}

class Damage {
public:
    std::string to(std::string bytes) {
        for (std::size_t edits = 1 + below(4); edits != 0 && !bytes.empty(); --edits) edit(bytes);
        return bytes.substr(0, longest);
    }

private:
    std::size_t below(std::size_t count) { return random_() % count; }

    void edit(std::string& bytes) {
        std::size_t const at = below(bytes.size()), from = below(bytes.size());
        std::size_t const count = 1 + below(std::min<std::size_t>(bytes.size() - from, 16));
        switch (below(6)) {
        case 0: bytes[at] = static_cast<char>(below(256)); break;
        case 1: bytes[at] = static_cast<char>(below(8)); break; // numbers and sizes are small
        case 2: bytes[at] = bytes[from]; break;
        case 3: bytes.insert(at, bytes.substr(from, count)); break;
        case 4: bytes.erase(from, count); break;
        default: bytes.resize(at);
        }
    }

    std::mt19937 random_; // the same numbers everywhere
};

} // namespace

int main(int argc, char** argv) {
    std::signal(SIGABRT, keepInput);
    Damage damage;
    int files = 0;
    for (int i = 1; i < argc; ++i)
        for (auto const& entry : std::filesystem::directory_iterator(argv[i])) {
            std::printf("%s\n", entry.path().c_str());
            std::fflush(stdout);
            std::ifstream file(entry.path(), std::ios::binary);
            std::string const bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
            run(bytes);
            for (std::size_t at = 0; at < bytes.size(); ++at) {
                run(bytes.substr(0, at));
                std::string changed = bytes;
                changed[at] = static_cast<char>(changed[at] ^ 1 << at % 8);
                run(changed);
            }
            for (int round = 0; round < damagedRuns; ++round) run(damage.to(bytes));
            ++files;
        }
    return files == 0 ? 1 : 0;
}
