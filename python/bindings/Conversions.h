// Conversions: between the library's values and Python objects.
//     toPython(Vector3<float>(1, 2, 3))            (1.0, 2.0, 3.0)
//     fromPython(object, target)                   TypeError, OverflowError or ValueError if it does not fit
// Strings are UTF-8; bytes that are not are carried through as surrogate escapes, as Python does for file names.
#ifndef MRCOMMON_PYTHON_CONVERSIONS_H
#define MRCOMMON_PYTHON_CONVERSIONS_H

#include <MRCommon/basic/Color4.h>
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/basic/Tuple.h>
#include <MRCommon/basic/Vector3.h>
#include <pybind11/numpy.h>

#include <string>
#include <string_view>

namespace py = pybind11;

[[noreturn]] void throwOverflow(std::string const& message); ///< OverflowError

///@{
/// The bytes between Python's str and the library. A str that contains NUL is a ValueError.
py::str toPython(std::string_view text);
std::string textFrom(py::handle object);
///@}

std::string pathFrom(py::handle object);       ///< from str, bytes or os.PathLike; TypeError otherwise
py::str pathToPython(std::string const& path); ///< as os.fsdecode

///@{
/// A value as a Python object: int, float, bool, str, tuple of float, list of str, tuple (label, index).
py::object toPython(int value);
py::object toPython(long long value);
py::object toPython(float value);
py::object toPython(double value);
py::object toPython(bool value);
py::object toPython(quarn::QN_String const& value);
py::object toPython(quarn::Vector3<float> const& value);
py::object toPython(quarn::Vector3<double> const& value);
py::object toPython(quarn::Color4<float> const& value);
py::object toPython(quarn::Color4<double> const& value);
py::object toPython(quarn::Array<quarn::QN_String> const& value);
py::object toPython(quarn::Tuple2<quarn::QN_String, int> const& value);
///@}

///@{
/// A Python object as a value. Throws TypeError for another type, OverflowError for a number that does not fit and
/// ValueError for another number of components; `value` is then unchanged.
void fromPython(py::handle object, unsigned int& value);
void fromPython(py::handle object, int& value);
void fromPython(py::handle object, long long& value);
void fromPython(py::handle object, float& value);
void fromPython(py::handle object, double& value);
void fromPython(py::handle object, bool& value);
void fromPython(py::handle object, quarn::QN_String& value);
void fromPython(py::handle object, quarn::Vector3<float>& value);
void fromPython(py::handle object, quarn::Vector3<double>& value);
void fromPython(py::handle object, quarn::Color4<float>& value);
void fromPython(py::handle object, quarn::Color4<double>& value);
void fromPython(py::handle object, quarn::Array<quarn::QN_String>& value);
///@}

template <class Value> Value valueFrom(py::handle object) {
    Value value;
    fromPython(object, value);
    return value;
}

///@{
/// Returns what numpy reads as an array of integers or reals; TypeError, which names the argument, for anything else.
/// As in numpy, numbers beyond the range of single precision become infinite.
py::array arrayFrom(py::handle object, char const* name);
template <class Real> py::array_t<Real> numbersFrom(py::handle object, char const* name) {
    auto numbers =
        py::array_t<Real, py::array::c_style | py::array::forcecast>::ensure(arrayFrom(object, name));
    if (!numbers) throw py::error_already_set();
    return std::move(numbers);
}
///@}

#endif
