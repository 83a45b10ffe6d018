// RgdBasicPpty: a number with inclusive bounds; its typed setter refuses numbers outside them.
//     RFloatPpty p("opacity", 0.5f, 0.0f, 1.0f);        // name, value, minimum, maximum
//     p.setValue(1.5f)                                  // false, the value stays 0.5
//     p.setValue(1.0f)                                  // true
//
//   kind           value       default bounds
//   RIntPpty       int         -2147483647 .. 2147483647
//   RInt64Ppty     long long   -9223372036854775807 .. 9223372036854775807
//   RFloatPpty     float       the negated largest finite float .. the largest
//   RDoublePpty    double      the negated largest finite double .. the largest
//
// Intentional: the default bounds are symmetric, so the smallest int is outside.
// Tested by RgdBasicPpty.HasTheWidestSymmetricBoundsByDefault.
#ifndef MRCOMMON_PROPERTIES_RGDBASICPPTY_H
#define MRCOMMON_PROPERTIES_RGDBASICPPTY_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>
#include <MRCommon/properties/Ppty.h>
#include <MRCommon/properties/RangePpty.h>

namespace quarn {

template <class T, unsigned int TypeCode> class MRCOMMON_API RgdBasicPpty : public RangePpty<T, TypeCode> {
public:
    QN_CLASS_IDENTITY
    QN_PPTY_COPIES(RgdBasicPpty)

    RgdBasicPpty(); ///< an empty name, 0, the default bounds
    ///@{
    /// Stores the arguments without a test, even a value outside the bounds.
    explicit RgdBasicPpty(QN_String const& name);
    explicit RgdBasicPpty(QN_String const& name, T const& value);
    explicit RgdBasicPpty(QN_String const& name, T const& value, T const& minimum, T const& maximum);
    ///@}
    RgdBasicPpty(RgdBasicPpty const& other); ///< the bounds are those that `other` returns
    ~RgdBasicPpty() override;

    using RangePpty<T, TypeCode>::setValue;
    /// Returns false, leaving the value unchanged, if `value` is NaN or outside the stored bounds.
    bool setValue(T const& value) override;
};

///@{
/// A kind of the table at the top of this header.
using RIntPpty = RgdBasicPpty<int, Ppty::TYPE_RANGE_INT>;
using RInt64Ppty = RgdBasicPpty<long long, Ppty::TYPE_RANGE_INT64>;
using RFloatPpty = RgdBasicPpty<float, Ppty::TYPE_RANGE_FLOAT>;
using RDoublePpty = RgdBasicPpty<double, Ppty::TYPE_RANGE_DOUBLE>;
///@}

#define QN_EXTERN_INSTANCE(KIND, T, CODE)                                                                    \
    template <> MRCOMMON_API QN_MetaClassBase const& KIND::metaClass();                                      \
    extern template class BasePpty<T, CODE>;                                                                 \
    extern template class RangePpty<T, CODE>;                                                                \
    extern template class RgdBasicPpty<T, CODE>

QN_EXTERN_INSTANCE(RIntPpty, int, Ppty::TYPE_RANGE_INT);
QN_EXTERN_INSTANCE(RInt64Ppty, long long, Ppty::TYPE_RANGE_INT64);
QN_EXTERN_INSTANCE(RFloatPpty, float, Ppty::TYPE_RANGE_FLOAT);
QN_EXTERN_INSTANCE(RDoublePpty, double, Ppty::TYPE_RANGE_DOUBLE);

#undef QN_EXTERN_INSTANCE

} // namespace quarn

#endif
