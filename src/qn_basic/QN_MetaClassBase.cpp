#include <qn_basic/QN_MetaClassBase.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <string_view>
#include <vector>

namespace quarn {

namespace {

using MetaClass = QN_MetaClassBase const*;

unsigned long long fnv1a(std::string_view text) {
    unsigned long long hash = 14695981039346656037ull;
    for (char const c : text) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 1099511628211ull;
    }
    return hash;
}

/// Whether one class descends from another, for pairs of positions in the registry, as far as it was found out:
/// throwing takes microseconds, and the same questions recur. All threads share the answers, which never change.
class KnownAnswers {
public:
    enum Answer : unsigned char { Unknown, No, Yes };

    std::atomic<Answer>& operator()(std::size_t descendant, std::size_t ancestor) {
        return answers_[descendant * width_ + ancestor];
    }

    /// Makes room for a class at this position.
    void add(std::size_t position) {
        if (position < width_) return;
        width_ = std::max<std::size_t>(32, 2 * width_);
        answers_.reset(new std::atomic<Answer>[width_ * width_]());
    }

    /// Forgets what is known of the last class.
    void removeLast(std::size_t position) {
        for (std::size_t other = 0; other <= position; ++other)
            (*this)(position, other) = (*this)(other, position) = Unknown;
    }

    void clear() { std::fill_n(answers_.get(), width_ * width_, Unknown); }

private:
    std::size_t width_ = 0;
    std::unique_ptr<std::atomic<Answer>[]> answers_;
};

KnownAnswers::Answer ask(QN_MetaClassBase const& descendant, QN_MetaClassBase const& ancestor) {
    if (&descendant == &metaClass_QN_Class) return KnownAnswers::No;
    if (&ancestor == &metaClass_QN_Class) return KnownAnswers::Yes;
    auto const throwNull = descendant.upcastProbe().throwNull;
    auto const catches = ancestor.upcastProbe().catches;
    if (throwNull == nullptr || catches == nullptr) return KnownAnswers::Unknown;
    return catches(throwNull) ? KnownAnswers::Yes : KnownAnswers::No;
}

/// The registered classes, oldest first. The keys of a search are stored with them, so that it walks through one
/// array.
class Registry {
public:
    unsigned long long add(MetaClass metaClass) {
        std::string_view const name = metaClass->className().view();
        unsigned long long id = fnv1a(name);
        while (find(id) != nullptr) ++id;
        answers_.add(entries_.size());
        entries_.push_back({id, name, metaClass});
        return id;
    }

    void remove(MetaClass metaClass) {
        std::size_t const position = positionOf(metaClass);
        bool const isLast = position + 1 == entries_.size();
        isLast ? answers_.removeLast(position) : answers_.clear(); // the classes after it move up
        entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(position));
    }

    std::size_t size() const { return entries_.size(); }
    MetaClass operator[](std::size_t position) const { return entries_[position].metaClass; }

    std::size_t positionOf(MetaClass metaClass) const {
        return positionIf([&](Entry const& entry) { return entry.metaClass == metaClass; });
    }

    MetaClass find(unsigned long long id) const {
        return at(positionIf([&](Entry const& entry) { return entry.id == id; }));
    }

    /// Returns the oldest class of this name for which `fits` is true, or null.
    template <class Fits> MetaClass find(std::string_view name, Fits const& fits) const {
        return at(
            positionIf([&](Entry const& entry) { return entry.name == name && fits(entry.metaClass); }));
    }

    /// Returns whether a class descends from another one, each given by its position.
    bool descends(std::size_t descendant, std::size_t ancestor) {
        std::atomic<Answer>& known = answers_(descendant, ancestor);
        Answer answer = known.load(std::memory_order_relaxed);
        if (answer == KnownAnswers::Unknown) {
            answer = ask(*entries_[descendant].metaClass, *entries_[ancestor].metaClass);
            known.store(answer, std::memory_order_relaxed);
        }
        return answer == KnownAnswers::Yes;
    }

private:
    using Answer = KnownAnswers::Answer;
    struct Entry {
        unsigned long long id;
        std::string_view name; // of the class, whose name does not change
        MetaClass metaClass;
    };

    template <class Fits> std::size_t positionIf(Fits const& fits) const {
        return static_cast<std::size_t>(std::find_if(entries_.begin(), entries_.end(), fits) -
                                        entries_.begin());
    }

    MetaClass at(std::size_t position) const {
        return position < entries_.size() ? entries_[position].metaClass : nullptr;
    }

    std::vector<Entry> entries_;
    KnownAnswers answers_;
};

/// Created by the first class that registers, hence destroyed after the last.
Registry& registry() {
    static Registry classes;
    return classes;
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
    return name == name_ || registry().find(name.view(), isAncestor) != nullptr;
}

unsigned int QN_MetaClassBase::getGenealogyTreeSchema() const {
    Registry& classes = registry();
    std::size_t const self = classes.positionOf(this);
    unsigned int sum = 0;
    for (std::size_t other = 0; other < classes.size(); ++other)
        if (other == self || classes.descends(self, other)) sum += classes[other]->classSchema();
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
    return registry().find(name.view(), [](MetaClass) { return true; });
}

QN_MetaClassBase const* QN_MetaClassBase::find(unsigned long long id) { return registry().find(id); }

Array<QN_MetaClassBase const*> QN_MetaClassBase::registered() {
    Array<QN_MetaClassBase const*> classes;
    for (std::size_t i = 0; i < registry().size(); ++i) classes.push_back(registry()[i]);
    return classes;
}

bool QN_MetaClassBase::descendsFrom(QN_MetaClassBase const* ancestor) const {
    if (ancestor == nullptr) return false;
    Registry& classes = registry();
    return classes.descends(classes.positionOf(this), classes.positionOf(ancestor));
}

} // namespace quarn
