#include <MRCommon/properties/PptyText.h>

namespace quarn::qn_basicppty {

void QN_set(QN_String& out, bool const& value) { out = value ? "True" : "False"; }

} // namespace quarn::qn_basicppty
