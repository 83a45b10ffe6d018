// Medians: runs what is registered with Google Benchmark in shuffled turns, so that a busy machine slows all alike,
// and gathers the median processor times by row and by who ran it.
//     benchmark::RegisterBenchmark("slerp/ours", ...);
//     for (auto const& [row, medians] : runForMedians(argc, argv)) medians.at("ours");     // nanoseconds
// Google Benchmark's own options may be given on the command line and hold: --benchmark_filter=slerp,
// --benchmark_repetitions=31, --benchmark_min_time=0.02.
#ifndef MRCOMMON_BENCHMARKS_MEDIANS_H
#define MRCOMMON_BENCHMARKS_MEDIANS_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

using Medians = std::map<std::string, double>;

class MedianReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(Context const&) override { return true; }
    void ReportRuns(std::vector<Run> const& runs) override {
        for (Run const& run : runs) {
            if (run.aggregate_name != "median") continue;
            std::string const name = run.run_name.function_name;
            std::size_t const cut = name.rfind('/');
            rows[name.substr(0, cut)][name.substr(cut + 1)] = run.GetAdjustedCPUTime();
        }
    }

    std::map<std::string, Medians> rows;
};

inline std::map<std::string, Medians> runForMedians(int argc, char** argv) {
    std::vector<std::string> words = {argv[0], "--benchmark_enable_random_interleaving=true",
                                      "--benchmark_repetitions=31", "--benchmark_min_time=0.005"};
    words.insert(words.end(), argv + 1, argv + argc);
    int count = static_cast<int>(words.size());
    std::vector<char*> arguments(words.size() + 1, nullptr);
    for (std::size_t i = 0; i < words.size(); ++i) arguments[i] = words[i].data();
    benchmark::Initialize(&count, arguments.data());
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.rows;
}

#endif
