// What an application offers to library code: objects by name.
#include <MRCommon/host/ConfigurationHost.h>

#include "claim.h"

using namespace quarn;

class Host : public ConfigurationHost, public ConfigurationObject {
public:
    ConfigurationObject* getObject(QN_String const& name) override {
        return name == "WorkSpace" ? this : nullptr;
    }
    unsigned int getVersion() const override { return 5088; }
};

int main() {
    Host host;
    ConfigurationHost& asked = host;
    claim(asked.getObject("WorkSpace")->getVersion() == 5088, "the version of the data being read");
    claim(asked.getObject("Weather") == nullptr, "no such object");
}
