// ArrayFlags: why an array of the application is locked, and which of its modification controls are set.
#ifndef MRCOMMON_BASIC_ARRAYFLAGS_H
#define MRCOMMON_BASIC_ARRAYFLAGS_H

#include <MRCommon/Export.h>

namespace MRCOMMON_HIDDEN quarn {

///@{
/// Reasons why an array is locked, one bit each, and the mask of those that a copy inherits.
inline constexpr unsigned int ARRAY_TYPEABLE_IS_LOCKED_TYPE = 1;
inline constexpr unsigned int ARRAY_TYPEABLE_IS_LOCKED_BECAUSE_We = 2;
inline constexpr unsigned int ARRAY_TYPEABLE_IS_LOCKED_BECAUSE_Wa = 4;
inline constexpr unsigned int ARRAY_TYPEABLE_COPY_MASK = ARRAY_TYPEABLE_IS_LOCKED_TYPE;
///@}

///@{
/// The four modification controls, one bit each, and their mask.
inline constexpr unsigned int ARRAY_TYPEABLE_MODIFIED_CONTROL_0 = 256;
inline constexpr unsigned int ARRAY_TYPEABLE_MODIFIED_CONTROL_1 = 512;
inline constexpr unsigned int ARRAY_TYPEABLE_MODIFIED_CONTROL_2 = 1024;
inline constexpr unsigned int ARRAY_TYPEABLE_MODIFIED_CONTROL_3 = 2048;
inline constexpr unsigned int ARRAY_TYPEABLE_MODIFIED_CONTROL_MASK =
    ARRAY_TYPEABLE_MODIFIED_CONTROL_0 | ARRAY_TYPEABLE_MODIFIED_CONTROL_1 |
    ARRAY_TYPEABLE_MODIFIED_CONTROL_2 | ARRAY_TYPEABLE_MODIFIED_CONTROL_3;
///@}

} // namespace quarn

#endif
