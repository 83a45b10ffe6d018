#include <MRCommon/host/ConfigurationMngr.h>

namespace quarn {

ConfigurationMngr& ConfigurationMngr::instance() {
    static ConfigurationMngr manager;
    return manager;
}

ConfigurationMngr::~ConfigurationMngr() = default;

} // namespace quarn
