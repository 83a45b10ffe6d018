#include <MRCommon/properties/RgdBasicPpty.h>

#include <MRCommon/properties/detail/EmptyString.h>
#include <MRCommon/properties/detail/RangePptyImpl.h>

#include <limits>

namespace quarn {

template <class T, unsigned int TypeCode>
RgdBasicPpty<T, TypeCode>::RgdBasicPpty() : RgdBasicPpty(detail::emptyString) {}

template <class T, unsigned int TypeCode>
RgdBasicPpty<T, TypeCode>::RgdBasicPpty(QN_String const& name) : RgdBasicPpty(name, T(0)) {}

template <class T, unsigned int TypeCode>
RgdBasicPpty<T, TypeCode>::RgdBasicPpty(QN_String const& name, T const& value)
    : RgdBasicPpty(name, value, -std::numeric_limits<T>::max(), std::numeric_limits<T>::max()) {}

template <class T, unsigned int TypeCode>
RgdBasicPpty<T, TypeCode>::RgdBasicPpty(QN_String const& name, T const& value, T const& minimum,
                                        T const& maximum)
    : RangePpty<T, TypeCode>(name, value, minimum, maximum) {}

template <class T, unsigned int TypeCode>
RgdBasicPpty<T, TypeCode>::RgdBasicPpty(RgdBasicPpty const& other) = default;

template <class T, unsigned int TypeCode> RgdBasicPpty<T, TypeCode>::~RgdBasicPpty() = default;

template <class T, unsigned int TypeCode> bool RgdBasicPpty<T, TypeCode>::setValue(T const& value) {
    return detail::isWithin(value, this->minimum_, this->maximum_) && RangePpty<T, TypeCode>::setValue(value);
}

#define QN_INSTANTIATE(T, CODE)                                                                              \
    template class BasePpty<T, CODE>;                                                                        \
    template class RangePpty<T, CODE>;                                                                       \
    template class RgdBasicPpty<T, CODE>

QN_INSTANTIATE(int, Ppty::TYPE_RANGE_INT);
QN_INSTANTIATE(long long, Ppty::TYPE_RANGE_INT64);
QN_INSTANTIATE(float, Ppty::TYPE_RANGE_FLOAT);
QN_INSTANTIATE(double, Ppty::TYPE_RANGE_DOUBLE);

#undef QN_INSTANTIATE

} // namespace quarn
