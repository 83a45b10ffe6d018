// Report: runs what is registered, in shuffled repetitions so that a busy machine slows all alike, and reports the medians
// of the processor times: one line a row, and optionally the same as JSON.
//     Report::add("slerp/double", "ours", 4096, [](benchmark::State& state) { ... });
//     Report::add("slerp/double", "glm", 4096, ...);
//     int main(int argc, char** argv) { return Report::run("rotations", argc, argv); }
// Every ratio is our time divided by that of the fastest peer: below 1 we are ahead. "floor" is not a peer: the same work
// written by hand for the benchmark alone.
//     bench_rotations [--json=FILE] [--benchmark_filter=slerp] [--benchmark_repetitions=31] ...
#ifndef MRCOMMON_BENCHMARKS_REPORT_H
#define MRCOMMON_BENCHMARKS_REPORT_H

#include <benchmark/benchmark.h>

#include <cstdio>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

class Report : public benchmark::BenchmarkReporter {
public:
    /// Registers one contender of a row. `work` handles `items` items in each iteration of its loop.
    template <class Work>
    static void add(std::string const& row, std::string const& who, std::size_t items, Work const& work) {
        itemsOf()[row] = items;
        benchmark::RegisterBenchmark((row + "/" + who).c_str(), work);
    }

    /// Runs everything, prints the table and returns the exit status of the program.
    static int run(std::string const& theme, int argc, char** argv);

    bool ReportContext(Context const&) override { return true; }
    void ReportRuns(std::vector<Run> const& runs) override;

private:
    using Times = std::map<std::string, double>; ///< nanoseconds an item, by contender

    static std::map<std::string, std::size_t>& itemsOf() {
        static std::map<std::string, std::size_t> items;
        return items;
    }

    static std::string fastestPeer(Times const& times);
    void print(std::string const& theme) const;
    bool writeJson(std::string const& theme, std::string const& path) const;

    std::map<std::string, Times> rows_;
};

// ---------------------------------------------------------------------------

inline void Report::ReportRuns(std::vector<Run> const& runs) {
    for (Run const& run : runs) {
        if (run.aggregate_name != "median") continue;
        std::string const name = run.run_name.function_name;
        std::size_t const cut = name.rfind('/');
        std::string const row = name.substr(0, cut);
        rows_[row][name.substr(cut + 1)] = run.GetAdjustedCPUTime() / static_cast<double>(itemsOf()[row]);
    }
}

/// Returns the name of the fastest peer, or an empty string if there is none.
inline std::string Report::fastestPeer(Times const& times) {
    std::string fastest;
    for (auto const& [who, time] : times)
        if (who != "ours" && who != "floor" && (fastest.empty() || time < times.at(fastest))) fastest = who;
    return fastest;
}

inline void Report::print(std::string const& theme) const {
    std::printf("%-24s %11s  %-14s %8s   %s\n", theme.c_str(), "ours ns", "fastest peer", "ours/it",
                "ours / every other");
    for (auto const& [row, times] : rows_) {
        double const ours = times.at("ours");
        std::string const peer = fastestPeer(times);
        std::printf("%-24s %11.2f  ", row.c_str(), ours);
        if (peer.empty())
            std::printf("%-14s %8s  ", "-", "-");
        else
            std::printf("%-14s %8.2f  ", peer.c_str(), ours / times.at(peer));
        for (auto const& [who, time] : times)
            if (who != "ours") std::printf(" %s %.2f", who.c_str(), ours / time);
        std::printf("\n");
    }
#ifdef BENCH_MISSING
    std::printf("not installed, and left out: %s\n", BENCH_MISSING);
#endif
}

inline bool Report::writeJson(std::string const& theme, std::string const& path) const {
    std::FILE* const file = std::fopen(path.c_str(), "w");
    if (file == nullptr) return false;
    std::fprintf(file, "{\"theme\": \"%s\", \"rows\": [", theme.c_str());
    char const* separator = "\n";
    for (auto const& [row, times] : rows_) {
        double const ours = times.at("ours");
        std::string const peer = fastestPeer(times);
        std::fprintf(file, "%s  {\"row\": \"%s\"", separator, row.c_str());
        if (!peer.empty())
            std::fprintf(file, ", \"fastest\": \"%s\", \"ratio\": %.4f", peer.c_str(), ours / times.at(peer));
        std::fprintf(file, ", \"nanoseconds\": {");
        char const* comma = "";
        for (auto const& [who, time] : times) {
            std::fprintf(file, "%s\"%s\": %.4f", comma, who.c_str(), time);
            comma = ", ";
        }
        std::fprintf(file, "}}");
        separator = ",\n";
    }
    std::fprintf(file, "\n]}\n");
    bool const written = std::ferror(file) == 0;
    return std::fclose(file) == 0 && written;
}

inline int Report::run(std::string const& theme, int argc, char** argv) {
    std::vector<std::string> words = {argv[0], "--benchmark_enable_random_interleaving=true",
                                      "--benchmark_repetitions=5", "--benchmark_min_time=0.02"};
    std::string json;
    for (int i = 1; i < argc; ++i) {
        std::string const word = argv[i];
        if (word.rfind("--json=", 0) == 0)
            json = word.substr(7);
        else
            words.push_back(word);
    }
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
    Report report;
    benchmark::RunSpecifiedBenchmarks(&report);
    for (auto row = report.rows_.begin(); row != report.rows_.end();) // a filter may have left out ours
        row = row->second.count("ours") == 0 ? report.rows_.erase(row) : std::next(row);
    report.print(theme);
    if (json.empty() || report.writeJson(theme, json)) return 0;
    std::perror(json.c_str());
    return 1;
}

#endif
