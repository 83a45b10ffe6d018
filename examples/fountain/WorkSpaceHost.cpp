#include "WorkSpaceHost.h"

#include <MRCommon/host/ConfigurationMngr.h>

#include <utility>

using quarn::ConfigurationMngr;

WorkSpaceHost::WorkSpaceHost(unsigned int version)
    : version_(version), before_(std::exchange(ConfigurationMngr::instance().host, this)) {}

WorkSpaceHost::~WorkSpaceHost() { ConfigurationMngr::instance().host = before_; }

quarn::ConfigurationObject* WorkSpaceHost::getObject(quarn::QN_String const& name) {
    return name == "WorkSpace" ? this : nullptr;
}
