// Contest: times one piece of work done by several libraries, after checking that they agree on the result.
//     Contest("replace_all", [&] { return StringTools::replace_all(text, "a", "b"); })
//         .against("Abseil", [&] { return absl::StrReplaceAll(text, {{"a", "b"}}); });
//     int main(int argc, char** argv) { return runContests(argc, argv); }
// The report is a line a contest: our median, and how long every peer takes in units of it: above 1 we are ahead.
#ifndef MRCOMMON_BENCHMARKS_CONTEST_H
#define MRCOMMON_BENCHMARKS_CONTEST_H

#include "Medians.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// Results are compared as texts; letters count alike in both cases. Overload `shown` for other results.
inline std::string shown(std::string const& text) { return text; }
inline std::string shown(unsigned long number) { return std::to_string(number); }
inline std::string shown(std::vector<std::string> const& list) {
    std::string all;
    for (std::string const& text : list) all += text + '\n';
    return all;
}

class Contest {
public:
    template <class Work> Contest(std::string what, Work const& ours) : what_(std::move(what)) {
        expected_ = capital(shown(ours()));
        time("MRCommon", ours);
    }

    template <class Work> Contest& against(char const* peer, Work const& work) {
        if (capital(shown(work())) != expected_) {
            std::fprintf(stderr, "%s: %s gives another result\n", what_.c_str(), peer);
            std::exit(1);
        }
        time(peer, work);
        return *this;
    }

private:
    template <class Work> void time(std::string const& who, Work const& work) const {
        benchmark::RegisterBenchmark((what_ + "/" + who).c_str(), [work](benchmark::State& state) {
            for (auto _ : state) benchmark::DoNotOptimize(work());
        });
    }

    static std::string capital(std::string text) {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
        return text;
    }

    std::string what_;
    std::string expected_;
};

inline int runContests(int argc, char** argv) {
    for (auto const& [row, medians] : runForMedians(argc, argv)) {
        double const ours = medians.at("MRCommon");
        std::printf("%-16s %10.1f ns", row.c_str(), ours);
        for (auto const& [who, median] : medians)
            if (who != "MRCommon") std::printf("  %s %.2f", who.c_str(), median / ours);
        std::printf("\n");
    }
    return 0;
}

#endif
