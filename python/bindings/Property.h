// Property: the base of the classes in mrcommon/properties.py. It owns a property of the library, and converts its value,
// bounds, table and record.
#ifndef MRCOMMON_PYTHON_PROPERTY_H
#define MRCOMMON_PYTHON_PROPERTY_H

#include <MRCommon/properties/PptyEnum.h>
#include <pybind11/pybind11.h>

#include <cstddef>
#include <map>
#include <memory>
#include <string>

namespace py = pybind11;

class Property {
public:
    explicit Property(std::unique_ptr<quarn::Ppty> property) : property_(std::move(property)) {}

    ///@{
    /// A method of an object whose __init__ was not called gets memory of this operator and no constructor runs: get()
    /// then finds a null pointer.
    static void* operator new(std::size_t size);
    static void operator delete(void* memory);
    ///@}

    quarn::Ppty& get() const; ///< TypeError if __init__ was not called

    py::object value() const;           ///< of an enumeration the label, or None if no choice was made
    void setValue(py::handle object);   ///< by the typed setter; ValueError if it refuses
    void storeValue(py::handle object); ///< as a constructor does: bounds are not checked

    py::tuple choice() const;                              ///< of an enumeration: label and number
    void storeChoice(py::handle label, py::handle number); ///< whatever the table contains
    py::list choices() const;                              ///< the table: pairs of label and number
    void setChoices(py::iterable const& pairs);

    py::object minimum() const;
    py::object maximum() const;
    void setMinimum(py::handle object);
    void setMaximum(py::handle object);

    py::bytes record(bool endian) const;

private:
    quarn::PptyEnum& enumeration() const;

    std::unique_ptr<quarn::Ppty> property_;
};

/// Makes a property with a default value; the components of a vector are zero. ValueError if there is no such kind.
std::unique_ptr<quarn::Ppty> makeProperty(std::string const& kind);

/// Makes objects of the classes in mrcommon/properties.py for properties that exist, each class being looked up once.
class PropertyObjects {
public:
    PropertyObjects();

    py::object operator()(std::unique_ptr<quarn::Ppty> property);

private:
    py::handle classOf(quarn::Ppty const& property);

    py::detail::type_info* base_;
    std::map<unsigned long long, py::object> classes_; // by class identifier
};

#endif
