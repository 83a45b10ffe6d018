// ErrorItem: one entry of the application's error list, and its flags.
//     ERROR_TOO_OLD.message.c_str()     "Error not in list because too old"
#ifndef MRCOMMON_BASIC_ERRORITEM_H
#define MRCOMMON_BASIC_ERRORITEM_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>

namespace MRCOMMON_HIDDEN quarn {

///@{
/// Class flags: how severe the error is.
inline constexpr unsigned int EICF_TOO_OLD = 1;
inline constexpr unsigned int EICF_INFO = 2;
inline constexpr unsigned int EICF_WARNING = 4;
inline constexpr unsigned int EICF_RECOVERABLE_ERROR = 8;
inline constexpr unsigned int EICF_CRITICAL_ERROR = 16;
///@}

///@{
/// List flags: whose list the error is in. The value 4 belongs to another module of the application and is
/// never set here.
inline constexpr unsigned int EILF_TOO_OLD = 1;
inline constexpr unsigned int EILF_BASICLIB = 2;
inline constexpr unsigned int EILF_MARELLE = 8;
///@}

struct ErrorItem {
    unsigned int classFlags; ///< a combination of EICF_ flags
    unsigned int listFlags;  ///< a combination of EILF_ flags
    unsigned int code;       ///< 0 in the one item that is defined here
    QN_String message;       ///< for people
};

/// Replaces an error that is no longer in the list. Each source file that includes this header has a copy.
static ErrorItem const ERROR_TOO_OLD{EICF_TOO_OLD, EILF_TOO_OLD, 0, "Error not in list because too old"};

} // namespace quarn

#endif
