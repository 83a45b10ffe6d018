// The parts of the extension module, one function each; module.cpp calls them all.
#ifndef MRCOMMON_PYTHON_BINDINGS_H
#define MRCOMMON_PYTHON_BINDINGS_H

#include <pybind11/pybind11.h>

void bindProperties(pybind11::module_& module);
void bindFrames(pybind11::module_& module);
void bindRotations(pybind11::module_& module);
void bindGeometry(pybind11::module_& module);
void bindIdentifiers(pybind11::module_& module);

#endif
