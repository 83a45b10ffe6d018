// claim: tells in one line what an example shows; where it does not hold, the program ends with exit status 1.
//     claim(list.size() == 3, "three elements");
#ifndef EXAMPLES_HEADERS_CLAIM_H
#define EXAMPLES_HEADERS_CLAIM_H

#include <cstdio>
#include <cstdlib>

inline void claim(bool holds, char const* what) {
    std::printf("%s  %s\n", holds ? "yes" : "NO ", what);
    if (!holds) std::exit(1);
}

#endif
