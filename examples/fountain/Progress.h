// Progress: one line on the standard error stream that shows how far long work has come and how long it will take.
//     Progress progress("simulating", 60);
//     progress.reached(12);                     // "simulating 12/60, 3 s left", rewritten in place
// Prints nothing unless the stream is a terminal. The line is erased at the end.
#ifndef FOUNTAIN_PROGRESS_H
#define FOUNTAIN_PROGRESS_H

#include <chrono>
#include <string>

class Progress {
public:
    Progress(std::string work, int total);
    ~Progress();
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;

    /// Shows that `done` steps of the total are done: the first time at once, then ten times a second at most.
    void reached(int done);

private:
    using Clock = std::chrono::steady_clock;

    void show(std::string const& line);

    std::string work_;
    int total_;
    bool isTerminal_;
    std::size_t width_ = 0; ///< of the line that is on the screen
    Clock::time_point start_ = Clock::now();
    Clock::time_point next_ = start_;
};

#endif
