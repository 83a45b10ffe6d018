// ErrorItem: one entry of the product's error list, and its flags.
//     ERROR_TOO_OLD.message.c_str()     "Error not in list because too old"
#ifndef MRCOMMON_BASIC_ERRORITEM_H
#define MRCOMMON_BASIC_ERRORITEM_H

#include <MRCommon/basic/QN_String.h>

namespace MRCOMMON_HIDDEN quarn {

///@{
/// How severe: class flags.
inline constexpr unsigned int EICF_TOO_OLD = 1;
inline constexpr unsigned int EICF_INFO = 2;
inline constexpr unsigned int EICF_WARNING = 4;
inline constexpr unsigned int EICF_RECOVERABLE_ERROR = 8;
inline constexpr unsigned int EICF_CRITICAL_ERROR = 16;
///@}

///@{
/// Whose list: list flags. Bit 4 belongs to another module of the product and is never set here.
inline constexpr unsigned int EILF_TOO_OLD = 1;
inline constexpr unsigned int EILF_BASICLIB = 2;
inline constexpr unsigned int EILF_MARELLE = 8;
///@}

struct ErrorItem {
    unsigned int classFlags; ///< a combination of EICF_ flags
    unsigned int listFlags;  ///< a combination of EILF_ flags
    unsigned int code;       ///< 0 in the only item that is made here
    QN_String message;       ///< what a person reads
};

/// What stands for an error that has left the list. Every file that includes this header has a copy of its
/// own.
static ErrorItem const ERROR_TOO_OLD{EICF_TOO_OLD, EILF_TOO_OLD, 0, "Error not in list because too old"};

} // namespace quarn

#endif
