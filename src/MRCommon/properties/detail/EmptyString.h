// The default of names and labels. A default property copies it.
#ifndef MRCOMMON_PROPERTIES_DETAIL_EMPTYSTRING_H
#define MRCOMMON_PROPERTIES_DETAIL_EMPTYSTRING_H

#include <MRCommon/basic/QN_String.h>

namespace quarn::detail {

/// One NUL. Made when the library is loaded and never destroyed, since exit handlers may still make properties.
extern QN_String const& emptyString;

} // namespace quarn::detail

#endif
