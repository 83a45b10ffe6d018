#include <MRCommon/text/ConfigurationHost.h>

namespace quarn {

ConfigurationObject::~ConfigurationObject() = default;

ConfigurationHost::~ConfigurationHost() = default;

} // namespace quarn
