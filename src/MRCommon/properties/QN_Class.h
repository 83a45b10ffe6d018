// QN_Class: the root of all classes that know at run time what they are.
//     QN_Class const& c = property;
//     c.getClassName()                  // "PptyFloat"
//     c.hasAncestor("QN_Class")         // true
// The virtual operations keep their slots; a class appends its own behind those of its base.
#ifndef MRCOMMON_PROPERTIES_QN_CLASS_H
#define MRCOMMON_PROPERTIES_QN_CLASS_H

#include <MRCommon/basic/QN_String.h>
#include <qn_basic/QN_MetaClassBase.h>

namespace quarn {

class MRCOMMON_API QN_Class {
public:
    virtual unsigned long long const& getClassId() const;         ///< slot 0
    virtual QN_String const& getClassName() const;                ///< slot 1: the registered name
    virtual unsigned int const& getClassSchema() const;           ///< slot 2: version of the record format
    virtual bool hasAncestor(unsigned long long const& id) const; ///< slot 3: the class itself counts
    virtual bool hasAncestor(QN_String const& name) const;        ///< slot 4
    virtual void printfMeta() const;                              ///< slot 5: one line on the standard output
    virtual ~QN_Class();                                          ///< slots 6 and 7

    static QN_MetaClassBase const& metaClass(); ///< metaClass_QN_Class
};

} // namespace quarn

/// The six identity operations of a concrete class, answered by the object that stands for it. Written into
/// the public part of the class; the class defines `metaClass()`:
///     QN_MetaClass<Wind> const metaClass_Wind("Wind", 1);
///     quarn::QN_MetaClassBase const& Wind::metaClass() { return metaClass_Wind; }
#define QN_CLASS_IDENTITY                                                                                    \
    static ::quarn::QN_MetaClassBase const& metaClass();                                                     \
    unsigned long long const& getClassId() const override { return metaClass().classId(); }                  \
    ::quarn::QN_String const& getClassName() const override { return metaClass().className(); }              \
    unsigned int const& getClassSchema() const override { return metaClass().classSchema(); }                \
    bool hasAncestor(unsigned long long const& id) const override { return metaClass().hasAncestor(id); }    \
    bool hasAncestor(::quarn::QN_String const& name) const override {                                        \
        return metaClass().hasAncestor(name);                                                                \
    }                                                                                                        \
    void printfMeta() const override { metaClass().printf(); }

#endif
