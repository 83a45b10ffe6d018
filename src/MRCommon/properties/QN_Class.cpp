// The identity of the root, and of classes that derive from it without QN_CLASS_IDENTITY. The metaClass()
// functions of the property kinds are in MetaClasses.cpp.
#include <MRCommon/properties/QN_Class.h>

namespace quarn {

unsigned long long const& QN_Class::getClassId() const { return metaClass().classId(); }

QN_String const& QN_Class::getClassName() const { return metaClass().className(); }

unsigned int const& QN_Class::getClassSchema() const { return metaClass().classSchema(); }

bool QN_Class::hasAncestor(unsigned long long const& id) const { return metaClass().hasAncestor(id); }

bool QN_Class::hasAncestor(QN_String const& name) const { return metaClass().hasAncestor(name); }

void QN_Class::printfMeta() const { metaClass().printf(); }

QN_Class::~QN_Class() = default;

QN_MetaClassBase const& QN_Class::metaClass() { return metaClass_QN_Class; }

} // namespace quarn
