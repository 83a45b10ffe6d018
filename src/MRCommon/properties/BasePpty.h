// BasePpty: a property's value, kept in a variant, and the access to it that all kinds share.
//     *property.getRefToValue() = 2.5f;
//     property.setValue(3.0f);
//     property.getVariantValue().as<float>()
// `T` is one of the value kinds of ItemVariant, `TypeCode` a Ppty::Type. The variant's tag is that of the
// plain kind (a ranged float carries the tag of float) and never changes.
#ifndef MRCOMMON_PROPERTIES_BASEPPTY_H
#define MRCOMMON_PROPERTIES_BASEPPTY_H

#include <MRCommon/properties/Ppty.h>

namespace quarn {

template <class T, unsigned int TypeCode> class MRCOMMON_API BasePpty : public Ppty {
public:
    ItemVariant const& getVariantValue() const override; ///< the property's own value, as it is now
    bool setValue(ItemVariant const& value) override;    ///< as Ppty tells; true
    unsigned int getType() const override;               ///< `TypeCode`

    virtual T* getRefToValue();            ///< slot 18: the value itself; writing through it tests nothing
    virtual bool setValue(T const& value); ///< slot 19: takes a copy; true

protected:
    explicit BasePpty(QN_String const& name);        ///< with a fresh value
    BasePpty(QN_String const& name, T const& value); ///< takes a copy
    BasePpty(BasePpty const& other);                 ///< name and value
    ~BasePpty() override;

    ///@{
    /// The value, for the kinds themselves.
    T& value() { return *variant_.as<T>(); }
    T const& value() const { return *variant_.as<T>(); }
    ///@}

private:
    ItemVariant variant_;
};

} // namespace quarn

#endif
