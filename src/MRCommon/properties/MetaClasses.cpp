#include <MRCommon/properties/MetaClasses.h>

namespace quarn {

// One line a kind makes its meta-class object, for example `metaClass_PptyInt`, and the function that returns
// it, `QN_MetaClassBase const& PptyInt::metaClass()`. Kinds that are aliases of a template instance need
// `template <>` in front of the function. The objects are registered in this order and destroyed in reverse.
#define QN_REGISTER(PREFIX, KIND, SCHEMA)                                                                    \
    template class QN_MetaClass<KIND>;                                                                       \
    QN_MetaClass<KIND> const metaClass_##KIND(#KIND, SCHEMA);                                                \
    PREFIX QN_MetaClassBase const& KIND::metaClass() { return metaClass_##KIND; }
#define QN_REGISTER_INSTANCE(KIND) QN_REGISTER(template <>, KIND, 1)
#define QN_REGISTER_CLASS(KIND, SCHEMA) QN_REGISTER(, KIND, SCHEMA)

QN_REGISTER_INSTANCE(PptyInt)
QN_REGISTER_INSTANCE(PptyInt64)
QN_REGISTER_INSTANCE(PptyDouble)
QN_REGISTER_INSTANCE(PptyFloat)
QN_REGISTER_INSTANCE(PptyBool)
QN_REGISTER_INSTANCE(PptyString)
QN_REGISTER_INSTANCE(PptyVector3F)
QN_REGISTER_INSTANCE(PptyVector3D)
QN_REGISTER_INSTANCE(PptyColor4F)
QN_REGISTER_INSTANCE(PptyColor4D)
QN_REGISTER_CLASS(PptyArrayString, 1)
QN_REGISTER_INSTANCE(PptyFile)
QN_REGISTER_INSTANCE(PptyDirectory)
QN_REGISTER_INSTANCE(RIntPpty)
QN_REGISTER_INSTANCE(RInt64Ppty)
QN_REGISTER_INSTANCE(RDoublePpty)
QN_REGISTER_INSTANCE(RFloatPpty)
QN_REGISTER_CLASS(RangeVect3FPpty, 1)
QN_REGISTER_CLASS(RangeVect3DPpty, 1)
QN_REGISTER_CLASS(PptyEnum, 2) // its record carries fields that schema 1 lacked

#undef QN_REGISTER_CLASS
#undef QN_REGISTER_INSTANCE
#undef QN_REGISTER

} // namespace quarn
