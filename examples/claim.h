// claim: prints in one line what an example shows, and ends the program with exit status 1 if it does not hold.
//     claim(list.size() == 3, "three elements");
#ifndef EXAMPLES_CLAIM_H
#define EXAMPLES_CLAIM_H

#include <cstdio>
#include <cstdlib>

inline void claim(bool holds, char const* what) {
    std::printf("%s  %s\n", holds ? "yes" : "NO ", what);
    if (!holds) std::exit(1);
}

#endif
