#include "Progress.h"

#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <utility>

namespace {

std::string shownTime(double seconds) {
    if (seconds < 120) return std::to_string(std::lround(std::ceil(seconds))) + " s";
    if (seconds < 7200) return std::to_string(std::lround(seconds / 60)) + " min";
    return std::to_string(std::llround(seconds / 3600)) + " h";
}

} // namespace

Progress::Progress(std::string work, int total)
    : work_(std::move(work)), total_(total), isTerminal_(isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
    if (width_ != 0) std::fprintf(stderr, "\r%*s\r", static_cast<int>(width_), "");
}

void Progress::reached(int done) {
    Clock::time_point const now = Clock::now();
    if (!isTerminal_ || done == 0 || now < next_) return;
    next_ = now + std::chrono::milliseconds(100);
    double const elapsed = std::chrono::duration<double>(now - start_).count();
    show(work_ + " " + std::to_string(done) + "/" + std::to_string(total_) + ", " +
         shownTime(elapsed * (total_ - done) / done) + " left");
}

/// Blanks cover the rest of a longer line before.
void Progress::show(std::string const& line) {
    std::fprintf(stderr, "\r%-*s", static_cast<int>(width_), line.c_str());
    width_ = line.size();
}
