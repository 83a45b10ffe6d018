// Contest: times one piece of work done by several libraries, after checking that they agree on the result.
//     Contest("replace_all", [&] { return StringTools::replace_all(text, "a", "b"); })
//         .against("Abseil", [&] { return absl::StrReplaceAll(text, {{"a", "b"}}); });
//     int main(int argc, char** argv) { return runContests(argc, argv); }
// The report ends with how long every peer takes in units of our own time: above 1 we are ahead.
#ifndef MRCOMMON_BENCHMARKS_CONTEST_H
#define MRCOMMON_BENCHMARKS_CONTEST_H

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
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

/// The usual report, then the ratios of the shortest processor times, which other programs disturb least.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(std::vector<Run> const& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (Run const& run : runs) {
            if (run.run_type != Run::RT_Iteration) continue;
            std::string const name = run.benchmark_name();
            std::size_t const slash = name.find('/');
            note(name.substr(0, slash), name.substr(slash + 1), run.GetAdjustedCPUTime());
        }
    }

    void Finalize() override {
        ConsoleReporter::Finalize();
        for (auto const& [what, times] : contests_) {
            std::printf("%-20s", what.c_str());
            for (auto const& [who, time] : times)
                std::printf("  %s %.2f", who.c_str(), time / times.front().second);
            std::printf("\n");
        }
    }

private:
    using Times = std::vector<std::pair<std::string, double>>;

    void note(std::string const& what, std::string const& who, double time) {
        Times& times = contests_[what];
        auto const same = [&](auto const& entry) { return entry.first == who; };
        auto const entry = std::find_if(times.begin(), times.end(), same);
        if (entry == times.end())
            times.emplace_back(who, time);
        else
            entry->second = std::min(entry->second, time);
    }

    std::map<std::string, Times> contests_;
};

inline int runContests(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}

#endif
