// ConfigurationHost: what the host application offers to library code: its objects by name.
//     class Host : public quarn::ConfigurationHost {
//         quarn::ConfigurationObject* getObject(quarn::QN_String const& name) override;
//     };
// The one name that the library asks for is "WorkSpace".
#ifndef MRCOMMON_HOST_CONFIGURATIONHOST_H
#define MRCOMMON_HOST_CONFIGURATIONHOST_H

#include <MRCommon/basic/QN_String.h>

namespace quarn {

/// An object of the host: something with a version.
class MRCOMMON_API ConfigurationObject {
public:
    virtual ~ConfigurationObject(); ///< slots 0 and 1

    /// The version of what the object stands for; of the "WorkSpace", that of the data being read.
    virtual unsigned int getVersion() const = 0; ///< slot 2
};

class MRCOMMON_API ConfigurationHost {
public:
    virtual ~ConfigurationHost(); ///< slots 0 and 1

    /// The object of this name, owned by the host; null when there is none.
    virtual ConfigurationObject* getObject(QN_String const& name) = 0; ///< slot 2
};

} // namespace quarn

#endif
