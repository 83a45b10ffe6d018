#include <qn_basic/QN_MetaClassBase.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace quarn {

namespace {

using MetaClass = QN_MetaClassBase const*;

unsigned long long fnv1a(QN_String const& text) {
    unsigned long long hash = 14695981039346656037ull;
    for (char const c : text.view()) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 1099511628211ull;
    }
    return hash;
}

/// The registered classes, oldest first. The keys of a search are stored with them, so that it walks through one
/// array.
class Registry {
public:
    unsigned long long add(MetaClass metaClass) {
        unsigned long long const nameHash = fnv1a(metaClass->className());
        unsigned long long id = nameHash;
        while (find(id) != nullptr) ++id;
        entries_.push_back({id, nameHash, metaClass});
        ++changes_;
        return id;
    }

    void remove(MetaClass metaClass) {
        entries_.erase(std::remove_if(entries_.begin(), entries_.end(),
                                      [&](Entry const& entry) { return entry.metaClass == metaClass; }),
                       entries_.end());
        ++changes_;
    }

    /// Counts registrations and removals, each of which may change an answer.
    unsigned long long changes() const { return changes_; }

    MetaClass find(unsigned long long id) const {
        for (Entry const& entry : entries_)
            if (entry.id == id) return entry.metaClass;
        return nullptr;
    }

    /// Returns the oldest class of this name for which `fits` is true, or null.
    template <class Fits> MetaClass find(QN_String const& name, Fits const& fits) const {
        unsigned long long const nameHash = fnv1a(name);
        for (Entry const& entry : entries_)
            if (entry.nameHash == nameHash && entry.metaClass->className() == name && fits(entry.metaClass))
                return entry.metaClass;
        return nullptr;
    }

    template <class Visitor> void forEach(Visitor const& visit) const {
        for (Entry const& entry : entries_) visit(entry.metaClass);
    }

private:
    struct Entry {
        unsigned long long id;
        unsigned long long nameHash; // equals the id unless that was taken
        MetaClass metaClass;
    };
    std::vector<Entry> entries_;
    unsigned long long changes_ = 0;
};

/// Created by the first class that registers, hence destroyed after the last.
Registry& registry() {
    static Registry classes;
    return classes;
}

/// The latest answers of one thread about ancestors: throwing takes microseconds, and the same questions recur. It
/// is small, since every thread has one: 16 sets of four, in which the newest answer replaces the oldest.
class AnswerCache {
public:
    /// Returns whether `descendant` descends from `ancestor`, as remembered or else as `ask` returns, which is
    /// remembered until a class is registered or removed.
    template <class Ask> bool answer(MetaClass descendant, MetaClass ancestor, Ask const& ask) {
        if (registryChanges_ != registry().changes()) *this = AnswerCache(registry().changes());
        Set& set = sets_[setOf(descendant, ancestor)];
        for (Answer const& known : set)
            if (known.descendant == descendant && known.ancestor == ancestor) return known.yes;
        Answer const found{descendant, ancestor, ask()};
        std::copy_backward(set.begin(), set.end() - 1, set.end());
        set.front() = found;
        return found.yes;
    }

    static AnswerCache& ofThisThread() {
        thread_local AnswerCache cache(0);
        return cache;
    }

private:
    struct Answer {
        MetaClass descendant, ancestor;
        bool yes;
    };
    using Set = std::array<Answer, 4>;

    constexpr explicit AnswerCache(unsigned long long registryChanges) : registryChanges_(registryChanges) {}

    /// Spreads neighbours in memory, such as the library's own classes, over all sets.
    static std::size_t setOf(MetaClass descendant, MetaClass ancestor) {
        return (lineOf(descendant) + 5 * lineOf(ancestor)) % setCount;
    }
    static std::uintptr_t lineOf(MetaClass metaClass) {
        return reinterpret_cast<std::uintptr_t>(metaClass) / 64;
    }

    static constexpr std::size_t setCount = 16;
    unsigned long long registryChanges_; // when the answers were found
    std::array<Set, setCount> sets_{};
};

bool catches(QN_MetaClassBase::UpcastProbe const& ancestor, QN_MetaClassBase::UpcastProbe const& descendant) {
    return ancestor.catches != nullptr && descendant.throwNull != nullptr &&
           ancestor.catches(descendant.throwNull);
}

} // namespace

QN_MetaClassBase const metaClass_QN_Class("QN_Class", 1);

QN_MetaClassBase::QN_MetaClassBase(char const* name, unsigned int const& schema)
    : name_(name), schema_(schema) {
    id_ = registry().add(this);
}

QN_MetaClassBase::~QN_MetaClassBase() { registry().remove(this); }

bool QN_MetaClassBase::hasAncestor(unsigned long long const& id) const {
    return id == id_ || descendsFrom(find(id));
}

bool QN_MetaClassBase::hasAncestor(QN_String const& name) const {
    auto const isAncestor = [this](MetaClass other) { return descendsFrom(other); };
    return name == name_ || registry().find(name, isAncestor) != nullptr;
}

unsigned int QN_MetaClassBase::getGenealogyTreeSchema() const {
    unsigned int sum = 0;
    registry().forEach([&](MetaClass other) {
        if (other == this || descendsFrom(other)) sum += other->classSchema();
    });
    return sum;
}

unsigned long QN_MetaClassBase::getClassSizeOf() const { return 0; }

void* QN_MetaClassBase::metaNew() const { return nullptr; }

void QN_MetaClassBase::metaDelete(void*&) const {}

QN_MetaClassBase::UpcastProbe QN_MetaClassBase::upcastProbe() const { return {nullptr, nullptr}; }

void QN_MetaClassBase::printf() const {
    std::printf("%s (id %016llx, schema %u)\n", name_.c_str(), id_, schema_);
}

QN_MetaClassBase const* QN_MetaClassBase::find(QN_String const& name) {
    return registry().find(name, [](MetaClass) { return true; });
}

QN_MetaClassBase const* QN_MetaClassBase::find(unsigned long long id) { return registry().find(id); }

Array<QN_MetaClassBase const*> QN_MetaClassBase::registered() {
    Array<QN_MetaClassBase const*> classes;
    registry().forEach([&](MetaClass metaClass) { classes.push_back(metaClass); });
    return classes;
}

bool QN_MetaClassBase::descendsFrom(QN_MetaClassBase const* ancestor) const {
    if (ancestor == nullptr || this == &metaClass_QN_Class) return false;
    if (ancestor == &metaClass_QN_Class) return true;
    return AnswerCache::ofThisThread().answer(
        this, ancestor, [&] { return catches(ancestor->upcastProbe(), upcastProbe()); });
}

} // namespace quarn
