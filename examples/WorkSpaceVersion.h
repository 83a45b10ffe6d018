// WorkSpaceVersion: a host with one object, the "WorkSpace" of the given version, for as long as a scope lasts.
//     WorkSpaceVersion const version(5087);     // enumerations are read in the layout of that version
// The previous host comes back at the end of the scope, so scopes may be nested.
#ifndef EXAMPLES_WORKSPACEVERSION_H
#define EXAMPLES_WORKSPACEVERSION_H

#include <MRCommon/host/ConfigurationMngr.h>

#include <utility>

class WorkSpaceVersion : public quarn::ConfigurationHost, private quarn::ConfigurationObject {
public:
    explicit WorkSpaceVersion(unsigned int version)
        : version_(version), previous_(std::exchange(quarn::ConfigurationMngr::instance().host, this)) {}
    ~WorkSpaceVersion() override { quarn::ConfigurationMngr::instance().host = previous_; }
    WorkSpaceVersion(WorkSpaceVersion const&) = delete;
    WorkSpaceVersion& operator=(WorkSpaceVersion const&) = delete;

    quarn::ConfigurationObject* getObject(quarn::QN_String const& name) override {
        return name == "WorkSpace" ? this : nullptr;
    }

private:
    unsigned int getVersion() const override { return version_; }

    unsigned int version_;
    quarn::ConfigurationHost* previous_;
};

#endif
