// ConfigurationHost: gives library code access to the objects of the host application by name.
//     class Host : public quarn::ConfigurationHost {
//         quarn::ConfigurationObject* getObject(quarn::QN_String const& name) override;
//     };
// The one name that the library asks for is "WorkSpace".
#ifndef MRCOMMON_HOST_CONFIGURATIONHOST_H
#define MRCOMMON_HOST_CONFIGURATIONHOST_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>

namespace quarn {

/// An object of the host, which has a version.
class MRCOMMON_API ConfigurationObject {
public:
    virtual ~ConfigurationObject(); ///< slots 0 and 1

    /// Returns the version of what the object represents; for "WorkSpace", that of the data being read.
    virtual unsigned int getVersion() const = 0; ///< slot 2
};

class MRCOMMON_API ConfigurationHost {
public:
    virtual ~ConfigurationHost(); ///< slots 0 and 1

    /// Returns the object of this name, owned by the host; null if the name is unknown.
    virtual ConfigurationObject* getObject(QN_String const& name) = 0; ///< slot 2
};

} // namespace quarn

#endif
