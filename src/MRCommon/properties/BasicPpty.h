// BasicPpty: a property that holds one plain value, in twelve kinds.
//     PptyFloat gravity("gravity", -9.81f);
//     gravity.toStr().c_str()           // " -9.810000 "
//     gravity.writeTo(raw);             // the name, then the four bytes of the float
//
//   kind            value             default         raw record after the name      toStr
//   PptyInt         int               0               4 bytes                        " %i "
//   PptyInt64       long long         0               8 bytes                        " %i64 ", see below
//   PptyFloat       float             0               4 bytes                        " %f "
//   PptyDouble      double            0               8 bytes                        " %f "
//   PptyBool        bool              false           1 byte, 0 or 1                 "True", "False"
//   PptyString      QN_String         empty           U32 size, bytes                the value
//   PptyVector3F    Vector3<float>    uninitialised   12 bytes                       x, y, z, see below
//   PptyVector3D    Vector3<double>   uninitialised   24 bytes                       the same
//   PptyColor4F     Color4<float>     (0, 0, 0, 1)    16 bytes                       r, g, b, a, see below
//   PptyColor4D     Color4<double>    (0, 0, 0, 1)    32 bytes                       the same
//   PptyFile        QN_String         empty           as PptyString                  the value
//   PptyDirectory   QN_String         empty           as PptyString                  the value
//
// toStr of a vector is "x: %f \n, y: %f \n, z: %f \n", that of a colour the same with r, g, b and a.
// Intentional: toStr of a PptyInt64 is the low 32 bits in decimal followed by the characters 64, " 564 " for 5,
// as stored texts and user interfaces expect. Tested by BasicPpty.TextOfInt64KeepsItsLowBitsAnd64.
#ifndef MRCOMMON_PROPERTIES_BASICPPTY_H
#define MRCOMMON_PROPERTIES_BASICPPTY_H

#include <MRCommon/basic/Color4.h>
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/basic/Vector3.h>
#include <MRCommon/Export.h>
#include <MRCommon/properties/BasePpty.h>
#include <MRCommon/properties/Ppty.h>
#include <MRCommon/streams/FileStreamRaw.h>

#include <type_traits>

namespace quarn {

template <class T, unsigned int TypeCode> class MRCOMMON_API BasicPpty : public BasePpty<T, TypeCode> {
public:
    QN_CLASS_IDENTITY
    QN_PPTY_COPIES(BasicPpty)

    BasicPpty();                                               ///< an empty name, the default value
    explicit BasicPpty(QN_String const& name);                 ///< the default value
    explicit BasicPpty(QN_String const& name, T const& value); ///< copies both
    BasicPpty(BasicPpty const& other);                         ///< copies name and value
    ~BasicPpty() override;

    /// Does not compile: a pointer, "False" among them, would make a bool true.
    template <class P, class = std::enable_if_t<std::is_same_v<T, bool> && detail::isPointer<P>>>
    explicit BasicPpty(QN_String const& name, P pointer) = delete;

    [[nodiscard]] QN_String toStr() const override;

    using Ppty::readFrom;
    using Ppty::writeTo;
    void readFrom(FileStreamRaw& stream) override;
    void writeTo(FileStreamRaw& stream) const override;
};

///@{
/// A kind of the table at the top of this header.
using PptyInt = BasicPpty<int, Ppty::TYPE_INT>;
using PptyInt64 = BasicPpty<long long, Ppty::TYPE_INT64>;
using PptyFloat = BasicPpty<float, Ppty::TYPE_FLOAT>;
using PptyDouble = BasicPpty<double, Ppty::TYPE_DOUBLE>;
using PptyBool = BasicPpty<bool, Ppty::TYPE_BOOL>;
using PptyString = BasicPpty<QN_String, Ppty::TYPE_STRING>;
using PptyVector3F = BasicPpty<Vector3<float>, Ppty::TYPE_VECTOR3F>;
using PptyVector3D = BasicPpty<Vector3<double>, Ppty::TYPE_VECTOR3D>;
using PptyColor4F = BasicPpty<Color4<float>, Ppty::TYPE_COLOR4F>;
using PptyColor4D = BasicPpty<Color4<double>, Ppty::TYPE_COLOR4D>;
using PptyFile = BasicPpty<QN_String, Ppty::TYPE_FILE>;
using PptyDirectory = BasicPpty<QN_String, Ppty::TYPE_DIRECTORY>;
///@}

#define QN_EXTERN_INSTANCE(KIND, T, CODE)                                                                    \
    template <> MRCOMMON_API QN_MetaClassBase const& KIND::metaClass();                                      \
    extern template class BasePpty<T, CODE>;                                                                 \
    extern template class BasicPpty<T, CODE>

QN_EXTERN_INSTANCE(PptyInt, int, Ppty::TYPE_INT);
QN_EXTERN_INSTANCE(PptyInt64, long long, Ppty::TYPE_INT64);
QN_EXTERN_INSTANCE(PptyFloat, float, Ppty::TYPE_FLOAT);
QN_EXTERN_INSTANCE(PptyDouble, double, Ppty::TYPE_DOUBLE);
QN_EXTERN_INSTANCE(PptyBool, bool, Ppty::TYPE_BOOL);
QN_EXTERN_INSTANCE(PptyString, QN_String, Ppty::TYPE_STRING);
QN_EXTERN_INSTANCE(PptyVector3F, Vector3<float>, Ppty::TYPE_VECTOR3F);
QN_EXTERN_INSTANCE(PptyVector3D, Vector3<double>, Ppty::TYPE_VECTOR3D);
QN_EXTERN_INSTANCE(PptyColor4F, Color4<float>, Ppty::TYPE_COLOR4F);
QN_EXTERN_INSTANCE(PptyColor4D, Color4<double>, Ppty::TYPE_COLOR4D);
QN_EXTERN_INSTANCE(PptyFile, QN_String, Ppty::TYPE_FILE);
QN_EXTERN_INSTANCE(PptyDirectory, QN_String, Ppty::TYPE_DIRECTORY);

#undef QN_EXTERN_INSTANCE

} // namespace quarn

#endif
