// PptyText: values as text, for listings and logs.
//     QN_String text;
//     qn_basicppty::QN_set(text, true);                 // "True"
// The target's old text is replaced; its buffer is sized exactly.
#ifndef MRCOMMON_PROPERTIES_PPTYTEXT_H
#define MRCOMMON_PROPERTIES_PPTYTEXT_H

#include <MRCommon/basic/QN_String.h>

namespace quarn::qn_basicppty {

/// "True" or "False".
MRCOMMON_API void QN_set(QN_String& out, bool const& value);

} // namespace quarn::qn_basicppty

#endif
