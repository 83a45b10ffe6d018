// Saving and loading 10,000 properties: a file that describes itself beside raw records, and a check of each record
// beside reading alone.
#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/properties/PropertyFile.h>
#include <MRCommon/properties/RecordCheck.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

using namespace quarn;

namespace {

constexpr int count = 10000;

PropertyList const& scene() {
    static PropertyList const list = [] {
        PropertyList made;
        for (int i = 0; i < count; ++i) {
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

std::string const& path() {
    static std::string const file =
        (std::filesystem::temp_directory_path() / "mrcommon-bench.props").string();
    return file;
}

/// A FILE at `path()`, closed at the end of its life.
struct BenchFile {
    explicit BenchFile(char const* mode) : file(std::fopen(path().c_str(), mode), &std::fclose) {
        if (file == nullptr) throw std::runtime_error("cannot open " + path());
    }
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file;
    FileStreamRaw stream{file.get()};
};

void require(bool holds) {
    if (!holds) throw std::runtime_error("not saved or loaded");
}

void writeRecords() {
    BenchFile out("wb");
    for (std::size_t i = 0; i < scene().size(); ++i) scene().property(i)->writeTo(out.stream);
    require(!out.stream.failed());
}

/// Reads every record into an object of its class, which exists already or is made for it.
template <class Prepare> void readRecords(Prepare const& prepare) {
    BenchFile in("rb");
    for (std::size_t i = 0; i < scene().size(); ++i) prepare(i, in.stream);
    require(!in.stream.failed());
}

void SaveRawRecords(benchmark::State& state) {
    for (auto _ : state) writeRecords();
}

void SavePropertyFile(benchmark::State& state) {
    for (auto _ : state) require(saveProperties(path(), scene()).ok());
}

void LoadRawRecords(benchmark::State& state) {
    writeRecords();
    for (auto _ : state) {
        PropertyList list;
        readRecords([&](std::size_t i, FileStreamRaw& stream) {
            std::unique_ptr<Ppty> ppty(
                static_cast<Ppty*>(QN_MetaClassBase::find(scene().property(i)->getClassName())->metaNew()));
            ppty->readFrom(stream);
            list.add(std::move(ppty));
        });
    }
}

void LoadPropertyFile(benchmark::State& state) {
    require(saveProperties(path(), scene()).ok());
    for (auto _ : state) {
        PropertyList list;
        require(loadProperties(path(), list).ok());
    }
}

void ReadOnly(benchmark::State& state) {
    writeRecords();
    for (auto _ : state)
        readRecords([](std::size_t i, FileStreamRaw& stream) { scene().property(i)->readFrom(stream); });
}

void CheckAndRead(benchmark::State& state) {
    writeRecords();
    for (auto _ : state)
        readRecords([](std::size_t i, FileStreamRaw& stream) {
            require(checkRecord(*scene().property(i), stream).good());
            scene().property(i)->readFrom(stream);
        });
}

BENCHMARK(SaveRawRecords)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SavePropertyFile)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(LoadRawRecords)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(LoadPropertyFile)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ReadOnly)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(CheckAndRead)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    std::filesystem::remove(path());
}
