// 10,000 properties: what they cost next to the peers' values, a check of each record next to reading alone, and a file
// that describes itself next to raw records.
#include "Comparison.h"
#include "PropertyPeers.h"

#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/properties/PropertyFile.h>
#include <MRCommon/properties/RecordCheck.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

using namespace quarn;

namespace {

long allocations = 0;

} // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

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

using peers::require;

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

// ---------------------------------------------------------------------------
// The rows with peers

template <class Library> using LibraryItems = peers::Items<Library>;

template <class Library, class Work> void addRow(char const* row, Work const& work) {
    Report::add(row, Library::name, count, [work](benchmark::State& state) {
        for (auto _ : state) work(state);
    });
}

template <class Library> void requireEqual(char const* row, LibraryItems<Library> const& items) {
    static std::size_t const expected = peers::digestOf<peers::Ours>(peers::makeItems<peers::Ours>(count));
    if (peers::digestOf<Library>(items) == expected) return;
    std::fprintf(stderr, "%s: %s has another result\n", row, Library::name);
    std::exit(1);
}

/// Items with other values and empty names, which loading and setting must replace.
template <class Library> LibraryItems<Library> otherItems() {
    LibraryItems<Library> items;
    items.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        Library::Types::visit(i % peers::kindCount, [&](auto kind) {
            items.push_back(Library::template make<typename decltype(kind)::Type>("other name to", i + 7));
        });
    return items;
}

template <class Library, class Out, class In, class Target>
void addTransferRows(char const* saveRow, char const* loadRow, Target& target) {
    static LibraryItems<Library> const items = peers::makeItems<Library>(count);
    static LibraryItems<Library> loaded = otherItems<Library>();
    auto const save = [&target](auto&) {
        Out out(target);
        for (auto const& item : items) Library::write(item, out);
    };
    auto const load = [&target](auto&) {
        In in(target);
        for (auto& item : loaded) Library::read(item, in);
    };
    int none = 0;
    save(none);
    load(none);
    requireEqual<Library>(loadRow, loaded);
    addRow<Library>(saveRow, save);
    addRow<Library>(loadRow, load);
}

template <class Library> void addFileRows() {
    static peers::Memory memory;
    addTransferRows<Library, typename Library::MemoryOut, typename Library::MemoryIn>("save_memory",
                                                                                      "load_memory", memory);
    static BenchPath const file((std::string("mrcommon-bench.") + Library::name).c_str());
    addTransferRows<Library, typename Library::FileOut, typename Library::FileIn>("save_file", "load_file",
                                                                                  file.path);
}

/// Times `work` and leaves what it returns out of the time.
template <class Library, class Make> void addMakingRow(char const* row, Make const& make) {
    addRow<Library>(row, [make](benchmark::State& state) {
        LibraryItems<Library> items;
        items.reserve(count);
        make(items);
        state.PauseTiming();
        items.clear();
        state.ResumeTiming();
    });
}

template <class Library> void addSetRow() {
    static LibraryItems<Library> const items = peers::makeItems<Library>(count);
    static LibraryItems<Library> changed = otherItems<Library>();
    auto const set = [](auto&) {
        for (std::size_t i = 0; i < count; ++i) Library::set(changed[i], items[i]);
    };
    LibraryItems<Library> checked = peers::makeItems<Library>(count);
    for (std::size_t i = 0; i < count; ++i) Library::set(checked[i], changed[i]);
    for (std::size_t i = 0; i < count; ++i) Library::set(checked[i], items[i]);
    requireEqual<Library>("set_variant", checked);
    addRow<Library>("set_variant", set);
}

template <class Library> void addCreateRow() {
    static std::vector<typename Library::ClassName> const names = [] {
        std::vector<typename Library::ClassName> all;
        for (std::size_t i = 0; i < peers::kindCount; ++i)
            Library::Types::visit(i, [&](auto kind) {
                all.emplace_back(Library::template className<typename decltype(kind)::Type>().c_str());
            });
        return all;
    }();
    addMakingRow<Library>("create", [](auto& made) {
        for (std::size_t i = 0; i < count; ++i) made.push_back(Library::create(names[i % names.size()]));
    });
}

template <class Library> void addCloneRows() {
    static LibraryItems<Library> const items = peers::makeItems<Library>(count);
    auto const clone = [](auto& made) {
        for (auto const& item : items) made.push_back(Library::clone(item));
    };
    LibraryItems<Library> made;
    clone(made);
    requireEqual<Library>("clone", made);
    addMakingRow<Library>("clone", clone);
    addRow<Library>("destroy", [clone](benchmark::State& state) {
        state.PauseTiming();
        LibraryItems<Library> doomed;
        doomed.reserve(count);
        clone(doomed);
        state.ResumeTiming();
        doomed.clear();
    });
}

template <class Library> void addAllRows() {
    addFileRows<Library>();
    addSetRow<Library>();
    addCreateRow<Library>();
    addCloneRows<Library>();
}

/// Ends the program unless an object takes one allocation each for itself, the buffer of its name and its value. A
/// string has a buffer of its own.
void requireAllocations() {
    using peers::Ours;
    LibraryItems<Ours> const items = peers::makeItems<Ours>(peers::kindCount);
    for (auto const& item : items) {
        bool const isText = item->getType() == Ppty::TYPE_STRING;
        QN_String const& className = item->getClassName();
        long const before = allocations;
        auto const created = Ours::create(className);
        long const afterCreate = allocations;
        auto const cloned = Ours::clone(item);
        long const afterClone = allocations;
        cloned->setValue(item->getVariantValue());
        std::printf("%-14s allocations: create %ld, clone %ld, set %ld\n", className.c_str(),
                    afterCreate - before, afterClone - afterCreate, allocations - afterClone);
        require(afterCreate - before == (isText ? 4 : 3) && afterClone - afterCreate == (isText ? 4 : 3) &&
                allocations == afterClone);
    }
}

/// Reads the records of the ten kinds, each after `check(property, stream)`.
template <class Check> std::size_t readAgain(std::string const& path, Check const& check) {
    static LibraryItems<peers::Ours> const items = otherItems<peers::Ours>();
    BenchFile in(path, "rb");
    for (auto const& item : items) {
        check(*item, in.stream);
        item->readFrom(in.stream);
    }
    require(!in.stream.failed());
    return items.size();
}

void checkGood(Ppty const& ppty, FileStreamRaw& stream) { require(checkRecord(ppty, stream).good()); }
void checkNothing(Ppty const&, FileStreamRaw&) {}

void addPeerRows() {
    addAllRows<peers::Ours>();
#ifdef BENCH_OPENVDB
    addAllRows<peers::OpenVdb>();
#endif
#ifdef BENCH_OPENEXR
    addAllRows<peers::OpenExr>();
#endif
#ifdef BENCH_QT
    addFileRows<peers::Qt>();
    addSetRow<peers::Qt>();
    addCreateRow<peers::Qt>();
#endif
#ifdef BENCH_BOOST_SERIALIZATION
    addFileRows<peers::BoostArchive>();
#endif
#ifdef BENCH_CEREAL
    addFileRows<peers::CerealArchive>();
#endif
}

} // namespace

int main(int argc, char** argv) {
    requireAllocations();
    addPeerRows();
    BenchPath const raw("mrcommon-bench.raw"), described("mrcommon-bench.props");
    Comparison(
        "save_properties", [&] { return save(described.path); }, count)
        .against("raw_records", [&] { return saveRaw(raw.path); });
    Comparison(
        "load_properties", [&] { return load(described.path); }, count)
        .against("raw_records", [&] { return loadRaw(raw.path); });
    BenchPath const ten("mrcommon-bench.ten");
    {
        peers::Ours::FileOut out(ten.path);
        for (auto const& item : peers::makeItems<peers::Ours>(count)) peers::Ours::write(item, out);
    }
    Comparison(
        "check_and_read", [&] { return readAgain(ten.path, checkGood); }, count)
        .against("read_alone", [&] { return readAgain(ten.path, checkNothing); });
    return Report::run("properties", argc, argv);
}
