#include <qn_basic/QN_MetaClassBase.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

namespace quarn {

namespace {

using MetaClass = QN_MetaClassBase const*;

unsigned long long fnv1a(QN_String const& text) {
    unsigned long long hash = 14695981039346656037ull;
    std::for_each(text.begin(), text.begin() + text.length(), [&](char c) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 1099511628211ull;
    });
    return hash;
}

/// The registered classes, oldest first, each with what it is searched by beside it, so that a search walks
/// through one array.
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

    /// How often classes have come or gone: what was found out before the last time may be wrong.
    unsigned long long changes() const { return changes_; }

    MetaClass find(unsigned long long id) const {
        for (Entry const& entry : entries_)
            if (entry.id == id) return entry.metaClass;
        return nullptr;
    }

    /// The oldest class of this name that `fits`.
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
        unsigned long long nameHash; // the id, unless another class had it
        MetaClass metaClass;
    };
    std::vector<Entry> entries_;
    unsigned long long changes_ = 0;
};

/// Made by the first class that registers, hence destroyed behind the last.
Registry& registry() {
    static Registry classes;
    return classes;
}

/// What a thread found out lately: throwing takes microseconds, and the same questions come again and again.
struct Answer {
    MetaClass descendant, ancestor;
    unsigned long long changes; ///< of the registry, at that time
    bool yes;
};

Answer& rememberedAnswer(MetaClass descendant, MetaClass ancestor) {
    thread_local std::array<Answer, 256> answers{};
    return answers[(descendant->classId() ^ ancestor->classId() >> 1) % answers.size()];
}

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
    Answer& answer = rememberedAnswer(this, ancestor);
    unsigned long long const changes = registry().changes();
    if (answer.descendant != this || answer.ancestor != ancestor || answer.changes != changes)
        answer = {this, ancestor, changes, catches(ancestor->upcastProbe(), upcastProbe())};
    return answer.yes;
}

} // namespace quarn
