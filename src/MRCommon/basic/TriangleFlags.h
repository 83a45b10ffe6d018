// TriangleFlags: properties of a triangle, one bit each.
#ifndef MRCOMMON_BASIC_TRIANGLEFLAGS_H
#define MRCOMMON_BASIC_TRIANGLEFLAGS_H

#include <MRCommon/Export.h>

namespace MRCOMMON_HIDDEN quarn {

inline constexpr unsigned int triangleFlags_OBTUSE = 1; ///< one angle above 90 degrees
inline constexpr unsigned int triangleFlags_2SIDED = 2; ///< both faces count

} // namespace quarn

#endif
