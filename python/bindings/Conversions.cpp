#include "Conversions.h"

#include <pybind11/numpy.h>

#include <array>
#include <cmath>
#include <limits>

using namespace quarn;

namespace {

std::string typeName(py::handle object) { return Py_TYPE(object.ptr())->tp_name; }

bool isBool(py::handle object) { return PyBool_Check(object.ptr()) || typeName(object) == "numpy.bool_"; }

[[noreturn]] void throwType(char const* wanted, py::handle object) {
    throw py::type_error(std::string(wanted) + " expected, not " + typeName(object));
}

template <class Integer> Integer integerFrom(py::handle object) {
    if (isBool(object) || !PyIndex_Check(object.ptr())) throwType("an integer", object);
    auto const index = py::reinterpret_steal<py::object>(PyNumber_Index(object.ptr()));
    if (!index) throw py::error_already_set();
    int overflow = 0;
    long long const value = PyLong_AsLongLongAndOverflow(index.ptr(), &overflow);
    if (value == -1 && PyErr_Occurred() != nullptr) throw py::error_already_set();
    if (overflow != 0 || value < std::numeric_limits<Integer>::min() ||
        value > std::numeric_limits<Integer>::max())
        throwOverflow(std::string(py::str(index)) + " does not fit in " +
                      std::to_string(8 * sizeof(Integer)) + " bits");
    return static_cast<Integer>(value);
}

template <class Real> Real narrowed(double value) {
    auto const result = static_cast<Real>(value);
    if (std::isinf(result) && !std::isinf(value))
        throwOverflow("the number does not fit in single precision");
    return result;
}

template <class Real> Real realFrom(py::handle object) {
    if (isBool(object) || PyUnicode_Check(object.ptr()) || PyBytes_Check(object.ptr()) ||
        !PyNumber_Check(object.ptr()))
        throwType("a number", object);
    double const value = PyFloat_AsDouble(object.ptr());
    if (value == -1 && PyErr_Occurred() != nullptr) throw py::error_already_set();
    return narrowed<Real>(value);
}

/// Reads the components of a tuple or list, whose elements may be of any numeric type, or of what numpy reads as numbers.
template <class Real, std::size_t count> std::array<Real, count> componentsFrom(py::handle object) {
    bool const isPlain = PyTuple_Check(object.ptr()) || PyList_Check(object.ptr());
    py::object const numbers = isPlain ? py::reinterpret_borrow<py::object>(object)
                                       : py::object(numbersFrom<double>(object, "a vector"));
    if (!isPlain && py::reinterpret_borrow<py::array>(numbers).ndim() != 1)
        throw py::value_error("one dimension expected");
    if (py::len(numbers) != count) throw py::value_error(std::to_string(count) + " components expected");
    std::array<Real, count> components;
    for (std::size_t i = 0; i < count; ++i)
        components[i] = realFrom<Real>(py::reinterpret_borrow<py::sequence>(numbers)[i]);
    return components;
}

template <class Real> void vectorFrom(py::handle object, Vector3<Real>& value) {
    auto const c = componentsFrom<Real, 3>(object);
    value = {c[0], c[1], c[2]};
}

template <class Real> void colourFrom(py::handle object, Color4<Real>& value) {
    auto const c = componentsFrom<Real, 4>(object);
    value = {c[0], c[1], c[2], c[3]};
}

} // namespace

void throwOverflow(std::string const& message) {
    PyErr_SetString(PyExc_OverflowError, message.c_str());
    throw py::error_already_set();
}

py::str toPython(std::string_view text) {
    auto decoded = py::reinterpret_steal<py::str>(
        PyUnicode_DecodeUTF8(text.data(), static_cast<py::ssize_t>(text.size()), "surrogateescape"));
    if (!decoded) throw py::error_already_set();
    return decoded;
}

std::string textFrom(py::handle object) {
    if (!PyUnicode_Check(object.ptr())) throwType("str", object);
    auto const encoded =
        py::reinterpret_steal<py::bytes>(PyUnicode_AsEncodedString(object.ptr(), "utf-8", "surrogateescape"));
    if (!encoded) throw py::error_already_set();
    std::string text = encoded;
    if (text.find('\0') != std::string::npos) throw py::value_error("embedded null character");
    return text;
}

std::string pathFrom(py::handle object) {
    PyObject* encoded = nullptr;
    if (PyUnicode_FSConverter(object.ptr(), &encoded) == 0) throw py::error_already_set();
    return py::reinterpret_steal<py::bytes>(encoded);
}

py::str pathToPython(std::string const& path) {
    auto decoded = py::reinterpret_steal<py::str>(
        PyUnicode_DecodeFSDefaultAndSize(path.data(), static_cast<py::ssize_t>(path.size())));
    if (!decoded) throw py::error_already_set();
    return decoded;
}

py::object toPython(int value) { return py::int_(value); }
py::object toPython(long long value) { return py::int_(value); }
py::object toPython(float value) { return py::float_(value); }
py::object toPython(double value) { return py::float_(value); }
py::object toPython(bool value) { return py::bool_(value); }
py::object toPython(QN_String const& value) {
    return toPython(std::string_view(value.data(), value.length()));
}
py::object toPython(Vector3<float> const& v) { return py::make_tuple(v.x, v.y, v.z); }
py::object toPython(Vector3<double> const& v) { return py::make_tuple(v.x, v.y, v.z); }
py::object toPython(Color4<float> const& c) { return py::make_tuple(c.r, c.g, c.b, c.a); }
py::object toPython(Color4<double> const& c) { return py::make_tuple(c.r, c.g, c.b, c.a); }

py::object toPython(Array<QN_String> const& value) {
    py::list list;
    for (QN_String const& text : value) list.append(toPython(text));
    return list;
}

py::object toPython(Tuple2<QN_String, int> const& value) {
    return py::make_tuple(toPython(value.first), value.second);
}

py::array arrayFrom(py::handle object, char const* name) {
    py::array array = py::array::ensure(object);
    if (!array) PyErr_Clear();
    char const kind = array ? array.dtype().kind() : '?';
    if (kind != 'i' && kind != 'u' && kind != 'f')
        throw py::type_error(std::string(name) + ": numbers expected, not " + typeName(object));
    return array;
}

void fromPython(py::handle object, unsigned int& value) { value = integerFrom<unsigned int>(object); }
void fromPython(py::handle object, int& value) { value = integerFrom<int>(object); }
void fromPython(py::handle object, long long& value) { value = integerFrom<long long>(object); }
void fromPython(py::handle object, float& value) { value = realFrom<float>(object); }
void fromPython(py::handle object, double& value) { value = realFrom<double>(object); }

void fromPython(py::handle object, bool& value) {
    if (!isBool(object)) throwType("bool", object);
    int const truth = PyObject_IsTrue(object.ptr());
    if (truth < 0) throw py::error_already_set();
    value = truth == 1;
}

void fromPython(py::handle object, QN_String& value) { value = QN_String(textFrom(object).c_str()); }
void fromPython(py::handle object, Vector3<float>& value) { vectorFrom(object, value); }
void fromPython(py::handle object, Vector3<double>& value) { vectorFrom(object, value); }
void fromPython(py::handle object, Color4<float>& value) { colourFrom(object, value); }
void fromPython(py::handle object, Color4<double>& value) { colourFrom(object, value); }

void fromPython(py::handle object, Array<QN_String>& value) {
    if (PyUnicode_Check(object.ptr()) || PyBytes_Check(object.ptr()) || !py::isinstance<py::iterable>(object))
        throwType("a sequence of str", object);
    Array<QN_String> texts;
    for (py::handle const item : object) texts.push_back(QN_String(textFrom(item).c_str()));
    value = texts;
}
