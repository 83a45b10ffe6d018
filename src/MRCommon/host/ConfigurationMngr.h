// ConfigurationMngr: where library code finds the host's objects.
//     quarn::ConfigurationMngr::instance().host = &host;      // before any enumerated property is read
#ifndef MRCOMMON_HOST_CONFIGURATIONMNGR_H
#define MRCOMMON_HOST_CONFIGURATIONMNGR_H

#include <MRCommon/host/ConfigurationHost.h>

namespace quarn {

class MRCOMMON_API ConfigurationMngr {
public:
    /// The one manager of the process: made on first use, there until the process ends. Making it is safe
    /// from any thread, changing its fields is not.
    static ConfigurationMngr& instance();

    virtual ~ConfigurationMngr(); ///< slots 0 and 1: all

    ConfigurationHost* host = nullptr; ///< set by the application, which keeps owning it; null until then
    void* userData = nullptr;          ///< not used by the library

protected:
    ConfigurationMngr() = default;
};

} // namespace quarn

#endif
