#include <MRCommon/properties/detail/NoText.h>

namespace quarn {

QN_String const detail::noText;

} // namespace quarn
