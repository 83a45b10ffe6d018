#include "bindings.h"

PYBIND11_MODULE(_core, module) {
    module.doc() = "The compiled part of mrcommon: conversions between Python objects and the library.";
    bindProperties(module);
    bindFrames(module);
    bindRotations(module);
    bindGeometry(module);
    bindIdentifiers(module);
}
