// Properties, their records and the files of both kinds. Python's classes (mrcommon/properties.py) hold a Property.
#include "bindings.h"
#include "Conversions.h"

#include <MRCommon/host/ConfigurationMngr.h>
#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/properties/PptyArrayString.h>
#include <MRCommon/properties/PptyEnum.h>
#include <MRCommon/properties/PropertyFile.h>
#include <MRCommon/properties/RangeVectPpty.h>
#include <MRCommon/properties/RecordCheck.h>
#include <MRCommon/properties/RgdBasicPpty.h>
#include <MRCommon/system/LibLoader.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <utility>
#include <vector>

using namespace quarn;

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

using WorkSpaceVersion = std::optional<unsigned int>;

/// While it lives, the host's "WorkSpace" has the given version; without one the host stays as it is. Calls without a
/// version run beside each other, since all of them see the same host; one with a version runs by itself.
class ScopedWorkSpace : public ConfigurationHost, ConfigurationObject {
public:
    explicit ScopedWorkSpace(WorkSpaceVersion version) : version_(version) {
        if (!version_) {
            shared_ = std::shared_lock(mutex());
            return;
        }
        exclusive_ = std::unique_lock(mutex());
        previous_ = std::exchange(ConfigurationMngr::instance().host, this);
    }
    ~ScopedWorkSpace() override {
        if (version_) ConfigurationMngr::instance().host = previous_;
    }
    ScopedWorkSpace(ScopedWorkSpace const&) = delete;
    ScopedWorkSpace& operator=(ScopedWorkSpace const&) = delete;

    ConfigurationObject* getObject(QN_String const& name) override {
        if (name == "WorkSpace") return this;
        return previous_ == nullptr ? nullptr : previous_->getObject(name);
    }
    unsigned int getVersion() const override { return *version_; }

private:
    static std::shared_mutex& mutex() {
        static std::shared_mutex mutex;
        return mutex;
    }

    WorkSpaceVersion version_;
    ConfigurationHost* previous_ = nullptr;
    std::shared_lock<std::shared_mutex> shared_;
    std::unique_lock<std::shared_mutex> exclusive_;
};

/// A record that cannot be read; becomes a RecordError in Python.
struct RecordFault {
    std::string message, field;
    unsigned long long offset;
    char const* reason;
};

RecordFault faultOf(RecordCheck const& check) {
    static char const* const reasons[] = {"Good",         "EndsEarly",  "SizeBeyondFile",
                                          "Unterminated", "UnknownTag", "NotSeekable"};
    return {check.message(), check.field, check.offset, reasons[check.reason]};
}

void raiseRecordError(RecordFault const& fault) {
    py::object const type = py::module_::import("mrcommon.errors").attr("RecordError");
    py::object const error = type(toPython(std::string_view(fault.message)),
                                  toPython(std::string_view(fault.field)), fault.offset, fault.reason);
    PyErr_SetObject(type.ptr(), error.ptr());
}

template <class> constexpr bool isRanged = false;
template <class T, unsigned int code> constexpr bool isRanged<RangePpty<T, code>> = true;

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

/// The value type of the template that a visit hands over.
template <class Typed> using ValueOf = std::remove_pointer_t<decltype(std::declval<Typed&>().getRefToValue())>;

[[noreturn]] void throwNoAttribute(Ppty const& property, char const* attribute) {
    throw py::attribute_error(std::string(property.getClassName().c_str()) + " has no " + attribute);
}

/// Whether objects of the class are properties.
bool isPropertyClass(QN_MetaClassBase const& metaClass) {
    auto const throwNull = metaClass.upcastProbe().throwNull;
    if (throwNull == nullptr) return false;
    try {
        throwNull();
    } catch (Ppty const*) {
        return true;
    } catch (...) {
        return false;
    }
    return false;
}

QN_MetaClassBase const& classNamed(std::string const& kind) {
    QN_MetaClassBase const* const found = QN_MetaClassBase::find(QN_String(kind.c_str()));
    if (found == nullptr) throw py::value_error("unknown kind " + kind);
    if (!isPropertyClass(*found)) throw py::value_error(kind + " is not a property");
    return *found;
}

/// Makes a property with a default value; the components of a vector are zero.
std::unique_ptr<Ppty> makeProperty(QN_MetaClassBase const& metaClass) {
    std::unique_ptr<Ppty> property(static_cast<Ppty*>(metaClass.metaNew()));
    if (property == nullptr) throw py::value_error(std::string(metaClass.className().c_str()) + " has no objects");
    visitProperty(*property, [](auto& typed) {
        using T = ValueOf<std::decay_t<decltype(typed)>>;
        if constexpr (std::is_same_v<T, Vector3<float>> || std::is_same_v<T, Vector3<double>>)
            *typed.getRefToValue() = T(0, 0, 0);
    });
    return property;
}

// ---------------------------------------------------------------------------
// Streams on memory and on files

/// A FILE on memory that grows.
class MemoryFile {
public:
    MemoryFile() : file_(open_memstream(&data_, &size_)) {
        if (file_ == nullptr) throwOsError("a stream in memory");
    }
    ~MemoryFile() {
        file_.reset();
        std::free(data_);
    }
    MemoryFile(MemoryFile const&) = delete;
    MemoryFile& operator=(MemoryFile const&) = delete;

    std::FILE* file() const { return file_.get(); }
    py::bytes bytes() {
        if (std::fflush(file_.get()) != 0) throwOsError("a stream in memory");
        return {data_, size_};
    }

private:
    char* data_ = nullptr;
    std::size_t size_ = 0;
    File file_;
};

File openBytes(std::string_view data) {
    // A FILE without bytes is one of a size that nothing reads, since some platforms refuse a size of 0.
    static char nothing = 0;
    char* const start = data.empty() ? &nothing : const_cast<char*>(data.data());
    File file(fmemopen(start, data.empty() ? 1 : data.size(), "rb"));
    if (file == nullptr) throwOsError("a stream in memory");
    if (data.empty()) std::fseek(file.get(), 0, SEEK_END);
    return file;
}

File openPath(std::string const& path) {
    File file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr) throwOsError(path);
    return file;
}

bool atEnd(std::FILE* file) {
    int const next = std::fgetc(file);
    if (next == EOF) return true;
    std::ungetc(next, file);
    return false;
}

void writeRecord(Ppty const& property, std::FILE* file, bool endian) {
    if (endian) {
        FileStreamEndian stream(file);
        property.writeTo(stream);
    } else {
        FileStreamRaw stream(file);
        property.writeTo(stream);
    }
}

RecordCheck checkOne(Ppty const& pattern, std::FILE* file, bool endian) {
    if (endian) {
        FileStreamEndian stream(file);
        return checkRecord(pattern, stream);
    }
    FileStreamRaw stream(file);
    return checkRecord(pattern, stream);
}

/// Reads a record that has been checked.
void readOne(Ppty& property, std::FILE* file, bool endian) {
    if (endian) {
        FileStreamEndian stream(file);
        property.readFrom(stream);
    } else {
        FileStreamRaw stream(file);
        property.readFrom(stream);
    }
}

/// The classes of the records of a file, in order: all of them once, or from `repeatFrom` on again and again to the end.
struct Kinds {
    Kinds(std::vector<std::string> const& names, std::optional<std::size_t> first) : repeatFrom(first) {
        for (std::string const& name : names) patterns.push_back(makeProperty(classNamed(name)));
        if (repeatFrom && *repeatFrom >= patterns.size()) throw py::value_error("no kind to repeat");
    }
    std::vector<std::unique_ptr<Ppty>> patterns;
    std::optional<std::size_t> repeatFrom;
};

/// Calls `take(pattern)` for each record of the file, checked and with the file at its beginning; `take` moves past it.
template <class Take> std::size_t forEachRecord(std::FILE* file, Kinds const& kinds, bool endian, Take const& take) {
    std::size_t count = 0;
    for (std::size_t i = 0;; ++i, ++count) {
        if (i == kinds.patterns.size()) {
            if (!kinds.repeatFrom) break;
            i = *kinds.repeatFrom;
        }
        bool const mayEnd = kinds.repeatFrom && i == *kinds.repeatFrom;
        if (mayEnd && atEnd(file)) return count;
        RecordCheck const check = checkOne(*kinds.patterns[i], file, endian);
        if (!check.good()) throw faultOf(check);
        take(*kinds.patterns[i], check);
    }
    if (!atEnd(file))
        throw RecordFault{"bytes follow the last record", "", static_cast<unsigned long long>(std::ftell(file)),
                          "TrailingBytes"};
    return count;
}

// ---------------------------------------------------------------------------
// What Python sees

class Property {
public:
    explicit Property(std::unique_ptr<Ppty> property) : property_(std::move(property)) {}

    Ppty& get() const { return *property_; }

    py::object value() const {
        if (auto* const choice = dynamic_cast<PptyEnum*>(property_.get())) return toPython(*choice->getRefToValue());
        py::object result;
        if (!visitProperty(*property_, [&](auto& typed) { result = toPython(*typed.getRefToValue()); }))
            throwNoAttribute(*property_, "value");
        return result;
    }

    /// Through the typed setter, which checks bounds; false if it refuses.
    bool setValue(py::handle object) {
        if (auto* const choice = dynamic_cast<PptyEnum*>(property_.get())) return setChoice(*choice, object);
        bool taken = false;
        visit("value", [&](auto& typed) {
            ValueOf<std::decay_t<decltype(typed)>> value{};
            fromPython(object, value);
            taken = typed.setValue(value);
        });
        return taken;
    }

    /// As a constructor does: bounds are not checked.
    void storeValue(py::handle object) {
        visit("value", [&](auto& typed) {
            ValueOf<std::decay_t<decltype(typed)>> value{};
            fromPython(object, value);
            *typed.getRefToValue() = value;
        });
    }

    /// An enumeration's label and number, whatever its table contains.
    void storeChoice(py::handle label, py::handle number) {
        Tuple2<QN_String, int> pair;
        fromPython(label, pair.first);
        fromPython(number, pair.second);
        enumeration().setValue(pair);
    }

    py::object minimum() const {
        return bound("minimum", [](auto& ranged) { return ranged.getMin(); });
    }
    py::object maximum() const {
        return bound("maximum", [](auto& ranged) { return ranged.getMax(); });
    }
    void setMinimum(py::handle object) {
        setBound("minimum", object, [](auto& ranged, auto const& value) { ranged.setMin(value); });
    }
    void setMaximum(py::handle object) {
        setBound("maximum", object, [](auto& ranged, auto const& value) { ranged.setMax(value); });
    }

    /// The table of an enumeration: pairs of label and number, as many as both lists have.
    py::list choices() const {
        PptyEnum const& choice = enumeration();
        unsigned int const count = std::min(choice.itemLabels.size(), choice.itemValues.size());
        py::list pairs;
        for (unsigned int i = 0; i < count; ++i)
            pairs.append(py::make_tuple(toPython(choice.itemLabels[i]), choice.itemValues[i]));
        return pairs;
    }
    void setChoices(py::iterable const& pairs) {
        Array<QN_String> labels;
        Array<int> numbers;
        for (py::handle const item : pairs) {
            if (!py::isinstance<py::sequence>(item) || py::len(item) != 2)
                throw py::type_error("choices are pairs of label and number");
            auto const pair = py::reinterpret_borrow<py::sequence>(item);
            QN_String label;
            int number = 0;
            fromPython(py::object(pair[0]), label);
            fromPython(py::object(pair[1]), number);
            labels.push_back(label);
            numbers.push_back(number);
        }
        PptyEnum& choice = enumeration();
        choice.itemLabels = labels;
        choice.itemValues = numbers;
    }

    py::bytes record(bool endian) const {
        MemoryFile memory;
        writeRecord(*property_, memory.file(), endian);
        return memory.bytes();
    }

    Property copy(std::optional<std::string> const& name) const {
        return Property(std::unique_ptr<Ppty>(
            name ? property_->cloneWithNewName(QN_String(name->c_str())) : property_->clone()));
    }

    std::unique_ptr<Ppty> clone() const { return std::unique_ptr<Ppty>(property_->clone()); }

private:
    template <class Visit> void visit(char const* attribute, Visit const& visit) const {
        if (!visitProperty(*property_, visit)) throwNoAttribute(*property_, attribute);
    }

    template <class Visit> void visitRange(char const* attribute, Visit const& visitRanged) const {
        bool ranged = false;
        visitProperty(*property_, [&](auto& typed) {
            if constexpr (isRanged<std::decay_t<decltype(typed)>>) {
                visitRanged(typed);
                ranged = true;
            }
        });
        if (!ranged) throwNoAttribute(*property_, attribute);
    }

    template <class Get> py::object bound(char const* attribute, Get const& get) const {
        py::object result;
        visitRange(attribute, [&](auto& ranged) { result = toPython(get(ranged)); });
        return result;
    }

    template <class Set> void setBound(char const* attribute, py::handle object, Set const& set) {
        visitRange(attribute, [&](auto& ranged) {
            ValueOf<std::decay_t<decltype(ranged)>> value{};
            fromPython(object, value);
            set(ranged, value);
        });
    }

    PptyEnum& enumeration() const {
        auto* const choice = dynamic_cast<PptyEnum*>(property_.get());
        if (choice == nullptr) throwNoAttribute(*property_, "choices");
        return *choice;
    }

    static bool setChoice(PptyEnum& choice, py::handle object) {
        if (PyUnicode_Check(object.ptr())) return choice.setValue(ItemVariant(textFrom(object).c_str()));
        int number = 0;
        fromPython(object, number);
        return choice.setValue(ItemVariant(number));
    }

    std::unique_ptr<Ppty> property_;
};

Property makeNamed(std::string const& kind, std::string const& name) {
    std::unique_ptr<Ppty> const unnamed = makeProperty(classNamed(kind));
    return Property(std::unique_ptr<Ppty>(unnamed->cloneWithNewName(QN_String(name.c_str()))));
}

py::list kinds() {
    py::list names;
    for (QN_MetaClassBase const* const metaClass : QN_MetaClassBase::registered())
        if (isPropertyClass(*metaClass)) names.append(toPython(metaClass->className()));
    return names;
}

/// The records of a file in Python's hands; the interpreter's lock is released while they are read.
py::list readAll(std::FILE* file, Kinds const& kinds, bool endian, WorkSpaceVersion const& version) {
    std::vector<std::unique_ptr<Ppty>> read;
    {
        py::gil_scoped_release const released;
        ScopedWorkSpace const workSpace(version);
        forEachRecord(file, kinds, endian, [&](Ppty const& pattern, RecordCheck const&) {
            read.emplace_back(pattern.clone());
            readOne(*read.back(), file, endian);
        });
    }
    py::list properties;
    for (std::unique_ptr<Ppty>& property : read) properties.append(Property(std::move(property)));
    return properties;
}

std::size_t checkAll(std::FILE* file, Kinds const& kinds, bool endian, WorkSpaceVersion const& version) {
    py::gil_scoped_release const released;
    ScopedWorkSpace const workSpace(version);
    return forEachRecord(file, kinds, endian, [&](Ppty const&, RecordCheck const& check) {
        fseeko(file, static_cast<off_t>(check.offset), SEEK_SET);
    });
}

void loadPlugIn(std::string const& path) {
    if (LibLoader::load(QN_String(path.c_str())) != nullptr) return;
    throw py::import_error(LibLoader::lastError());
}

} // namespace

void bindProperties(py::module_& module) {
    py::register_exception_translator([](std::exception_ptr thrown) {
        try {
            if (thrown) std::rethrow_exception(thrown);
        } catch (RecordFault const& fault) {
            raiseRecordError(fault);
        }
    });

    py::class_<Property>(module, "Property", "A property of the library, owned.")
        .def(py::init([](py::str const& kind, py::str const& name) {
                 return makeNamed(textFrom(kind), textFrom(name));
             }),
             py::arg("kind"), py::arg("name"))
        .def_property_readonly("name", [](Property const& p) { return toPython(p.get().getName()); })
        .def_property_readonly("kind", [](Property const& p) { return toPython(p.get().getClassName()); })
        .def_property_readonly("type_code", [](Property const& p) { return p.get().getType(); })
        .def_property_readonly("value", &Property::value)
        .def("set_value", &Property::setValue)
        .def("store_value", &Property::storeValue)
        .def("store_choice", &Property::storeChoice)
        .def_property("minimum", &Property::minimum, &Property::setMinimum)
        .def_property("maximum", &Property::maximum, &Property::setMaximum)
        .def_property("choices", &Property::choices, &Property::setChoices)
        .def("text", [](Property const& p) { return toPython(p.get().toStr()); })
        .def("record", &Property::record, py::arg("endian"))
        .def("copy", [](Property const& p, py::object const& name) {
            return p.copy(name.is_none() ? std::nullopt : std::optional(textFrom(name)));
        });

    module.def("kinds", &kinds);
    module.def("load_plugin", [](py::object const& path) { loadPlugIn(pathFrom(path)); });
    module.def("read_bytes", [](py::bytes const& data, std::vector<std::string> const& kinds,
                                std::optional<std::size_t> repeatFrom, bool endian,
                                WorkSpaceVersion const& version) {
        return readAll(openBytes(std::string_view(data)).get(), Kinds(kinds, repeatFrom), endian, version);
    });
    module.def("read_file", [](py::object const& path, std::vector<std::string> const& kinds,
                               std::optional<std::size_t> repeatFrom, bool endian,
                               WorkSpaceVersion const& version) {
        return readAll(openPath(pathFrom(path)).get(), Kinds(kinds, repeatFrom), endian, version);
    });
    module.def("check_file", [](py::object const& path, std::vector<std::string> const& kinds,
                                std::optional<std::size_t> repeatFrom, bool endian,
                                WorkSpaceVersion const& version) {
        return checkAll(openPath(pathFrom(path)).get(), Kinds(kinds, repeatFrom), endian, version);
    });
}
