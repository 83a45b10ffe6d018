// ConfigurationMngr: the one place where library code finds the host's objects.
//     quarn::ConfigurationMngr::instance().host = &host;      // before any enumerated property is read
#ifndef MRCOMMON_HOST_CONFIGURATIONMNGR_H
#define MRCOMMON_HOST_CONFIGURATIONMNGR_H

#include <MRCommon/Export.h>
#include <MRCommon/host/ConfigurationHost.h>

namespace quarn {

class MRCOMMON_API ConfigurationMngr {
public:
    /// Returns the process-wide manager, created on first use and valid until the process ends. Creation
    /// is thread-safe; changing its fields is not.
    static ConfigurationMngr& instance();

    virtual ~ConfigurationMngr(); ///< slots 0 and 1

    ConfigurationMngr(ConfigurationMngr const&) = delete; // a copy would take the host away from the library
    ConfigurationMngr& operator=(ConfigurationMngr const&) = delete;

    ConfigurationHost* host = nullptr; ///< set and owned by the application; null until then
    void* userData = nullptr;          ///< not used by the library

protected:
    ConfigurationMngr() = default;
};

} // namespace quarn

#endif
