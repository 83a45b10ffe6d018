#include <MRCommon/host/ConfigurationHost.h>

namespace quarn {

ConfigurationObject::~ConfigurationObject() = default;

ConfigurationHost::~ConfigurationHost() = default;

} // namespace quarn
