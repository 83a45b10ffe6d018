// RangePpty: a property with inclusive bounds, which the typed setters of the concrete ranged kinds test.
//     ranged.setMax(10);                // the value does not change, the minimum is not compared
//     ranged.getMax()                   // 10
//
//   raw record    name, then value, maximum, minimum; on a FileStreamEndian just the name
//
// Intentional: setValue(ItemVariant), getRefToValue(), construction and reading do not test the bounds, and
// toStr() returns "". Tested by RgdBasicPptyKind.TestsItsBoundsInTheTypedSetterOnly.
#ifndef MRCOMMON_PROPERTIES_RANGEPPTY_H
#define MRCOMMON_PROPERTIES_RANGEPPTY_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>
#include <MRCommon/properties/BasePpty.h>
#include <MRCommon/properties/Ppty.h>
#include <MRCommon/streams/FileStreamRaw.h>

namespace quarn {

template <class T, unsigned int TypeCode> class MRCOMMON_API RangePpty : public BasePpty<T, TypeCode> {
public:
    ~RangePpty() override;

    [[nodiscard]] QN_String toStr() const override; ///< intentionally ""

    using Ppty::readFrom;
    using Ppty::writeTo;
    ///@{
    /// Reads or writes value, maximum and minimum after the name, without a test.
    void readFrom(FileStreamRaw& stream) override;
    void writeTo(FileStreamRaw& stream) const override;
    ///@}

    virtual T getMax() const;              ///< slot 20: the upper bound
    virtual T getMin() const;              ///< slot 21: the lower bound
    virtual void setMax(T const& maximum); ///< slot 22: stores the upper bound; the value stays
    virtual void setMin(T const& minimum); ///< slot 23: stores the lower bound; the value stays

protected:
    RangePpty(QN_String const& name, T const& minimum, T const& maximum); ///< with the default value
    RangePpty(QN_String const& name, T const& value, T const& minimum, T const& maximum); ///< tests nothing
    RangePpty(RangePpty const& other); ///< the bounds are those that other's getMax() and getMin() return

    T maximum_; ///< precedes the minimum, as in the record
    T minimum_; ///< may exceed the maximum: then no value fits
};

} // namespace quarn

#endif
