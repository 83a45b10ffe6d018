// Random: the reproducible pseudo-random sequence of the application.
//     resetRandomSequence();
//     float a = DameRandom();        // in [0, 1], 1 included
//     float b = DameRandom11();      // in [-1, 1]
// Uses the process-wide std::rand and shares its sequence with every other caller of it. Not thread-safe: a sequence
// repeats only if a single thread draws from it.
#ifndef MRCOMMON_MATH_RANDOM_H
#define MRCOMMON_MATH_RANDOM_H

#include <MRCommon/Export.h>

MRCOMMON_API void resetRandomSequence(); ///< restarts the sequence
MRCOMMON_API float DameRandom();         ///< in [0, 1] if RAND_MAX is 2^31 - 1, in a smaller range otherwise
MRCOMMON_API float DameRandom11();       ///< in [-1, 1], likewise

#endif
