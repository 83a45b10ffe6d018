#include "Property.h"

#include "Conversions.h"

#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/properties/detail/PropertyClass.h>
#include <MRCommon/properties/detail/RecordBuffer.h>
#include <MRCommon/properties/PptyArrayString.h>
#include <MRCommon/properties/RangeVectPpty.h>
#include <MRCommon/properties/RgdBasicPpty.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <type_traits>
#include <typeinfo>
#include <utility>

using namespace quarn;

namespace {

template <class> constexpr bool isRanged = false;
template <class T, unsigned int code> constexpr bool isRanged<RangePpty<T, code>> = true;

/// The value type of the template that a visit hands over.
template <class Typed>
using ValueOf = std::remove_pointer_t<decltype(std::declval<Typed&>().getRefToValue())>;

/// Calls `visit` with the property as the template that holds its value, a BasePpty or RangePpty; false if the kind
/// has none that is known here. Enumerations are not visited: their choices have accessors of their own.
template <class Visit> bool visitProperty(Ppty& property, Visit const& visit) {
    auto const visitAs = [&](auto* typed) {
        if (typed != nullptr) visit(*typed);
        return typed != nullptr;
    };
#define MRCOMMON_VISIT(BASE, T, CODE)                                                                        \
    case CODE: return visitAs(dynamic_cast<BASE<T, CODE>*>(&property))
    switch (property.getType()) {
        MRCOMMON_VISIT(BasePpty, int, Ppty::TYPE_INT);
        MRCOMMON_VISIT(BasePpty, long long, Ppty::TYPE_INT64);
        MRCOMMON_VISIT(BasePpty, float, Ppty::TYPE_FLOAT);
        MRCOMMON_VISIT(BasePpty, double, Ppty::TYPE_DOUBLE);
        MRCOMMON_VISIT(BasePpty, bool, Ppty::TYPE_BOOL);
        MRCOMMON_VISIT(BasePpty, QN_String, Ppty::TYPE_STRING);
        MRCOMMON_VISIT(BasePpty, Vector3<float>, Ppty::TYPE_VECTOR3F);
        MRCOMMON_VISIT(BasePpty, Vector3<double>, Ppty::TYPE_VECTOR3D);
        MRCOMMON_VISIT(BasePpty, Color4<float>, Ppty::TYPE_COLOR4F);
        MRCOMMON_VISIT(BasePpty, Color4<double>, Ppty::TYPE_COLOR4D);
        MRCOMMON_VISIT(BasePpty, Array<QN_String>, Ppty::TYPE_ARRAY_STRING);
        MRCOMMON_VISIT(BasePpty, QN_String, Ppty::TYPE_FILE);
        MRCOMMON_VISIT(BasePpty, QN_String, Ppty::TYPE_DIRECTORY);
        MRCOMMON_VISIT(RangePpty, int, Ppty::TYPE_RANGE_INT);
        MRCOMMON_VISIT(RangePpty, long long, Ppty::TYPE_RANGE_INT64);
        MRCOMMON_VISIT(RangePpty, float, Ppty::TYPE_RANGE_FLOAT);
        MRCOMMON_VISIT(RangePpty, double, Ppty::TYPE_RANGE_DOUBLE);
        MRCOMMON_VISIT(RangePpty, Vector3<float>, Ppty::TYPE_RANGE_VECTOR3F);
        MRCOMMON_VISIT(RangePpty, Vector3<double>, Ppty::TYPE_RANGE_VECTOR3D);
    default: return false;
    }
#undef MRCOMMON_VISIT
}

[[noreturn]] void throwNoAttribute(Ppty const& property, char const* attribute) {
    throw py::attribute_error(std::string(property.getClassName().c_str()) + " has no " + attribute);
}

template <class Visit> void visitValue(Ppty& property, Visit const& visit) {
    if (!visitProperty(property, visit)) throwNoAttribute(property, "value");
}

template <class Visit> void visitRange(Ppty& property, Visit const& visitRanged) {
    bool ranged = false;
    visitProperty(property, [&](auto& typed) {
        if constexpr (isRanged<std::decay_t<decltype(typed)>>) {
            visitRanged(typed);
            ranged = true;
        }
    });
    if (!ranged) throwNoAttribute(property, "bounds");
}

/// Reads the object as a value for `typed`.
template <class Typed> auto valueFor(Typed const&, py::handle object) {
    return valueFrom<ValueOf<Typed>>(object);
}

bool choose(PptyEnum& property, py::handle object) {
    if (object.is_none()) return property.setValue(Tuple2<QN_String, int>(QN_String(), -1));
    if (PyUnicode_Check(object.ptr())) return property.setValue(ItemVariant(textFrom(object).c_str()));
    return property.setValue(ItemVariant(valueFrom<int>(object)));
}

QN_MetaClassBase const& classNamed(std::string const& kind) {
    QN_MetaClassBase const* const found = QN_MetaClassBase::find(QN_String(kind.c_str()));
    if (found == nullptr) throw py::value_error("unknown kind " + kind);
    if (!detail::isPropertyClass(*found)) throw py::value_error(kind + " is not a property");
    return *found;
}

} // namespace

std::unique_ptr<Ppty> makeProperty(std::string const& kind) {
    std::unique_ptr<Ppty> property(static_cast<Ppty*>(classNamed(kind).metaNew()));
    if (property == nullptr) throw py::value_error(kind + " has no objects");
    visitProperty(*property, [](auto& typed) {
        using T = ValueOf<std::decay_t<decltype(typed)>>;
        if constexpr (std::is_same_v<T, Vector3<float>> || std::is_same_v<T, Vector3<double>>)
            *typed.getRefToValue() = T(0, 0, 0);
    });
    return property;
}

void* Property::operator new(std::size_t size) {
    if (void* const memory = std::calloc(1, size)) return memory;
    throw std::bad_alloc();
}

void Property::operator delete(void* memory) { std::free(memory); }

Ppty& Property::get() const {
    if (property_ == nullptr) throw py::type_error("the property was not initialised");
    return *property_;
}

PptyEnum& Property::enumeration() const {
    auto* const choice = dynamic_cast<PptyEnum*>(&get());
    if (choice == nullptr) throwNoAttribute(get(), "choices");
    return *choice;
}

py::object Property::value() const {
    if (auto* const choice = dynamic_cast<PptyEnum*>(&get())) {
        auto const& [label, number] = *choice->getRefToValue();
        return label.length() == 0 && number == -1 ? py::none() : toPython(label);
    }
    py::object result;
    visitValue(*property_, [&](auto& typed) { result = toPython(*typed.getRefToValue()); });
    return result;
}

void Property::setValue(py::handle object) {
    bool taken = false;
    if (auto* const choice = dynamic_cast<PptyEnum*>(&get()))
        taken = choose(*choice, object);
    else
        visitValue(*property_, [&](auto& typed) { taken = typed.setValue(valueFor(typed, object)); });
    if (taken) return;
    PyErr_Format(PyExc_ValueError, "%s %R refuses %R", property_->getClassName().c_str(),
                 toPython(property_->getName()).ptr(), object.ptr());
    throw py::error_already_set();
}

void Property::storeValue(py::handle object) {
    visitValue(get(), [&](auto& typed) { *typed.getRefToValue() = valueFor(typed, object); });
}

py::tuple Property::choice() const { return toPython(*enumeration().getRefToValue()); }

void Property::storeChoice(py::handle label, py::handle number) {
    enumeration().setValue(Tuple2<QN_String, int>(valueFrom<QN_String>(label), valueFrom<int>(number)));
}

/// Returns as many pairs as both lists of the property have entries.
py::list Property::choices() const {
    PptyEnum const& choice = enumeration();
    unsigned int const count = std::min(choice.itemLabels.size(), choice.itemValues.size());
    py::list pairs;
    for (unsigned int i = 0; i < count; ++i)
        pairs.append(py::make_tuple(toPython(choice.itemLabels[i]), choice.itemValues[i]));
    return pairs;
}

void Property::setChoices(py::iterable const& pairs) {
    Array<QN_String> labels;
    Array<int> numbers;
    for (py::handle const item : pairs) {
        if (!py::isinstance<py::sequence>(item) || py::len(item) != 2)
            throw py::type_error("choices are pairs of label and number");
        auto const pair = py::reinterpret_borrow<py::sequence>(item);
        labels.push_back(valueFrom<QN_String>(py::object(pair[0])));
        numbers.push_back(valueFrom<int>(py::object(pair[1])));
    }
    PptyEnum& choice = enumeration();
    choice.itemLabels = labels;
    choice.itemValues = numbers;
}

py::object Property::minimum() const {
    py::object result;
    visitRange(get(), [&](auto& ranged) { result = toPython(ranged.getMin()); });
    return result;
}

py::object Property::maximum() const {
    py::object result;
    visitRange(get(), [&](auto& ranged) { result = toPython(ranged.getMax()); });
    return result;
}

void Property::setMinimum(py::handle object) {
    visitRange(get(), [&](auto& ranged) { ranged.setMin(valueFor(ranged, object)); });
}

void Property::setMaximum(py::handle object) {
    visitRange(get(), [&](auto& ranged) { ranged.setMax(valueFor(ranged, object)); });
}

py::bytes Property::record(bool endian) const {
    detail::RecordBuffer buffer;
    bool const isWritten =
        endian ? buffer.write<FileStreamEndian>(get()) : buffer.write<FileStreamRaw>(get());
    if (!isWritten) throw std::bad_alloc();
    return {buffer.data(), buffer.size()};
}

PropertyObjects::PropertyObjects() : base_(py::detail::get_type_info(typeid(Property))) {}

py::handle PropertyObjects::classOf(Ppty const& property) {
    py::object& found = classes_[property.getClassId()];
    if (!found)
        found = py::module_::import("mrcommon.properties")
                    .attr("_class_named")(toPython(property.getClassName()));
    return found;
}

/// Does what pybind11 does for an object of Property itself, which has no public function for classes below it.
py::object PropertyObjects::operator()(std::unique_ptr<Ppty> property) {
    auto* const type = reinterpret_cast<PyTypeObject*>(classOf(*property).ptr());
    auto object = py::reinterpret_steal<py::object>(py::detail::make_new_instance(type));
    auto* const instance = reinterpret_cast<py::detail::instance*>(object.ptr());
    instance->get_value_and_holder().value_ptr() = new Property(std::move(property));
    base_->init_instance(instance, nullptr);
    if (PyType_IS_GC(type)) PyObject_GC_UnTrack(instance); // it refers to nothing but its class
    return object;
}
