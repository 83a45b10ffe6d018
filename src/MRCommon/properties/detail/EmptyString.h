// The empty text of whatever was given none, made while the library is loaded: a fresh name or label is a copy.
#ifndef MRCOMMON_PROPERTIES_DETAIL_EMPTYSTRING_H
#define MRCOMMON_PROPERTIES_DETAIL_EMPTYSTRING_H

#include <MRCommon/basic/QN_String.h>

namespace quarn::detail {

extern QN_String const emptyString; ///< one NUL

} // namespace quarn::detail

#endif
