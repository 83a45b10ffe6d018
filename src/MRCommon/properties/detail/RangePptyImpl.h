// The bodies of RangePpty, for the source files that instantiate it.
#ifndef MRCOMMON_PROPERTIES_DETAIL_RANGEPPTYIMPL_H
#define MRCOMMON_PROPERTIES_DETAIL_RANGEPPTYIMPL_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/basic/Vector3.h>
#include <MRCommon/properties/BasePpty.h>
#include <MRCommon/properties/detail/BasePptyImpl.h>
#include <MRCommon/properties/detail/ValueEncoding.h>
#include <MRCommon/properties/Ppty.h>
#include <MRCommon/properties/RangePpty.h>
#include <MRCommon/streams/FileStreamRaw.h>

namespace quarn {

namespace detail {

/// Whether the value is within its inclusive bounds; false for a NaN.
template <class T> bool isWithin(T const& value, T const& minimum, T const& maximum) {
    return value >= minimum && maximum >= value;
}

template <class T> bool isWithin(Vector3<T> const& v, Vector3<T> const& minimum, Vector3<T> const& maximum) {
    return isWithin(v.x, minimum.x, maximum.x) && isWithin(v.y, minimum.y, maximum.y) &&
           isWithin(v.z, minimum.z, maximum.z);
}

} // namespace detail

template <class T, unsigned int TypeCode>
RangePpty<T, TypeCode>::RangePpty(QN_String const& name, T const& minimum, T const& maximum)
    : BasePpty<T, TypeCode>(name), maximum_(maximum), minimum_(minimum) {}

template <class T, unsigned int TypeCode>
RangePpty<T, TypeCode>::RangePpty(QN_String const& name, T const& value, T const& minimum, T const& maximum)
    : BasePpty<T, TypeCode>(name, value), maximum_(maximum), minimum_(minimum) {}

template <class T, unsigned int TypeCode>
RangePpty<T, TypeCode>::RangePpty(RangePpty const& other) : BasePpty<T, TypeCode>(other) {
    minimum_ = other.getMin();
    maximum_ = other.getMax();
}

template <class T, unsigned int TypeCode> RangePpty<T, TypeCode>::~RangePpty() = default;

template <class T, unsigned int TypeCode> QN_String RangePpty<T, TypeCode>::toStr() const { return {}; }

template <class T, unsigned int TypeCode> void RangePpty<T, TypeCode>::readFrom(FileStreamRaw& stream) {
    Ppty::readFrom(stream);
    detail::readValue(stream, this->value());
    detail::readValue(stream, maximum_);
    detail::readValue(stream, minimum_);
}

template <class T, unsigned int TypeCode> void RangePpty<T, TypeCode>::writeTo(FileStreamRaw& stream) const {
    Ppty::writeTo(stream);
    detail::writeValue(stream, this->value());
    detail::writeValue(stream, maximum_);
    detail::writeValue(stream, minimum_);
}

template <class T, unsigned int TypeCode> T RangePpty<T, TypeCode>::getMax() const { return maximum_; }

template <class T, unsigned int TypeCode> T RangePpty<T, TypeCode>::getMin() const { return minimum_; }

template <class T, unsigned int TypeCode> void RangePpty<T, TypeCode>::setMax(T const& maximum) {
    maximum_ = maximum;
}

template <class T, unsigned int TypeCode> void RangePpty<T, TypeCode>::setMin(T const& minimum) {
    minimum_ = minimum;
}

} // namespace quarn

#endif
