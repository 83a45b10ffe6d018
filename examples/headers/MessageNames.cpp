// What the application's message types are called.
#include <MRCommon/host/MessageNames.h>

#include "claim.h"

#include <string>

using namespace quarn;

int main() {
    std::string const label = mr_mesgs::DAEMON_TYPE_CAP_NAME;
    claim(label == "Daemon" && mr_mesgs::DAEMON_TYPE_LRW_NAME == std::string("daemon"),
          "with a capital, and without");
    claim(mr_mesgs::PARTICLES_TYPE_LWR_NAME == std::string("particles"), "of the particles it is LWR: meant");
    claim(mr_mesgs::CMD_TYPE_LRW_NAME == std::string("Command"), "of commands both have the capital: meant");
}
