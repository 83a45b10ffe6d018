// Identifiers of 16 bytes.
#include "bindings.h"
#include "Conversions.h"

#include <MRCommon/system/ByteId.h>

#include <cstring>

using namespace quarn;

namespace {

ByteId idFromBytes(std::string_view bytes) {
    if (bytes.size() != ByteId::BYTE_LENGTH) throw py::value_error("16 bytes expected");
    ByteId id;
    std::memcpy(id.array().data(), bytes.data(), bytes.size());
    return id;
}

py::bytes bytesOf(ByteId const& id) {
    return {reinterpret_cast<char const*>(id.getTuple().data()), ByteId::BYTE_LENGTH};
}

/// From the text that ByteId reads, 16 bytes, or a uuid.UUID. Unlike the library, a malformed text is a ValueError.
ByteId idFrom(py::object const& source) {
    if (PyBytes_Check(source.ptr())) return idFromBytes(std::string_view(source.cast<py::bytes>()));
    if (py::isinstance(source, py::module_::import("uuid").attr("UUID")))
        return idFromBytes(std::string_view(source.attr("bytes").cast<py::bytes>()));
    std::string const text = textFrom(source);
    ByteId const id{QN_String(text.c_str())};
    bool const zeros = text.find_first_not_of("0-") == std::string::npos;
    if (id.isZero() && !zeros) throw py::value_error("not a hexadecimal identifier: " + text);
    return id;
}

} // namespace

void bindIdentifiers(py::module_& module) {
    py::class_<ByteId>(module, "ByteId", R"(An identifier of 16 bytes, ordered by its bytes.

ByteId() is zero. ByteId(source) takes hexadecimal text with dashes anywhere (missing digits are 0, those after the 32nd
are not examined), 16 bytes, or a uuid.UUID. ValueError for malformed text and for other than 16 bytes.)")
        .def(py::init<>())
        .def(py::init(&idFrom), py::arg("source"))
        .def_property_readonly("bytes", &bytesOf, "The 16 bytes.")
        .def_property_readonly(
            "uuid",
            [](ByteId const& id) {
                return py::module_::import("uuid").attr("UUID")(py::arg("bytes") = bytesOf(id));
            },
            "The same bytes as a uuid.UUID.")
        .def_property_readonly("index", &ByteId::toQN_INDEX64,
                               "The last 8 bytes as a big-endian number, without its top bit.")
        .def(
            "next",
            [](ByteId id) {
                id.incIdFromLast8BytesAsIdx64();
                return id;
            },
            "Returns the identifier whose last 8 bytes are `index` + 1.")
        .def("__bytes__", &bytesOf)
        .def("__str__", [](ByteId const& id) { return toPython(id.toUuidString()); })
        .def("__repr__",
             [](ByteId const& id) { return std::string("ByteId('") + id.toUuidString().c_str() + "')"; })
        .def("__bool__", [](ByteId const& id) { return !id.isZero(); })
        .def("__hash__", [](ByteId const& id) { return py::hash(bytesOf(id)); })
        .def(
            "__eq__", [](ByteId const& a, ByteId const& b) { return a == b; }, py::is_operator())
        .def(
            "__ne__", [](ByteId const& a, ByteId const& b) { return a != b; }, py::is_operator())
        .def(
            "__lt__", [](ByteId const& a, ByteId const& b) { return a < b; }, py::is_operator())
        .def(
            "__le__", [](ByteId const& a, ByteId const& b) { return a <= b; }, py::is_operator())
        .def(
            "__gt__", [](ByteId const& a, ByteId const& b) { return a > b; }, py::is_operator())
        .def(
            "__ge__", [](ByteId const& a, ByteId const& b) { return a >= b; }, py::is_operator())
        .def("__reduce__", [](py::object const& self) {
            return py::make_tuple(py::type::of(self), py::make_tuple(bytesOf(self.cast<ByteId const&>())));
        });
}
