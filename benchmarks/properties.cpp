// Saving and loading 10,000 properties: a file that describes itself beside raw records, and a check of each record
// beside reading alone.
#include "Comparison.h"

#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/properties/PropertyFile.h>
#include <MRCommon/properties/RecordCheck.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

using namespace quarn;

namespace {

constexpr std::size_t count = 10000;

PropertyList const& scene() {
    static PropertyList const list = [] {
        PropertyList made;
        for (std::size_t i = 0; i < count; ++i) {
            QN_String const name(("property " + std::to_string(i)).c_str());
            switch (i % 5) {
            case 0: made.add(std::make_unique<PptyFloat>(name, 0.5f)); break;
            case 1: made.add(std::make_unique<RIntPpty>(name, 3, 0, 10)); break;
            case 2: made.add(std::make_unique<PptyString>(name, "a text of some length")); break;
            case 3: made.add(std::make_unique<PptyVector3D>(name, Vector3<double>(1, 2, 3))); break;
            default: made.add(std::make_unique<PptyArrayString>(name, Array<QN_String>{"sea", "foam"}));
            }
        }
        return made;
    }();
    return list;
}

/// The path of a file that is removed when the program ends.
class BenchPath {
public:
    explicit BenchPath(char const* name) : path((std::filesystem::temp_directory_path() / name).string()) {}
    ~BenchPath() { std::remove(path.c_str()); }
    BenchPath(BenchPath const&) = delete;
    BenchPath& operator=(BenchPath const&) = delete;

    std::string const path;
};

struct BenchFile {
    BenchFile(std::string const& path, char const* mode)
        : file(std::fopen(path.c_str(), mode), &std::fclose) {
        if (file == nullptr) throw std::runtime_error("cannot open " + path);
    }
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file;
    FileStreamRaw stream{file.get()};
};

void require(bool holds) {
    if (!holds) throw std::runtime_error("not saved or loaded");
}

std::size_t saveRaw(std::string const& path) {
    BenchFile out(path, "wb");
    for (std::size_t i = 0; i < scene().size(); ++i) scene().property(i)->writeTo(out.stream);
    require(!out.stream.failed());
    return scene().size();
}

std::size_t save(std::string const& path) {
    require(saveProperties(path, scene()).ok());
    return scene().size();
}

/// Reads each record into the scene's property, after `check(property, stream)`.
template <class Check> std::size_t readAgain(std::string const& path, Check const& check) {
    BenchFile in(path, "rb");
    for (std::size_t i = 0; i < scene().size(); ++i) {
        check(*scene().property(i), in.stream);
        scene().property(i)->readFrom(in.stream);
    }
    require(!in.stream.failed());
    return scene().size();
}

std::size_t loadRaw(std::string const& path) {
    BenchFile in(path, "rb");
    PropertyList list;
    for (std::size_t i = 0; i < scene().size(); ++i) {
        std::unique_ptr<Ppty> ppty(
            static_cast<Ppty*>(QN_MetaClassBase::find(scene().property(i)->getClassName())->metaNew()));
        ppty->readFrom(in.stream);
        list.add(std::move(ppty));
    }
    require(!in.stream.failed());
    return list.size();
}

std::size_t load(std::string const& path) {
    PropertyList list;
    require(loadProperties(path, list).ok());
    return list.size();
}

void checkGood(Ppty const& ppty, FileStreamRaw& stream) { require(checkRecord(ppty, stream).good()); }

} // namespace

int main(int argc, char** argv) {
    BenchPath const raw("mrcommon-bench.raw"), described("mrcommon-bench.props");
    Comparison(
        "save_properties", [&] { return save(described.path); }, count)
        .against("raw_records", [&] { return saveRaw(raw.path); });
    Comparison(
        "load_properties", [&] { return load(described.path); }, count)
        .against("raw_records", [&] { return loadRaw(raw.path); });
    Comparison(
        "check_and_read", [&] { return readAgain(raw.path, checkGood); }, count)
        .against("read_alone", [&] { return readAgain(raw.path, [](Ppty const&, FileStreamRaw&) {}); });
    return Report::run("properties", argc, argv);
}
