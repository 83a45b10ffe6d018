// PptyText: values as text, for listings and logs.
//     QN_String text;
//     qn_basicppty::QN_set(text, true);                 // "True"
// The target's old text is replaced; its buffer is sized exactly. Texts inside stop at their first NUL.
// Nothing is quoted: an element that holds ", " cannot be told from two.
#ifndef MRCOMMON_PROPERTIES_PPTYTEXT_H
#define MRCOMMON_PROPERTIES_PPTYTEXT_H

#include <MRCommon/basic/QN_String.h>

namespace quarn {

class PptyEnum;

namespace qn_basicppty {

/// "True" or "False".
MRCOMMON_API void QN_set(QN_String& out, bool const& value);

/// "[ a, b, c ]"; an empty list gives the empty text.
MRCOMMON_API void QN_set(QN_String& out, Array<QN_String> const& list);

/// " PptyEnum : mode( Fast, 2 )\n": name, label, index; no blank before the parenthesis, as meant.
MRCOMMON_API void QN_set(QN_String& out, PptyEnum const& property);

} // namespace qn_basicppty

} // namespace quarn

#endif
