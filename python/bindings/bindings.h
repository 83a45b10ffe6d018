// The parts of the extension module, one function each; module.cpp calls them all.
#ifndef MRCOMMON_PYTHON_BINDINGS_H
#define MRCOMMON_PYTHON_BINDINGS_H

#include <pybind11/pybind11.h>

void bindProperties(pybind11::module_& module);
void bindFiles(pybind11::module_& module);
void bindFrames(pybind11::module_& module);
void bindRotations(pybind11::module_& module);
void bindGeometry(pybind11::module_& module);
void bindIdentifiers(pybind11::module_& module);

/// The `__reduce__` of what only Python's own classes pickle. The one of `object` ends the process in the protocols 0 and
/// 1, since it calls the constructor of the class that all bound classes share.
[[noreturn]] inline void refuseToReduce(pybind11::object const&) {
    throw pybind11::type_error("not to be pickled by itself");
}

#endif
