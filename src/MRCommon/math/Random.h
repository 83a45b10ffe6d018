// Random: the reproducible pseudo-random sequence of the application.
//     resetRandomSequence();
//     float a = DameRandom();        // in [0, 1], 1 included
//     float b = DameRandom11();      // in [-1, 1]
// The source is the process-wide std::rand, its sequence shared with everybody else who draws from it. Draw
// from one thread where the sequence must be the same again.
#ifndef MRCOMMON_MATH_RANDOM_H
#define MRCOMMON_MATH_RANDOM_H

#include <MRCommon/Export.h>

MRCOMMON_API void resetRandomSequence(); ///< starts the sequence anew
MRCOMMON_API float DameRandom();   ///< in [0, 1] where the largest std::rand is 2^31 - 1, less elsewhere
MRCOMMON_API float DameRandom11(); ///< in [-1, 1] alike

#endif
