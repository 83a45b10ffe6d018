// RangeVectPpty: a vector with inclusive bounds for each component; the typed setter takes the whole vector or
// nothing.
//     RangeVect3FPpty p("box", {0, 0, 0}, {0, 0, 0}, {1, 1, 1});   // name, value, minimum, maximum
//     p.setValue({0.5f, 2, 0.5f})                                  // false, the value stays whole
// The default bounds are the widest finite ones; a default value is uninitialised.
#ifndef MRCOMMON_PROPERTIES_RANGEVECTPPTY_H
#define MRCOMMON_PROPERTIES_RANGEVECTPPTY_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/basic/Vector3.h>
#include <MRCommon/Export.h>
#include <MRCommon/properties/BasePpty.h>
#include <MRCommon/properties/Ppty.h>
#include <MRCommon/properties/RangePpty.h>

namespace quarn {

/// `T` is Vector3<float> or Vector3<double>.
template <class T, unsigned int TypeCode> class MRCOMMON_API RangeVectPpty : public RangePpty<T, TypeCode> {
public:
    ~RangeVectPpty() override;

    using RangePpty<T, TypeCode>::setValue;
    /// Returns false, leaving the value unchanged, if a component is NaN or outside its stored bounds.
    bool setValue(T const& value) override;

protected:
    ///@{
    /// As for the concrete classes below.
    explicit RangeVectPpty(QN_String const& name);
    RangeVectPpty(QN_String const& name, T const& value);
    RangeVectPpty(QN_String const& name, T const& value, T const& minimum, T const& maximum);
    RangeVectPpty(RangeVectPpty const& other);
    ///@}
};

extern template class BasePpty<Vector3<float>, Ppty::TYPE_RANGE_VECTOR3F>;
extern template class RangePpty<Vector3<float>, Ppty::TYPE_RANGE_VECTOR3F>;
extern template class RangeVectPpty<Vector3<float>, Ppty::TYPE_RANGE_VECTOR3F>;
extern template class BasePpty<Vector3<double>, Ppty::TYPE_RANGE_VECTOR3D>;
extern template class RangePpty<Vector3<double>, Ppty::TYPE_RANGE_VECTOR3D>;
extern template class RangeVectPpty<Vector3<double>, Ppty::TYPE_RANGE_VECTOR3D>;

/// A ranged vector in single precision.
class MRCOMMON_API RangeVect3FPpty : public RangeVectPpty<Vector3<float>, Ppty::TYPE_RANGE_VECTOR3F> {
public:
    QN_CLASS_IDENTITY_AS(MRCOMMON_HIDDEN)

    RangeVect3FPpty(); ///< an empty name, an uninitialised value, the default bounds
    ///@{
    /// Stores the arguments without a test, even a value outside the bounds.
    explicit RangeVect3FPpty(QN_String const& name);
    explicit RangeVect3FPpty(QN_String const& name, Vector3<float> const& value);
    explicit RangeVect3FPpty(QN_String const& name, Vector3<float> const& value,
                             Vector3<float> const& minimum, Vector3<float> const& maximum);
    ///@}
    RangeVect3FPpty(RangeVect3FPpty const& other); ///< the bounds are those that `other` returns
    ~RangeVect3FPpty() override;

    [[nodiscard]] Ppty* clone() const override;
    [[nodiscard]] Ppty* cloneWithNewName(QN_String const& name) const override;
};

/// A ranged vector in double precision.
class MRCOMMON_API RangeVect3DPpty : public RangeVectPpty<Vector3<double>, Ppty::TYPE_RANGE_VECTOR3D> {
public:
    QN_CLASS_IDENTITY_AS(MRCOMMON_HIDDEN)

    RangeVect3DPpty(); ///< an empty name, an uninitialised value, the default bounds
    ///@{
    /// Stores the arguments without a test, even a value outside the bounds.
    explicit RangeVect3DPpty(QN_String const& name);
    explicit RangeVect3DPpty(QN_String const& name, Vector3<double> const& value);
    explicit RangeVect3DPpty(QN_String const& name, Vector3<double> const& value,
                             Vector3<double> const& minimum, Vector3<double> const& maximum);
    ///@}
    RangeVect3DPpty(RangeVect3DPpty const& other); ///< the bounds are those that `other` returns
    ~RangeVect3DPpty() override;

    [[nodiscard]] Ppty* clone() const override;
    [[nodiscard]] Ppty* cloneWithNewName(QN_String const& name) const override;
};

} // namespace quarn

#endif
