// QN_MetaClassBase: describes a class at run time, and gives access to the registry of all classes.
//     QN_MetaClassBase const* m = QN_MetaClassBase::find("PptyFloat");
//     void* object = m->metaNew();      // a PptyFloat; yours until m->metaDelete(object)
//     m->hasAncestor("QN_Class")        // true
//
// One object describes one class. It is created with the class's name and schema number when the library is loaded;
// the constructor registers it and the destructor removes it, so that a plug-in can be unloaded. The registry is
// not locked: no look-up may run while code is loaded or unloaded.
#ifndef QN_BASIC_QN_METACLASSBASE_H
#define QN_BASIC_QN_METACLASSBASE_H

#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>

namespace quarn {

class QN_BASIC_API QN_MetaClassBase {
public:
    /// Decides whether one class descends from another without an object of either: a null pointer to the one is
    /// thrown, and the other's handler catches it or not.
    struct UpcastProbe {
        void (*throwNull)();                  ///< throws a null pointer to the class; null in the base
        bool (*catches)(void (*throwNull)()); ///< whether the class's handler catches what the other throws
    };

    /// Registers a class. Its id is the 64-bit FNV-1a hash of the name (Fowler, Noll and Vo, 1991), increased by
    /// one while that is taken, and does not change afterwards.
    QN_MetaClassBase(char const* name, unsigned int const& schema);
    QN_MetaClassBase(QN_MetaClassBase const&) = delete;
    QN_MetaClassBase& operator=(QN_MetaClassBase const&) = delete;

    virtual ~QN_MetaClassBase(); ///< slots 0 and 1

    ///@{
    /// Returns whether the class, or a registered class that it descends from, has this id or name.
    virtual bool hasAncestor(unsigned long long const& id) const; ///< slot 2
    virtual bool hasAncestor(QN_String const& name) const;        ///< slot 3
    ///@}

    /// Returns the sum of the schema numbers of the class and of its registered ancestors, which changes whenever
    /// the record format of any of them does.
    virtual unsigned int getGenealogyTreeSchema() const; ///< slot 4

    virtual unsigned long getClassSizeOf() const; ///< slot 5: bytes of an object; 0 here
    /// Returns a new object, owned by the caller; null here. Slot 6.
    [[nodiscard]] virtual void* metaNew() const;
    /// Nulls the pointer and deletes the object; does nothing here. Slot 7.
    virtual void metaDelete(void*& object) const;
    virtual UpcastProbe upcastProbe() const; ///< slot 8, the last; null pointers here

    /// Returns the id, unique while the object lives.
    MRCOMMON_HIDDEN unsigned long long const& classId() const noexcept { return id_; }
    /// Returns the name as registered.
    MRCOMMON_HIDDEN QN_String const& className() const noexcept { return name_; }
    /// Returns the version of the class's record format.
    MRCOMMON_HIDDEN unsigned int const& classSchema() const noexcept { return schema_; }

    /// Prints one line, name, id and schema, to the standard output.
    void printf() const;

    ///@{
    /// Returns the class of this name (the oldest, if there are several) or of this id, or null.
    [[nodiscard]] static QN_MetaClassBase const* find(QN_String const& name);
    [[nodiscard]] static QN_MetaClassBase const* find(unsigned long long id);
    ///@}

    /// Returns all classes in the order of registration.
    [[nodiscard]] static Array<QN_MetaClassBase const*> registered();

private:
    bool descendsFrom(QN_MetaClassBase const* ancestor) const;

    unsigned long long id_ = 0;
    QN_String name_;
    unsigned int schema_;
};

/// Describes the root of all classes.
extern QN_BASIC_API QN_MetaClassBase const metaClass_QN_Class;

} // namespace quarn

#endif
