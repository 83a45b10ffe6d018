// CommandLine: what the programs share: options, output in whole lines, messages, exit status, progress, interrupts.
//     int main(int argc, char** argv) {
//         CommandLine program("mrcommon-frames", "Lists the sequences of frames in folders.");
//         bool json = false;
//         program.options.add_flag("--json", json, "Print one JSON object a line");
//         return program.run(argc, argv, [&] { program.print("fluid.####.bin  1-20"); });
//     }
// The exit status is 0 if all went well, 1 if some input is bad or the output cannot be written, 2 for wrong usage
// and 130 after an interrupt. If the reader of a pipe closes it, the program ends silently, by SIGPIPE.
#ifndef MRCOMMON_TOOLS_COMMANDLINE_H
#define MRCOMMON_TOOLS_COMMANDLINE_H

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <functional>
#include <string>
#include <vector>

class CommandLine {
public:
    CommandLine(std::string const& name, std::string const& purpose);

    CLI::App options; ///< has --help and --version; the program adds its own

    /// Adds a list: of inputs, as "FILE", or of an option's values, as "--extension".
    CLI::Option* addList(std::string const& name, std::vector<std::string>& values,
                         std::string const& description);

    /// Reads the options, calls `work` and returns the exit status. An exception from `work` becomes a message;
    /// a CLI::ValidationError counts as wrong usage.
    int run(int argc, char** argv, std::function<void()> const& work);

    /// Prints a line. Lines are printed whole or, after an interrupt, not at all.
    void print(std::string const& line);
    /// Prints the beginning of a long line, which print() ends; it is completed even after an interrupt.
    void printBeginning(std::string const& text);
    /// Prints an object as one line. Bytes that are not UTF-8 become U+FFFD.
    void printJson(nlohmann::ordered_json const& object);

    /// Reports a bad input on the standard error stream as "program: file: reason"; the exit status will be 1.
    void complain(std::string const& file, std::string const& reason);
    /// Makes the exit status 1 without a message, for faults that the output itself lists.
    void fail() { status_ = badInput; }

    /// Shows on a terminal how far the work is, until the next line is printed.
    void showProgress(std::string const& text);
    /// Ends the work, by an exception that run() catches, if there was an interrupt. To be called every now and
    /// then, and after a read that was cut off.
    static void endIfInterrupted();

private:
    static constexpr int good = 0, badInput = 1, wrongUsage = 2, interrupted = 130;

    void flush();
    void report(std::string const& message);
    void clearProgress();

    std::string unprinted_; ///< whole lines, or a piece of a long one
    bool isInLine_ = false; ///< whether the beginning of a line was printed
    bool progressShown_ = false;
    int status_ = good;
};

/// Returns a name without its control characters and backslashes, which become \xNN.
std::string printable(std::string const& name);

#endif
