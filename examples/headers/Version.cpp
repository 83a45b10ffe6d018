// A plug-in asks whether the library that its host has loaded is new enough. examples/headers/Export.cpp shows how the
// question is exported.
#include <MRCommon/Version.h>

#include "claim.h"

#include <string>

namespace {

/// Returns whether code that was compiled with `headers` works with the library `loaded`.
bool worksWith(int loaded, int headers) { return loaded >= headers && loaded / 10000 == headers / 10000; }

} // namespace

int main() {
    std::string const loaded = quarn::versionString();
    claim(loaded.rfind(std::to_string(MRCOMMON_VERSION_MAJOR) + ".", 0) == 0,
          "the version begins with the major one");
    claim(worksWith(quarn::versionNumber(), MRCOMMON_VERSION), "the loaded library is as new as the headers");
    claim(!worksWith(10199, 10200), "an older library lacks what the headers declare");
    claim(!worksWith(20000, 10200), "a library of another major version has other layouts");
}
