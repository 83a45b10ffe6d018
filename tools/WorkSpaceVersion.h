// WorkSpaceVersion: while it lives, the host's "WorkSpace" has the given version.
//     WorkSpaceVersion const version(5087);
#ifndef MRCOMMON_TOOLS_WORKSPACEVERSION_H
#define MRCOMMON_TOOLS_WORKSPACEVERSION_H

#include <MRCommon/host/ConfigurationMngr.h>

class WorkSpaceVersion : public quarn::ConfigurationHost, quarn::ConfigurationObject {
public:
    explicit WorkSpaceVersion(unsigned int version) : version_(version) {
        quarn::ConfigurationMngr::instance().host = this;
    }
    ~WorkSpaceVersion() override { quarn::ConfigurationMngr::instance().host = nullptr; }

    quarn::ConfigurationObject* getObject(quarn::QN_String const& name) override {
        return name == "WorkSpace" ? this : nullptr;
    }
    unsigned int getVersion() const override { return version_; }

private:
    unsigned int version_;
};

#endif
