#include <MRCommon/properties/QN_Enum.h>

namespace quarn {

QN_Enum::~QN_Enum() = default;

} // namespace quarn
