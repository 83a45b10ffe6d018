// ArrayFlags: why an array of the product is locked, and which of its modification controls are raised.
#ifndef MRCOMMON_BASIC_ARRAYFLAGS_H
#define MRCOMMON_BASIC_ARRAYFLAGS_H

#include <MRCommon/Export.h>

namespace MRCOMMON_HIDDEN quarn {

///@{
/// Why an array is locked, one bit for each reason, and the reasons that a copy inherits.
inline constexpr unsigned int ARRAY_TYPEABLE_IS_LOCKED_TYPE = 1;
inline constexpr unsigned int ARRAY_TYPEABLE_IS_LOCKED_BECAUSE_We = 2;
inline constexpr unsigned int ARRAY_TYPEABLE_IS_LOCKED_BECAUSE_Wa = 4;
inline constexpr unsigned int ARRAY_TYPEABLE_COPY_MASK = ARRAY_TYPEABLE_IS_LOCKED_TYPE;
///@}

///@{
/// Which modification controls are raised, and all four of them.
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
