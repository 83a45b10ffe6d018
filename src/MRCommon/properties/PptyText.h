// PptyText: values as strings, for listings and logs.
//     QN_String text;
//     qn_basicppty::QN_set(text, true);                 // "True"
// Each function replaces the string, whose buffer is sized exactly. Names, labels and elements end at their
// first NUL. Nothing is quoted: an element that contains ", " looks like two.
#ifndef MRCOMMON_PROPERTIES_PPTYTEXT_H
#define MRCOMMON_PROPERTIES_PPTYTEXT_H

#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>

namespace quarn {

class PptyEnum;

namespace qn_basicppty {

/// Sets `out` to "True" or "False".
MRCOMMON_API void QN_set(QN_String& out, bool const& value);

/// Sets `out` to "[ a, b, c ]", or to "" if the list is empty.
MRCOMMON_API void QN_set(QN_String& out, Array<QN_String> const& list);

/// Sets `out` to name, label and index: " PptyEnum : mode( Fast, 2 )\n". Intentional: no blank precedes the
/// parenthesis. Tested by PptyEnum.IsDescribedByTextAndRecord.
MRCOMMON_API void QN_set(QN_String& out, PptyEnum const& property);

} // namespace qn_basicppty

} // namespace quarn

#endif
