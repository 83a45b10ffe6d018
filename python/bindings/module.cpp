#include "bindings.h"
#include "Failures.h"

#include <MRCommon/Version.h>

PYBIND11_MODULE(_core, module) {
    module.doc() = "The compiled part of mrcommon: conversions between Python objects and the library.";
    module.def(
        "version", [] { return quarn::versionString(); }, "Returns the version, such as \"1.0.0\".");
    registerFailures();
    bindProperties(module);
    bindFiles(module);
    bindFrames(module);
    bindRotations(module);
    bindGeometry(module);
    bindIdentifiers(module);
}
