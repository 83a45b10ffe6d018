#include <MRCommon/properties/BasicPpty.h>

#include <MRCommon/properties/detail/BasePptyImpl.h>
#include <MRCommon/properties/detail/EmptyString.h>
#include <MRCommon/properties/detail/ValueEncoding.h>
#include <MRCommon/properties/detail/ValueText.h>

namespace quarn {

template <class T, unsigned int TypeCode>
BasicPpty<T, TypeCode>::BasicPpty() : BasicPpty(detail::emptyString) {}

template <class T, unsigned int TypeCode>
BasicPpty<T, TypeCode>::BasicPpty(QN_String const& name) : BasePpty<T, TypeCode>(name) {}

template <class T, unsigned int TypeCode>
BasicPpty<T, TypeCode>::BasicPpty(QN_String const& name, T const& value)
    : BasePpty<T, TypeCode>(name, value) {}

template <class T, unsigned int TypeCode> BasicPpty<T, TypeCode>::BasicPpty(BasicPpty const& other) = default;

template <class T, unsigned int TypeCode> BasicPpty<T, TypeCode>::~BasicPpty() = default;

template <class T, unsigned int TypeCode> QN_String BasicPpty<T, TypeCode>::toStr() const {
    return detail::textOf(this->value());
}

template <class T, unsigned int TypeCode> void BasicPpty<T, TypeCode>::readFrom(FileStreamRaw& stream) {
    Ppty::readFrom(stream);
    detail::readValue(stream, this->value());
}

template <class T, unsigned int TypeCode> void BasicPpty<T, TypeCode>::writeTo(FileStreamRaw& stream) const {
    Ppty::writeTo(stream);
    detail::writeValue(stream, this->value());
}

#define QN_INSTANTIATE(T, CODE)                                                                              \
    template class BasePpty<T, CODE>;                                                                        \
    template class BasicPpty<T, CODE>

QN_INSTANTIATE(int, Ppty::TYPE_INT);
QN_INSTANTIATE(long long, Ppty::TYPE_INT64);
QN_INSTANTIATE(float, Ppty::TYPE_FLOAT);
QN_INSTANTIATE(double, Ppty::TYPE_DOUBLE);
QN_INSTANTIATE(bool, Ppty::TYPE_BOOL);
QN_INSTANTIATE(QN_String, Ppty::TYPE_STRING);
QN_INSTANTIATE(Vector3<float>, Ppty::TYPE_VECTOR3F);
QN_INSTANTIATE(Vector3<double>, Ppty::TYPE_VECTOR3D);
QN_INSTANTIATE(Color4<float>, Ppty::TYPE_COLOR4F);
QN_INSTANTIATE(Color4<double>, Ppty::TYPE_COLOR4D);
QN_INSTANTIATE(QN_String, Ppty::TYPE_FILE);
QN_INSTANTIATE(QN_String, Ppty::TYPE_DIRECTORY);

#undef QN_INSTANTIATE

} // namespace quarn
