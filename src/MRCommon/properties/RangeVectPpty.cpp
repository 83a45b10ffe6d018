#include <MRCommon/properties/RangeVectPpty.h>

#include <MRCommon/basic/Limits.h>
#include <MRCommon/properties/detail/EmptyString.h>
#include <MRCommon/properties/detail/RangePptyImpl.h>

#include <type_traits>

namespace quarn {

namespace {

template <class T> Vector3<T> firstThree(TupleN<4, T> const& limits) {
    return {limits[0], limits[1], limits[2]};
}

template <class T> T widestMinimum() {
    if constexpr (std::is_same_v<T, Vector3<float>>)
        return firstThree(constants::f::MN_MN_MN_MN);
    else
        return firstThree(constants::d::MN_MN_MN_MN);
}

template <class T> T widestMaximum() {
    if constexpr (std::is_same_v<T, Vector3<float>>)
        return firstThree(constants::f::MX_MX_MX_MX);
    else
        return firstThree(constants::d::MX_MX_MX_MX);
}

} // namespace

template <class T, unsigned int TypeCode>
RangeVectPpty<T, TypeCode>::RangeVectPpty(QN_String const& name)
    : RangePpty<T, TypeCode>(name, widestMinimum<T>(), widestMaximum<T>()) {}

template <class T, unsigned int TypeCode>
RangeVectPpty<T, TypeCode>::RangeVectPpty(QN_String const& name, T const& value)
    : RangePpty<T, TypeCode>(name, value, widestMinimum<T>(), widestMaximum<T>()) {}

template <class T, unsigned int TypeCode>
RangeVectPpty<T, TypeCode>::RangeVectPpty(QN_String const& name, T const& value, T const& minimum,
                                          T const& maximum)
    : RangePpty<T, TypeCode>(name, value, minimum, maximum) {}

template <class T, unsigned int TypeCode>
RangeVectPpty<T, TypeCode>::RangeVectPpty(RangeVectPpty const& other) = default;

template <class T, unsigned int TypeCode> RangeVectPpty<T, TypeCode>::~RangeVectPpty() = default;

template <class T, unsigned int TypeCode> bool RangeVectPpty<T, TypeCode>::setValue(T const& value) {
    return detail::isWithin(value, this->minimum_, this->maximum_) && RangePpty<T, TypeCode>::setValue(value);
}

#define QN_INSTANTIATE(KIND, T, CODE)                                                                        \
    template class BasePpty<T, CODE>;                                                                        \
    template class RangePpty<T, CODE>;                                                                       \
    template class RangeVectPpty<T, CODE>;                                                                   \
    KIND::KIND() : KIND(detail::emptyString) {}                                                              \
    KIND::KIND(QN_String const& name) : RangeVectPpty(name) {}                                               \
    KIND::KIND(QN_String const& name, T const& value) : RangeVectPpty(name, value) {}                        \
    KIND::KIND(QN_String const& name, T const& value, T const& minimum, T const& maximum)                    \
        : RangeVectPpty(name, value, minimum, maximum) {}                                                    \
    KIND::KIND(KIND const& other) = default;                                                                 \
    KIND::~KIND() = default;                                                                                 \
    Ppty* KIND::clone() const { return new KIND(*this); }                                                    \
    Ppty* KIND::cloneWithNewName(QN_String const& name) const { return withName(clone(), name); }

QN_INSTANTIATE(RangeVect3FPpty, Vector3<float>, Ppty::TYPE_RANGE_VECTOR3F)
QN_INSTANTIATE(RangeVect3DPpty, Vector3<double>, Ppty::TYPE_RANGE_VECTOR3D)

#undef QN_INSTANTIATE

} // namespace quarn
