// Files of records, and files that describe themselves. Whatever waits for a disk or reads much runs without the
// interpreter's lock.
#include "bindings.h"
#include "Conversions.h"
#include "Failures.h"
#include "Property.h"
#include "Streams.h"

#include <MRCommon/host/ConfigurationMngr.h>
#include <MRCommon/properties/PropertyFile.h>
#include <MRCommon/properties/RecordCheck.h>
#include <pybind11/stl.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdio>
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

// ---------------------------------------------------------------------------
// Files of records

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

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

/// The classes of the records of a file, in order: all of them once, or from `repeatFrom` on again and again to the end.
struct Kinds {
    Kinds(std::vector<std::string> const& names, std::optional<std::size_t> first) : repeatFrom(first) {
        for (std::string const& name : names) patterns.push_back(makeProperty(name));
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
        RecordCheck const check =
            withStream(file, endian, [&](auto& stream) { return checkRecord(*kinds.patterns[i], stream); });
        if (!check.good()) throw RecordFault(check);
        take(*kinds.patterns[i], check);
    }
    if (!atEnd(file))
        throw RecordFault("bytes follow the last record", static_cast<unsigned long long>(ftello(file)),
                          "TrailingBytes");
    return count;
}

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
        withStream(file.get(), options.endian, [&](auto& stream) { records.back()->readFrom(stream); });
    });
    return records;
}

/// Moves past a record that has been checked. Reading a few bytes is faster than a seek, which is a system call.
void skip(std::FILE* file, RecordCheck const& check) {
    std::array<char, 1024> bytes;
    if (check.size <= bytes.size() && std::fread(bytes.data(), 1, check.size, file) == check.size) return;
    if (fseeko(file, static_cast<off_t>(check.offset), SEEK_SET) != 0) throw SystemError{errno, {}};
}

std::size_t checkAll(File const& file, RecordOptions const& options) {
    ScopedWorkSpace const workSpace(options.version);
    return forEachRecord(file.get(), options.kinds, options.endian,
                         [&](Ppty const&, RecordCheck const& check) { skip(file.get(), check); });
}

py::list objectsOf(Records records) {
    PropertyObjects objectOf;
    py::list objects(records.size());
    for (std::size_t i = 0; i < records.size(); ++i) objects[i] = objectOf(std::move(records[i]));
    return objects;
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
    PropertyObjects objectOf;
    py::list entries;
    for (std::size_t i = 0; i < list.size(); ++i)
        if (Ppty const* const property = list.property(i))
            entries.append(objectOf(std::unique_ptr<Ppty>(property->clone())));
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
            list.add(std::unique_ptr<Ppty>(entry.cast<Property const&>().get().clone()));
        } else {
            auto const [className, schema, record] =
                entry.cast<std::tuple<py::object, py::object, py::bytes>>();
            list.addUnknown(textFrom(className), valueFrom<unsigned int>(schema), std::string(record));
        }
    throwUnless(unlocked(path, [&] { return saveProperties(path, list); }), path);
}

} // namespace

void bindFiles(py::module_& module) {
    module.def("load_file", [](py::object const& path) { return loadFile(pathFrom(path)); });
    module.def("save_file", [](py::object const& path, py::iterable const& entries) {
        saveFile(pathFrom(path), entries);
    });
    module.def("read_bytes",
               [](py::bytes const& data, std::vector<std::string> const& kinds,
                  std::optional<std::size_t> repeatFrom, bool endian, py::object const& version) {
                   RecordOptions const options(kinds, repeatFrom, endian, version);
                   std::string_view const bytes(data);
                   return objectsOf(unlocked({}, [&] { return readAll(openBytes(bytes), options); }));
               });
    module.def("read_file",
               [](py::object const& path, std::vector<std::string> const& kinds,
                  std::optional<std::size_t> repeatFrom, bool endian, py::object const& version) {
                   RecordOptions const options(kinds, repeatFrom, endian, version);
                   std::string const name = pathFrom(path);
                   return objectsOf(unlocked(name, [&] { return readAll(openPath(name), options); }));
               });
    module.def("check_file",
               [](py::object const& path, std::vector<std::string> const& kinds,
                  std::optional<std::size_t> repeatFrom, bool endian, py::object const& version) {
                   return checkFile(pathFrom(path), RecordOptions(kinds, repeatFrom, endian, version));
               });
}
