// Comparison: times one piece of work done by several libraries, after checking that they agree on the result.
//     Comparison("replace_all", [&] { return StringTools::replace_all(text, "a", "b"); })
//         .against("Abseil", [&] { return absl::StrReplaceAll(text, {{"a", "b"}}); });
//     int main(int argc, char** argv) { return Report::run("text", argc, argv); }
#ifndef MRCOMMON_BENCHMARKS_COMPARISON_H
#define MRCOMMON_BENCHMARKS_COMPARISON_H

#include "Report.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

/// Results are compared as texts, regardless of case. Overload `shown` for other results.
inline std::string shown(std::string const& text) { return text; }
inline std::string shown(unsigned long number) { return std::to_string(number); }
inline std::string shown(std::vector<std::string> const& list) {
    std::string all;
    for (std::string const& text : list) all += text + '\n';
    return all;
}

class Comparison {
public:
    /// `items` is how many items one call of `ours` handles: the report gives the time of one.
    template <class Work>
    Comparison(std::string row, Work const& ours, std::size_t items = 1)
        : row_(std::move(row)), items_(items) {
        expected_ = uppercase(shown(ours()));
        time("ours", ours);
    }

    /// Adds a peer. Ends the program if its result is another one.
    template <class Work> Comparison& against(char const* peer, Work const& work) {
        if (uppercase(shown(work())) != expected_) {
            std::fprintf(stderr, "%s: %s has another result\n", row_.c_str(), peer);
            std::exit(1);
        }
        time(peer, work);
        return *this;
    }

private:
    template <class Work> void time(std::string const& who, Work const& work) const {
        Report::add(row_, who, items_, [work](benchmark::State& state) {
            for (auto _ : state) benchmark::DoNotOptimize(work());
        });
    }

    static std::string uppercase(std::string text) {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
        return text;
    }

    std::string row_;
    std::size_t items_;
    std::string expected_;
};

#endif
