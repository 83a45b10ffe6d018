// RangePpty: a property's value with inclusive bounds, which the concrete ranged kinds test it against.
//     ranged.setMax(10);                // the value is not moved, the minimum not compared
//     ranged.getMax()                   // 10
//
//   raw record    head, then value, maximum, minimum; on a FileStreamEndian the head alone
//
// Values pass by the bounds, as meant, through setValue(ItemVariant), getRefToValue(), construction and
// reading. The ranged kinds have no text of their own: toStr() is empty, as meant.
#ifndef MRCOMMON_PROPERTIES_RANGEPPTY_H
#define MRCOMMON_PROPERTIES_RANGEPPTY_H

#include <MRCommon/properties/BasePpty.h>

namespace quarn {

template <class T, unsigned int TypeCode> class MRCOMMON_API RangePpty : public BasePpty<T, TypeCode> {
public:
    QN_String toStr() const override; ///< empty, as meant

    using Ppty::readFrom;
    using Ppty::writeTo;
    ///@{
    /// Value, maximum, minimum behind the head; nothing is tested.
    void readFrom(FileStreamRaw& stream) override;
    void writeTo(FileStreamRaw& stream) const override;
    ///@}

    virtual T getMax() const;              ///< slot 20
    virtual T getMin() const;              ///< slot 21
    virtual void setMax(T const& maximum); ///< slot 22
    virtual void setMin(T const& minimum); ///< slot 23

protected:
    RangePpty(QN_String const& name, T const& minimum, T const& maximum); ///< with a fresh value
    RangePpty(QN_String const& name, T const& value, T const& minimum, T const& maximum); ///< stored untested
    RangePpty(RangePpty const& other); ///< takes the bounds as `other` answers them
    ~RangePpty() override;

    T maximum_; ///< in front of the minimum, as in the record
    T minimum_; ///< may exceed the maximum: then nothing fits
};

} // namespace quarn

#endif
