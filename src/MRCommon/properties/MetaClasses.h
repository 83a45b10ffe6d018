// MetaClasses: the meta-class objects of the property kinds of this library.
//     void* object = metaClass_PptyFloat.metaNew();
// Each is registered when the library is loaded, under the part of its name after the underscore.
#ifndef MRCOMMON_PROPERTIES_METACLASSES_H
#define MRCOMMON_PROPERTIES_METACLASSES_H

#include <MRCommon/Export.h>
#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/properties/PptyArrayString.h>
#include <MRCommon/properties/PptyEnum.h>
#include <MRCommon/properties/QN_MetaClass.h>
#include <MRCommon/properties/RangeVectPpty.h>
#include <MRCommon/properties/RgdBasicPpty.h>

namespace quarn {

#define QN_DECLARE_METACLASS(KIND)                                                                           \
    extern template class MRCOMMON_API QN_MetaClass<KIND>;                                                   \
    extern MRCOMMON_API QN_MetaClass<KIND> const metaClass_##KIND

///@{
/// The meta-class object of the kind whose name follows the underscore. It is destroyed at exit, the last one
/// first: an exit handler that runs later may make and use properties, but not ask them for their class.
QN_DECLARE_METACLASS(PptyInt);
QN_DECLARE_METACLASS(PptyInt64);
QN_DECLARE_METACLASS(PptyDouble);
QN_DECLARE_METACLASS(PptyFloat);
QN_DECLARE_METACLASS(PptyBool);
QN_DECLARE_METACLASS(PptyString);
QN_DECLARE_METACLASS(PptyVector3F);
QN_DECLARE_METACLASS(PptyVector3D);
QN_DECLARE_METACLASS(PptyColor4F);
QN_DECLARE_METACLASS(PptyColor4D);
QN_DECLARE_METACLASS(PptyArrayString);
QN_DECLARE_METACLASS(PptyFile);
QN_DECLARE_METACLASS(PptyDirectory);
QN_DECLARE_METACLASS(RIntPpty);
QN_DECLARE_METACLASS(RInt64Ppty);
QN_DECLARE_METACLASS(RDoublePpty);
QN_DECLARE_METACLASS(RFloatPpty);
QN_DECLARE_METACLASS(RangeVect3FPpty);
QN_DECLARE_METACLASS(RangeVect3DPpty);
QN_DECLARE_METACLASS(PptyEnum);
///@}

#undef QN_DECLARE_METACLASS

} // namespace quarn

#endif
