#include <MRCommon/properties/MetaClasses.h>

namespace quarn {

// Registered from top to bottom, taken out from bottom to top.
#define QN_REGISTER(KIND, SCHEMA)                                                                            \
    template class QN_MetaClass<KIND>;                                                                       \
    QN_MetaClass<KIND> const metaClass_##KIND(#KIND, SCHEMA)
#define QN_REGISTER_INSTANCE(KIND)                                                                           \
    QN_REGISTER(KIND, 1);                                                                                    \
    template <> QN_MetaClassBase const& KIND::metaClass() { return metaClass_##KIND; }

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
QN_REGISTER_INSTANCE(PptyFile)
QN_REGISTER_INSTANCE(PptyDirectory)

#undef QN_REGISTER_INSTANCE
#undef QN_REGISTER

} // namespace quarn
