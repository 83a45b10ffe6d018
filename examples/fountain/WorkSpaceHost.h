// WorkSpaceHost: this application as the library sees it: a host with one object, the "WorkSpace".
//     WorkSpaceHost host(5088);                 // installed until it goes
#ifndef FOUNTAIN_WORKSPACEHOST_H
#define FOUNTAIN_WORKSPACEHOST_H

#include <MRCommon/host/ConfigurationHost.h>

class WorkSpaceHost : public quarn::ConfigurationHost, private quarn::ConfigurationObject {
public:
    explicit WorkSpaceHost(unsigned int version);
    ~WorkSpaceHost() override;
    WorkSpaceHost(WorkSpaceHost const&) = delete;
    WorkSpaceHost& operator=(WorkSpaceHost const&) = delete;

    quarn::ConfigurationObject* getObject(quarn::QN_String const& name) override;

private:
    unsigned int getVersion() const override { return version_; }

    unsigned int version_;
    quarn::ConfigurationHost* before_;
};

#endif
