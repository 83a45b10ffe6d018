// BasePpty: the value of a property, stored in a variant, and the access to it that all kinds share.
//     *property.getRefToValue() = 2.5f;
//     property.setValue(3.0f);
//     property.getVariantValue().as<float>()
// `T` is one of the value types of ItemVariant, `TypeCode` a Ppty::Type. The tag of the variant is that of the
// plain kind (a ranged float has the tag of float) and never changes.
#ifndef MRCOMMON_PROPERTIES_BASEPPTY_H
#define MRCOMMON_PROPERTIES_BASEPPTY_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>
#include <MRCommon/properties/detail/VariantKinds.h>
#include <MRCommon/properties/ItemVariant.h>
#include <MRCommon/properties/Ppty.h>

#include <type_traits>

namespace quarn {

template <class T, unsigned int TypeCode> class MRCOMMON_API BasePpty : public Ppty {
    static_assert(detail::variantTag<T> != 0,
                  "no variant holds a value of this type: derive from a kind with one of the types listed in "
                  "ItemVariant.h and add your own data as members, which readFrom and writeTo append");

public:
    ~BasePpty() override;

    ItemVariant const& getVariantValue() const override; ///< the current value, not a copy
    bool setValue(ItemVariant const& value) override;    ///< by the rules of Ppty; returns true
    unsigned int getType() const override;               ///< `TypeCode`

    virtual T* getRefToValue();            ///< slot 18: the value itself; writing through it tests no bound
    virtual bool setValue(T const& value); ///< slot 19: copies the value; returns true

    /// Does not compile: a pointer, "False" among them, would set a bool to true.
    template <class P, class = std::enable_if_t<std::is_same_v<T, bool> && detail::isPointer<P>>>
    bool setValue(P pointer) = delete;

protected:
    explicit BasePpty(QN_String const& name);        ///< with the default value of the kind
    BasePpty(QN_String const& name, T const& value); ///< copies the value
    BasePpty(BasePpty const& other);                 ///< copies name and value

    ///@{
    /// Returns the value, for derived kinds.
    T& value() noexcept { return *variant_.as<T>(); }
    T const& value() const noexcept { return *variant_.as<T>(); }
    ///@}

private:
    ItemVariant variant_;
};

} // namespace quarn

#endif
