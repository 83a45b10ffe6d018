#include <MRCommon/properties/detail/EmptyString.h>

namespace quarn {

QN_String const& detail::emptyString = *new QN_String();

} // namespace quarn
