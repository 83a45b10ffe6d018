// Properties, their records and the files of both kinds. Python's classes (mrcommon/properties.py) hold a Property.
#include "bindings.h"
#include "Conversions.h"
#include "Failures.h"

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

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

using namespace quarn;

namespace {

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
template <class Typed>
using ValueOf = std::remove_pointer_t<decltype(std::declval<Typed&>().getRefToValue())>;

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
    if (property == nullptr)
        throw py::value_error(std::string(metaClass.className().c_str()) + " has no objects");
    visitProperty(*property, [](auto& typed) {
        using T = ValueOf<std::decay_t<decltype(typed)>>;
        if constexpr (std::is_same_v<T, Vector3<float>> || std::is_same_v<T, Vector3<double>>)
            *typed.getRefToValue() = T(0, 0, 0);
    });
    return property;
}

// ---------------------------------------------------------------------------
// Streams on memory and on files. What follows runs without the interpreter's lock.

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// A FILE on memory that grows.
class MemoryFile {
public:
    MemoryFile() : file_(open_memstream(&data_, &size_)) {
        if (file_ == nullptr) throw std::bad_alloc();
    }
    ~MemoryFile() {
        file_.reset();
        std::free(data_);
    }
    MemoryFile(MemoryFile const&) = delete;
    MemoryFile& operator=(MemoryFile const&) = delete;

    std::FILE* file() const { return file_.get(); }
    std::string_view bytes() {
        if (std::fflush(file_.get()) != 0) throw std::bad_alloc();
        return {data_, size_};
    }

private:
    char* data_ = nullptr;
    std::size_t size_ = 0;
    File file_;
};

/// Opens a regular file, or another one that can be opened without waiting for anybody.
File openPath(std::string const& path) {
    int const descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) throw SystemError{errno, path};
    File file(fdopen(descriptor, "rb"));
    if (file == nullptr) throw SystemError{errno, path};
    struct stat status;
    if (fstat(descriptor, &status) != 0) throw SystemError{errno, path};
    if (S_ISDIR(status.st_mode)) throw SystemError{EISDIR, path};
    return file;
}

File openBytes(std::string_view data) {
    if (data.empty()) return openPath("/dev/null"); // some platforms refuse memory of no bytes
    File file(fmemopen(const_cast<char*>(data.data()), data.size(), "rb"));
    if (file == nullptr) throw std::bad_alloc();
    return file;
}

bool atEnd(std::FILE* file) {
    errno = 0;
    int const next = std::fgetc(file);
    if (next != EOF) std::ungetc(next, file);
    if (next == EOF && std::ferror(file) != 0) throw SystemError{errno, {}};
    return next == EOF;
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
template <class Take>
std::size_t forEachRecord(std::FILE* file, Kinds const& kinds, bool endian, Take const& take) {
    std::size_t count = 0;
    for (std::size_t i = 0;; ++i, ++count) {
        if (i == kinds.patterns.size()) {
            if (!kinds.repeatFrom) break;
            i = *kinds.repeatFrom;
        }
        bool const mayEnd = kinds.repeatFrom && i == *kinds.repeatFrom;
        if (mayEnd && atEnd(file)) return count;
        RecordCheck const check = checkOne(*kinds.patterns[i], file, endian);
        if (!check.good()) throw RecordFault(check);
        take(*kinds.patterns[i], check);
    }
    if (!atEnd(file))
        throw RecordFault("bytes follow the last record", static_cast<unsigned long long>(ftello(file)),
                          "TrailingBytes");
    return count;
}

// ---------------------------------------------------------------------------
// What Python sees

class Property {
public:
    explicit Property(std::unique_ptr<Ppty> property) : property_(std::move(property)) {}

    Ppty& get() const { return *property_; }

    py::object value() const {
        if (auto* const choice = dynamic_cast<PptyEnum*>(property_.get()))
            return toPython(*choice->getRefToValue());
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
            taken = typed.setValue(valueFrom<ValueOf<std::decay_t<decltype(typed)>>>(object));
        });
        return taken;
    }

    /// As a constructor does: bounds are not checked.
    void storeValue(py::handle object) {
        visit("value", [&](auto& typed) {
            *typed.getRefToValue() = valueFrom<ValueOf<std::decay_t<decltype(typed)>>>(object);
        });
    }

    /// An enumeration's label and number, whatever its table contains.
    void storeChoice(py::handle label, py::handle number) {
        enumeration().setValue(Tuple2<QN_String, int>(valueFrom<QN_String>(label), valueFrom<int>(number)));
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
            labels.push_back(valueFrom<QN_String>(py::object(pair[0])));
            numbers.push_back(valueFrom<int>(py::object(pair[1])));
        }
        PptyEnum& choice = enumeration();
        choice.itemLabels = labels;
        choice.itemValues = numbers;
    }

    py::bytes record(bool endian) const {
        MemoryFile memory;
        writeRecord(*property_, memory.file(), endian);
        std::string_view const bytes = memory.bytes();
        return {bytes.data(), bytes.size()};
    }

    Property copy(std::optional<std::string> const& name) const {
        return Property(std::unique_ptr<Ppty>(name ? property_->cloneWithNewName(QN_String(name->c_str()))
                                                   : property_->clone()));
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
            set(ranged, valueFrom<ValueOf<std::decay_t<decltype(ranged)>>>(object));
        });
    }

    PptyEnum& enumeration() const {
        auto* const choice = dynamic_cast<PptyEnum*>(property_.get());
        if (choice == nullptr) throwNoAttribute(*property_, "choices");
        return *choice;
    }

    static bool setChoice(PptyEnum& choice, py::handle object) {
        if (PyUnicode_Check(object.ptr())) return choice.setValue(ItemVariant(textFrom(object).c_str()));
        return choice.setValue(ItemVariant(valueFrom<int>(object)));
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

// ---------------------------------------------------------------------------
// Files of records. Whatever waits for a disk or reads much runs without the interpreter's lock.

/// How the records of a file are read.
struct RecordOptions {
    RecordOptions(std::vector<std::string> const& names, std::optional<std::size_t> repeatFrom, bool isEndian,
                  py::object const& workSpace)
        : kinds(names, repeatFrom), endian(isEndian) {
        if (!workSpace.is_none()) version = valueFrom<unsigned int>(workSpace);
    }
    Kinds kinds;
    bool endian;
    WorkSpaceVersion version;
};

/// Runs `act` without the interpreter's lock; what it throws names the file.
template <class Act> auto unlocked(std::string const& path, Act const& act) {
    py::gil_scoped_release const released;
    try {
        return act();
    } catch (RecordFault& fault) {
        fault.path = path;
        throw;
    } catch (SystemError& error) {
        error.path = path;
        throw;
    }
}

using Records = std::vector<std::unique_ptr<Ppty>>;

Records readAll(File const& file, RecordOptions const& options) {
    Records records;
    ScopedWorkSpace const workSpace(options.version);
    forEachRecord(file.get(), options.kinds, options.endian, [&](Ppty const& pattern, RecordCheck const&) {
        records.emplace_back(pattern.clone());
        readOne(*records.back(), file.get(), options.endian);
    });
    return records;
}

std::size_t checkAll(File const& file, RecordOptions const& options) {
    ScopedWorkSpace const workSpace(options.version);
    return forEachRecord(file.get(), options.kinds, options.endian,
                         [&](Ppty const&, RecordCheck const& check) {
                             if (fseeko(file.get(), static_cast<off_t>(check.offset), SEEK_SET) != 0)
                                 throw SystemError{errno, {}};
                         });
}

py::list propertiesOf(Records records) {
    py::list properties;
    for (std::unique_ptr<Ppty>& property : records) properties.append(Property(std::move(property)));
    return properties;
}

py::tuple checkFile(std::string const& path, RecordOptions const& options) {
    std::size_t records = 0;
    off_t bytes = 0;
    unlocked(path, [&] {
        File const file = openPath(path);
        records = checkAll(file, options);
        bytes = ftello(file.get());
    });
    return py::make_tuple(records, bytes);
}

// ---------------------------------------------------------------------------
// Files that describe themselves. An entry of an unknown class is a tuple (class, schema, record).

void throwUnless(FileStatus const& status, std::string const& path) {
    if (status.ok()) return;
    if (status.systemError != 0) throw SystemError{status.systemError, path};
    if (status.code == FileStatus::CannotOpen) {
        PyErr_SetString(PyExc_OSError, status.message.c_str());
        throw py::error_already_set();
    }
    if (status.code != FileStatus::Damaged) throw py::value_error(status.message);
    RecordFault fault(status.fault);
    fault.message = status.message.substr(path.size() + 2); // the exception adds the path
    fault.path = path;
    throw fault;
}

py::list loadFile(std::string const& path) {
    PropertyList list;
    throwUnless(unlocked(path, [&] { return loadProperties(path, list); }), path);
    py::list entries;
    for (std::size_t i = 0; i < list.size(); ++i)
        if (Ppty const* const property = list.property(i))
            entries.append(Property(std::unique_ptr<Ppty>(property->clone())));
        else
            entries.append(py::make_tuple(toPython(std::string_view(list.className(i))),
                                          list.unknownSchema(i), py::bytes(list.unknownRecord(i))));
    return entries;
}

/// Saves copies, which no other thread can change meanwhile.
void saveFile(std::string const& path, py::iterable const& entries) {
    PropertyList list;
    for (py::handle const entry : entries)
        if (py::isinstance<Property>(entry)) {
            list.add(entry.cast<Property const&>().clone());
        } else {
            auto const [className, schema, record] =
                entry.cast<std::tuple<py::object, py::object, py::bytes>>();
            list.addUnknown(textFrom(className), valueFrom<unsigned int>(schema), std::string(record));
        }
    throwUnless(unlocked(path, [&] { return saveProperties(path, list); }), path);
}

void loadPlugIn(std::string const& path) {
    if (LibLoader::load(QN_String(path.c_str())) != nullptr) return;
    throw py::import_error(LibLoader::lastError());
}

} // namespace

void bindProperties(py::module_& module) {
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
        .def("__reduce__", &refuseToReduce)
        .def("text", [](Property const& p) { return toPython(p.get().toStr()); })
        .def("record", &Property::record, py::arg("endian"))
        .def("copy", [](Property const& p, py::object const& name) {
            return p.copy(name.is_none() ? std::nullopt : std::optional(textFrom(name)));
        });

    module.def("kinds", &kinds);
    module.def("load_plugin", [](py::object const& path) { loadPlugIn(pathFrom(path)); });
    module.def("load_file", [](py::object const& path) { return loadFile(pathFrom(path)); });
    module.def("save_file", [](py::object const& path, py::iterable const& entries) {
        saveFile(pathFrom(path), entries);
    });
    module.def("read_bytes",
               [](py::bytes const& data, std::vector<std::string> const& kinds,
                  std::optional<std::size_t> repeatFrom, bool endian, py::object const& version) {
                   RecordOptions const options(kinds, repeatFrom, endian, version);
                   std::string_view const bytes(data);
                   return propertiesOf(unlocked({}, [&] { return readAll(openBytes(bytes), options); }));
               });
    module.def("read_file",
               [](py::object const& path, std::vector<std::string> const& kinds,
                  std::optional<std::size_t> repeatFrom, bool endian, py::object const& version) {
                   RecordOptions const options(kinds, repeatFrom, endian, version);
                   std::string const name = pathFrom(path);
                   return propertiesOf(unlocked(name, [&] { return readAll(openPath(name), options); }));
               });
    module.def("check_file",
               [](py::object const& path, std::vector<std::string> const& kinds,
                  std::optional<std::size_t> repeatFrom, bool endian, py::object const& version) {
                   return checkFile(pathFrom(path), RecordOptions(kinds, repeatFrom, endian, version));
               });
}
