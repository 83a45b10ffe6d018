// QN_Class: the root of all classes that know at run time what they are.
//     QN_Class const& c = property;
//     c.getClassName()                  // "PptyFloat"
//     c.hasAncestor("QN_Class")         // true
// Virtual operations keep their slots; a class appends its own after those of its base.
#ifndef MRCOMMON_PROPERTIES_QN_CLASS_H
#define MRCOMMON_PROPERTIES_QN_CLASS_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>
#include <qn_basic/QN_MetaClassBase.h>

namespace quarn {

class MRCOMMON_API QN_Class {
public:
    virtual unsigned long long const& getClassId() const;         ///< slot 0: the registered id
    virtual QN_String const& getClassName() const;                ///< slot 1: the registered name
    virtual unsigned int const& getClassSchema() const;           ///< slot 2: version of the record format
    virtual bool hasAncestor(unsigned long long const& id) const; ///< slot 3: true for the class itself too
    virtual bool hasAncestor(QN_String const& name) const;        ///< slot 4: the same by name
    virtual void printfMeta() const; ///< slot 5: prints one line to the standard output
    virtual ~QN_Class();             ///< slots 6 and 7

    [[nodiscard]] static QN_MetaClassBase const& metaClass(); ///< returns metaClass_QN_Class
};

} // namespace quarn

/// Declares `metaClass()` and overrides the six identity operations, which ask the object that it returns.
/// Used in the public part of a concrete class; a property kind also needs QN_PPTY_COPIES of Ppty.h.
/// A source file registers the class and defines the function:
///     quarn::QN_MetaClass<Wind> const metaClass_Wind("Wind", 1);
///     quarn::QN_MetaClassBase const& Wind::metaClass() { return metaClass_Wind; }
/// Those of this library's kinds are made in MetaClasses.cpp, one line a kind.
#define QN_CLASS_IDENTITY QN_CLASS_IDENTITY_AS()

/// The same for an exported class: `MRCOMMON_HIDDEN` keeps the six operations out of the symbols of callers.
/// Not for templates with `extern template`, whose callers use the library's copies.
// NOLINTBEGIN(bugprone-macro-parentheses): an attribute cannot be put in parentheses
#define QN_CLASS_IDENTITY_AS(VISIBILITY)                                                                     \
    [[nodiscard]] static ::quarn::QN_MetaClassBase const& metaClass();                                       \
    VISIBILITY unsigned long long const& getClassId() const override { return metaClass().classId(); }       \
    VISIBILITY ::quarn::QN_String const& getClassName() const override { return metaClass().className(); }   \
    VISIBILITY unsigned int const& getClassSchema() const override { return metaClass().classSchema(); }     \
    VISIBILITY bool hasAncestor(unsigned long long const& id) const override {                               \
        return metaClass().hasAncestor(id);                                                                  \
    }                                                                                                        \
    VISIBILITY bool hasAncestor(::quarn::QN_String const& name) const override {                             \
        return metaClass().hasAncestor(name);                                                                \
    }                                                                                                        \
    VISIBILITY void printfMeta() const override { metaClass().printf(); }
// NOLINTEND(bugprone-macro-parentheses)

#endif
