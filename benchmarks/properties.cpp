// Properties: what they cost next to the peers' values, a check of each record next to reading alone, and a file that
// describes itself next to raw records. The rows end with the number of properties.
#include "Comparison.h"
#include "PropertyPeers.h"

#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/properties/PropertyFile.h>
#include <MRCommon/properties/RecordCheck.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
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

constexpr std::size_t usualCount = 10000;

PropertyList makeScene(std::size_t count) {
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
}

PropertyList const& scene(std::size_t count) {
    static std::map<std::size_t, PropertyList> scenes;
    auto const [found, isNew] = scenes.try_emplace(count);
    if (isNew) found->second = makeScene(count);
    return found->second;
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

std::size_t saveRaw(std::string const& path, PropertyList const& list) {
    BenchFile out(path, "wb");
    for (std::size_t i = 0; i < list.size(); ++i) list.property(i)->writeTo(out.stream);
    require(!out.stream.failed());
    return list.size();
}

std::size_t save(std::string const& path, PropertyList const& list) {
    require(saveProperties(path, list).ok());
    return list.size();
}

std::size_t loadRaw(std::string const& path, PropertyList const& saved) {
    BenchFile in(path, "rb");
    PropertyList list;
    for (std::size_t i = 0; i < saved.size(); ++i) {
        std::unique_ptr<Ppty> ppty(
            static_cast<Ppty*>(QN_MetaClassBase::find(saved.property(i)->getClassName())->metaNew()));
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

std::string rowOf(char const* what, std::size_t count) { return what + ("_" + std::to_string(count)); }

template <class Library, class Work> void addRow(char const* what, std::size_t count, Work const& work) {
    Report::add(rowOf(what, count), Library::name, count, [work](benchmark::State& state) {
        for (auto _ : state) work(state);
    });
}

template <class Library> void requireEqual(char const* what, LibraryItems<Library> const& items) {
    if (peers::digestOf<Library>(items) ==
        peers::digestOf<peers::Ours>(peers::makeItems<peers::Ours>(items.size())))
        return;
    std::fprintf(stderr, "%s: %s has another result\n", what, Library::name);
    std::exit(1);
}

/// Items with other values and empty names, which loading and setting must replace.
template <class Library> LibraryItems<Library> otherItems(std::size_t count) {
    LibraryItems<Library> items;
    items.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        Library::Types::visit(i % peers::kindCount, [&](auto kind) {
            items.push_back(Library::template make<typename decltype(kind)::Type>("other name to", i + 7));
        });
    return items;
}

/// The items of one library and number: those that are saved, copied or cloned, and those that take their values.
template <class Library> struct Lists {
    explicit Lists(std::size_t count)
        : items(peers::makeItems<Library>(count)), others(otherItems<Library>(count)) {}
    LibraryItems<Library> items, others;
};

template <class Library> Lists<Library>& listsOf(std::size_t count) {
    static std::map<std::size_t, Lists<Library>> lists;
    return lists.try_emplace(count, count).first->second;
}

template <class Library, class Out, class In, class Target>
void addTransferRows(char const* saveRow, char const* loadRow, std::size_t count,
                     std::shared_ptr<Target> const& target) {
    auto& [items, loaded] = listsOf<Library>(count);
    auto const save = [target, &items = items](auto&) {
        Out out(*target);
        for (auto const& item : items) Library::write(item, out);
    };
    auto const load = [target, &loaded = loaded](auto&) {
        In in(*target);
        for (auto& item : loaded) Library::read(item, in);
    };
    int none = 0;
    save(none);
    load(none);
    requireEqual<Library>(loadRow, loaded);
    addRow<Library>(saveRow, count, save);
    addRow<Library>(loadRow, count, load);
}

template <class Library> void addMemoryRows(std::size_t count) {
    addTransferRows<Library, typename Library::MemoryOut, typename Library::MemoryIn>(
        "save_memory", "load_memory", count, std::make_shared<peers::Memory>(count));
}

template <class Library> void addFileRows() {
    static BenchPath const file((std::string("mrcommon-bench.") + Library::name).c_str());
    addTransferRows<Library, typename Library::FileOut, typename Library::FileIn>(
        "save_file", "load_file", usualCount, std::make_shared<std::string const>(file.path));
}

/// Times `work` and leaves what it returns out of the time.
template <class Library, class Make> void addMakingRow(char const* row, std::size_t count, Make const& make) {
    addRow<Library>(row, count, [make, count](benchmark::State& state) {
        LibraryItems<Library> items;
        items.reserve(count);
        make(items);
        state.PauseTiming();
        items.clear();
        state.ResumeTiming();
    });
}

template <class Library> void addSetRow(std::size_t count) {
    auto const set = [](auto& to, auto const& from) {
        for (std::size_t i = 0; i < to.size(); ++i) Library::set(to[i], from[i]);
    };
    auto& [items, changed] = listsOf<Library>(count);
    LibraryItems<Library> checked = peers::makeItems<Library>(count);
    set(checked, otherItems<Library>(count));
    set(checked, items);
    requireEqual<Library>("set_variant", checked);
    addRow<Library>("set_variant", count,
                    [set, &items = items, &changed = changed](auto&) { set(changed, items); });
}

template <class Library> void addCreateRow(std::size_t count) {
    static std::vector<typename Library::ClassName> const names = [] {
        std::vector<typename Library::ClassName> all;
        for (std::size_t i = 0; i < peers::kindCount; ++i)
            Library::Types::visit(i, [&](auto kind) {
                all.push_back(Library::template className<typename decltype(kind)::Type>());
            });
        return all;
    }();
    addMakingRow<Library>("create", count, [count](auto& made) {
        for (std::size_t i = 0; i < count; ++i) made.push_back(Library::create(names[i % names.size()]));
    });
}

template <class Library> void addCloneRows() {
    auto const clone = [&items = listsOf<Library>(usualCount).items](auto& made) {
        for (auto const& item : items) made.push_back(Library::clone(item));
    };
    LibraryItems<Library> made;
    clone(made);
    requireEqual<Library>("clone", made);
    addMakingRow<Library>("clone", usualCount, clone);
    addRow<Library>("destroy", usualCount, [clone](benchmark::State& state) {
        state.PauseTiming();
        LibraryItems<Library> doomed;
        doomed.reserve(usualCount);
        clone(doomed);
        state.ResumeTiming();
        doomed.clear();
    });
}

template <class Library> void addTransferRows() {
    addMemoryRows<Library>(usualCount);
    addFileRows<Library>();
}

template <class Library> void addObjectRows() {
    addSetRow<Library>(usualCount);
    addCreateRow<Library>(usualCount);
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
template <class Check>
std::size_t readAgain(std::string const& path, LibraryItems<peers::Ours> const& items, Check const& check) {
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
    addTransferRows<peers::Ours>();
    addObjectRows<peers::Ours>();
    addObjectRows<peers::Floor>();
#ifdef BENCH_OPENVDB
    addTransferRows<peers::OpenVdb>();
    addObjectRows<peers::OpenVdb>();
#endif
#ifdef BENCH_OPENEXR
    addTransferRows<peers::OpenExr>();
    addObjectRows<peers::OpenExr>();
#endif
#ifdef BENCH_QT
    addTransferRows<peers::Qt>();
    addSetRow<peers::Qt>(usualCount);
    addCreateRow<peers::Qt>(usualCount);
#endif
#ifdef BENCH_BOOST_SERIALIZATION
    addTransferRows<peers::BoostArchive>();
#endif
#ifdef BENCH_CEREAL
    addTransferRows<peers::CerealArchive>();
#endif
}

/// The rows that show how our time grows with the number.
void addGrowthRows(std::size_t count) {
    addMemoryRows<peers::Ours>(count);
    addSetRow<peers::Ours>(count);
    addCreateRow<peers::Ours>(count);
}

/// The rows that compare functions of ours with each other.
void addOwnRows(std::size_t count) {
    auto const pathOf = [count](char const* what) {
        return std::make_shared<BenchPath const>(("mrcommon-bench." + rowOf(what, count)).c_str());
    };
    auto const raw = pathOf("raw"), described = pathOf("props"), ten = pathOf("ten");
    PropertyList const& list = scene(count);
    Comparison(
        rowOf("save_properties", count), [described, &list] { return save(described->path, list); }, count)
        .against("raw_records", [raw, &list] { return saveRaw(raw->path, list); });
    Comparison(
        rowOf("load_properties", count), [described] { return load(described->path); }, count)
        .against("raw_records", [raw, &list] { return loadRaw(raw->path, list); });
    auto& [items, read] = listsOf<peers::Ours>(count);
    {
        peers::Ours::FileOut out(ten->path);
        for (auto const& item : items) peers::Ours::write(item, out);
    }
    Comparison(
        rowOf("check_and_read", count), [ten, &read = read] { return readAgain(ten->path, read, checkGood); },
        count)
        .against("read_alone", [ten, &read = read] { return readAgain(ten->path, read, checkNothing); });
}

} // namespace

int main(int argc, char** argv) {
    requireAllocations();
    addPeerRows();
    for (std::size_t const count : {usualCount / 10, 10 * usualCount}) addGrowthRows(count);
    for (std::size_t const count : {usualCount / 10, usualCount, 10 * usualCount}) addOwnRows(count);
    return Report::run("properties", argc, argv);
}
