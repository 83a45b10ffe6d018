// The base of all property classes, the kinds, and plug-ins.
#include "bindings.h"
#include "Conversions.h"
#include "Property.h"

#include <MRCommon/properties/detail/PropertyClass.h>
#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/system/LibLoader.h>

#include <memory>
#include <string>

using namespace quarn;

namespace {

Property makeNamed(std::string const& kind, std::string const& name) {
    return Property(std::unique_ptr<Ppty>(makeProperty(kind)->cloneWithNewName(QN_String(name.c_str()))));
}

py::object copyOf(Property const& property) {
    return PropertyObjects()(std::unique_ptr<Ppty>(property.get().clone()));
}

py::object copyWithName(Property const& property, py::object const& name) {
    return PropertyObjects()(
        std::unique_ptr<Ppty>(property.get().cloneWithNewName(valueFrom<QN_String>(name))));
}

py::list kinds() {
    py::list names;
    for (QN_MetaClassBase const* const metaClass : QN_MetaClassBase::registered())
        if (detail::isPropertyClass(*metaClass)) names.append(toPython(metaClass->className()));
    return names;
}

void loadPlugIn(std::string const& path) {
    if (LibLoader::load(QN_String(path.c_str())) != nullptr) return;
    throw py::import_error(LibLoader::lastError());
}

} // namespace

void bindProperties(py::module_& module) {
    py::class_<Property>(module, "Property", "What the Python classes of all kinds have in common.")
        .def(py::init([](py::object const& kind, py::object const& name) {
                 return makeNamed(textFrom(kind), textFrom(name));
             }),
             py::arg("kind"), py::arg("name"))
        .def_property_readonly(
            "name", [](Property const& p) { return toPython(p.get().getName()); },
            "The name. A property keeps its name; `with_name` returns a copy with another one.")
        .def_property_readonly(
            "kind", [](Property const& p) { return toPython(p.get().getClassName()); },
            "The registered name of the class, such as \"PptyFloat\".")
        .def_property("value", &Property::value, &Property::setValue,
                      R"(The value, of the type that the class states.

Setting raises TypeError for another type, OverflowError for a number that does not fit and ValueError for a value that
the bounds or the table refuse; the value is then unchanged.)")
        .def("to_bytes", &Property::record, py::arg("endian") = false,
             R"(Returns the record, as a FileStreamRaw writes it, or with `endian` as a FileStreamEndian does.

As in the library, a record of the latter has the name alone, except for PptyArrayString and PptyEnum.)")
        .def("with_name", &copyWithName, py::arg("name"),
             "Returns a copy with another name. TypeError for what is no str, ValueError for one with NUL.")
        .def("__str__", [](Property const& p) { return toPython(p.get().toStr()); })
        .def("__copy__", &copyOf)
        .def("__deepcopy__", [](Property const& p, py::object const&) { return copyOf(p); })
        .def("__reduce__", &refuseToReduce)
        .def_property_readonly("_type_code", [](Property const& p) { return p.get().getType(); })
        .def("_store", &Property::storeValue)
        .def_property_readonly("_choice", &Property::choice)
        .def("_store_choice", &Property::storeChoice)
        .def_property("_choices", &Property::choices, &Property::setChoices)
        .def_property("_minimum", &Property::minimum, &Property::setMinimum)
        .def_property("_maximum", &Property::maximum, &Property::setMaximum);

    module.def("kinds", &kinds);
    module.def("load_plugin", [](py::object const& path) { loadPlugIn(pathFrom(path)); });
}
