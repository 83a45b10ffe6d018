// The host is installed before enumerations are read: its version decides which layout a record has.
#include <MRCommon/host/ConfigurationMngr.h>
#include <MRCommon/properties/PptyEnum.h>
#include <MRCommon/streams/StreamEncoding.h>

#include "claim.h"

using namespace quarn;

struct Host : ConfigurationHost, ConfigurationObject {
    ConfigurationObject* getObject(QN_String const&) override { return this; }
    unsigned int getVersion() const override { return 5087; } // the last with the old layout
};

int main() {
    std::FILE* const file = std::tmpfile();
    claim(file != nullptr, "a temporary file");
    FileStreamRaw stream(file);
    encoding::writeStr(stream, "mode"); // an old record: name, index, an empty table
    for (int const number : {7, 0, 0}) encoding::writeI32(stream, number);
    claim(stream.finish(), "the old record is written");
    std::rewind(file);

    Host host;
    ConfigurationMngr::instance().host = &host; // borrowed
    PptyEnum mode;
    mode.readFrom(stream);
    ConfigurationMngr::instance().host = nullptr;
    claim(*mode.getVariantValue().as<int>() == 7 && !stream.failed(), "the old record is read as such");
    std::fclose(file);
}
