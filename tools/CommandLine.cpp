#include "CommandLine.h"

#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <new>
#include <system_error>
#include <utility>

namespace {

struct Interrupt {};

volatile std::sig_atomic_t interruptSeen = 0;

/// Lets the first SIGINT end the work between two lines, and cut off a read that waits; the second one kills. Where
/// interrupts are ignored, as a shell has it for a job in the background, they stay ignored.
void watchForInterrupts() {
    struct sigaction current = {};
    sigaction(SIGINT, nullptr, &current);
    if (current.sa_handler == SIG_IGN) return;
    struct sigaction action = {};
    action.sa_handler = [](int) { interruptSeen = 1; };
    action.sa_flags = static_cast<int>(SA_RESETHAND); // without SA_RESTART, so that reads are cut off
    sigaction(SIGINT, &action, nullptr);
}

/// The option parser would take an argument "[a,b]" apart as a list of two. A NUL at its end, which no argument
/// has of its own, keeps it whole until withoutMark() takes the NUL away.
std::vector<std::string> markedArguments(int argc, char** argv) {
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    for (std::string& argument : arguments)
        if (!argument.empty() && argument.front() == '[') argument += '\0';
    return arguments;
}

std::string withoutMark(std::string argument) {
    if (!argument.empty() && argument.back() == '\0') argument.pop_back();
    return argument;
}

} // namespace

CommandLine::CommandLine(std::string const& name, std::string const& purpose) : options(purpose, name) {
    options.set_help_flag("-h,--help", "Print this help and exit");
    options.set_version_flag("--version", name + " " + MRCOMMON_VERSION, "Print the version and exit");
}

CLI::Option* CommandLine::addList(std::string const& name, std::vector<std::string>& values,
                                  std::string const& description) {
    return options.add_option(name, values, description)->transform(withoutMark, "");
}

int CommandLine::run(int argc, char** argv, std::function<void()> const& work) {
    watchForInterrupts();
    std::signal(SIGPIPE, SIG_DFL); // whoever started the program may have had it ignored
    try {
        try {
            std::vector<std::string> arguments = markedArguments(argc, argv);
            std::reverse(arguments.begin(), arguments.end()); // as the parser takes them
            options.parse(std::move(arguments));
            work();
        } catch (CLI::CallForHelp const&) {
            std::string help = options.help();
            while (!help.empty() && help.back() == '\n') help.pop_back();
            print(help);
        } catch (CLI::CallForVersion const& version) {
            print(version.what());
        }
        flush();
    } catch (Interrupt const&) {
        clearProgress();
        return interrupted;
    } catch (CLI::ParseError const& error) {
        report(printable(error.what()) + " (see " + options.get_name() + " --help)");
        return wrongUsage;
    } catch (std::bad_alloc const&) {
        report("out of memory");
        return badInput;
    } catch (std::exception const& error) {
        report(error.what());
        return badInput;
    }
    return status_;
}

void CommandLine::print(std::string const& line) {
    constexpr std::size_t atOnce = 4096; // a pipe takes so much whole, or nothing of it
    if (!isInLine_) endIfInterrupted();
    if (unprinted_.size() + line.size() >= atOnce) flush();
    unprinted_ += line;
    unprinted_ += '\n';
    if (isInLine_ || isatty(STDOUT_FILENO) == 1) flush();
    isInLine_ = false;
}

void CommandLine::printBeginning(std::string const& text) {
    if (!isInLine_) endIfInterrupted();
    flush();
    unprinted_ = text;
    flush();
    isInLine_ = true;
}

void CommandLine::printJson(nlohmann::ordered_json const& object) {
    print(object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
}

void CommandLine::flush() {
    clearProgress();
    std::size_t written = 0;
    while (written < unprinted_.size()) {
        ssize_t const count = write(STDOUT_FILENO, unprinted_.data() + written, unprinted_.size() - written);
        if (count >= 0)
            written += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            throw std::system_error(errno, std::generic_category(), "standard output");
        else if (written == 0 && !isInLine_)
            endIfInterrupted();
    }
    unprinted_.clear();
}

void CommandLine::complain(std::string const& file, std::string const& reason) {
    flush();
    report(printable(file) + ": " + reason);
    fail();
}

void CommandLine::report(std::string const& message) {
    clearProgress();
    std::fprintf(stderr, "%s: %s\n", options.get_name().c_str(), message.c_str());
}

void CommandLine::showProgress(std::string const& text) {
    if (isatty(STDERR_FILENO) != 1) return;
    std::fprintf(stderr, "\r\033[K%s", text.c_str());
    progressShown_ = true;
}

void CommandLine::clearProgress() {
    if (progressShown_) std::fputs("\r\033[K", stderr);
    progressShown_ = false;
}

void CommandLine::endIfInterrupted() {
    if (interruptSeen != 0) throw Interrupt();
}

std::string printable(std::string const& name) {
    constexpr char const* digits = "0123456789abcdef";
    std::string text;
    for (char const c : name) {
        auto const byte = static_cast<unsigned char>(c);
        if (byte >= 32 && byte != 127 && byte != '\\')
            text += c;
        else
            text += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
    }
    return text;
}
