// Progress: one line on the standard error stream that tells how far long work is, where a person can see it.
//     Progress progress("simulating", 60);
//     progress.reached(12);                     // "simulating 12/60", over and over in the same place
// Nothing is printed where the stream is no terminal.
#ifndef FOUNTAIN_PROGRESS_H
#define FOUNTAIN_PROGRESS_H

#include <unistd.h>

#include <cstdio>
#include <string>
#include <utility>

class Progress {
public:
    Progress(std::string work, int all) : work_(std::move(work)), all_(all) {}
    ~Progress() {
        if (isSeen_) std::fprintf(stderr, "\r%*s\r", static_cast<int>(work_.size()) + 24, "");
    }
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;

    void reached(int done) const {
        if (isSeen_) std::fprintf(stderr, "\r%s %d/%d", work_.c_str(), done, all_);
    }

private:
    std::string work_;
    int all_;
    bool isSeen_ = isatty(STDERR_FILENO) == 1;
};

#endif
