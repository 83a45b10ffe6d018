// QN_MetaClassBase: what a class is known by at run time, and the registry of all classes.
//     QN_MetaClassBase const* m = QN_MetaClassBase::find("PptyFloat");
//     void* object = m->metaNew();      // a PptyFloat; yours until m->metaDelete(object)
//     m->hasAncestor("QN_Class")        // true
//
// One object stands for one class: made with the class's name and schema number when its library is loaded,
// entered in the registry by the constructor and taken out by the destructor, so that a plug-in may be
// unloaded. The registry is not locked: loading and unloading code must not run beside a look-up.
#ifndef QN_BASIC_QN_METACLASSBASE_H
#define QN_BASIC_QN_METACLASSBASE_H

#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/QN_String.h>

namespace quarn {

class QN_BASIC_API QN_MetaClassBase {
public:
    /// How one class asks another whether it descends from it, without an object of either: a null pointer to
    /// the one is thrown and the handler of the other catches it or does not.
    struct UpcastProbe {
        void (*throwNull)();                  ///< throws a null pointer to the class; null in the base
        bool (*catches)(void (*throwNull)()); ///< whether the class's handler takes what the other throws
    };

    /// Registers a class. Its id is the 64-bit FNV-1a hash of the name (Fowler, Noll and Vo, 1991), moved on
    /// by one while taken: unique, and stable for the life of the process.
    QN_MetaClassBase(char const* name, unsigned int const& schema);
    QN_MetaClassBase(QN_MetaClassBase const&) = delete;
    QN_MetaClassBase& operator=(QN_MetaClassBase const&) = delete;

    virtual ~QN_MetaClassBase(); ///< slots 0 and 1

    ///@{
    /// True when the class, or a registered class that it descends from, has this id or name.
    virtual bool hasAncestor(unsigned long long const& id) const; ///< slot 2
    virtual bool hasAncestor(QN_String const& name) const;        ///< slot 3
    ///@}

    /// The schema numbers of the class and of its registered ancestors, added up: it changes whenever the
    /// record of any of them does.
    virtual unsigned int getGenealogyTreeSchema() const; ///< slot 4

    virtual unsigned long getClassSizeOf() const; ///< slot 5: bytes of an object; 0 here
    virtual void* metaNew() const;                ///< slot 6: a new object, owned by the caller; null here
    virtual void metaDelete(void*& object) const; ///< slot 7: gives it back and nulls it; nothing here
    virtual UpcastProbe upcastProbe() const;      ///< slot 8: the last

    MRCOMMON_HIDDEN unsigned long long const& classId() const {
        return id_;
    }                                                                    ///< unique while the object lives
    MRCOMMON_HIDDEN QN_String const& className() const { return name_; } ///< as registered
    MRCOMMON_HIDDEN unsigned int const& classSchema() const {
        return schema_;
    } ///< the version of the class's record

    /// Prints one line, name, id and schema, to the standard output.
    void printf() const;

    static QN_MetaClassBase const*
    find(QN_String const& name); ///< null when there is none; the oldest of a name
    static QN_MetaClassBase const* find(unsigned long long id); ///< null when there is none
    static Array<QN_MetaClassBase const*> registered();         ///< all of them, in the order of registration

private:
    bool descendsFrom(QN_MetaClassBase const* ancestor) const;

    unsigned long long id_ = 0;
    QN_String name_;
    unsigned int schema_;
};

/// The root of all classes.
extern QN_BASIC_API QN_MetaClassBase const metaClass_QN_Class;

} // namespace quarn

#endif
