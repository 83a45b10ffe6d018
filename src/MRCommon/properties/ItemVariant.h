// ItemVariant: one value of any of the twelve kinds that properties hold, owned, with a tag that tells the
// kind.
//     ItemVariant v(2.5f);
//     v.tag()                           // 3
//     *v.as<float>()                    // 2.5
//     v.as<double>()                    // null: another kind
//
//   tag  0 none     3 float    6 QN_String          9 Color4<float>    11 Array<QN_String>
//        1 int      4 double   7 Vector3<float>    10 Color4<double>   12 Tuple2<QN_String, int>
//        2 long long 5 bool    8 Vector3<double>
//
// Tags 1 to 11 are also the type codes of properties; tag 12 is the value of type code 18. Keep the two
// apart. A tag may stand without a value: after deleteValue(), and when a file brings a tag that is not known
// here.
#ifndef MRCOMMON_PROPERTIES_ITEMVARIANT_H
#define MRCOMMON_PROPERTIES_ITEMVARIANT_H

#include <MRCommon/properties/detail/VariantKinds.h>
#include <MRCommon/streams/FileStreamRaw.h>

#include <utility>

namespace quarn {

class MRCOMMON_API ItemVariant {
public:
    ItemVariant() = default; ///< tag 0, no value
    ///@{
    /// Holds a copy, under the tag of its type; a long is kept as a long long, a C text as a QN_String.
    explicit ItemVariant(int value) : ItemVariant(own(value)) {}
    explicit ItemVariant(long value) : ItemVariant(static_cast<long long>(value)) {}
    explicit ItemVariant(long long value) : ItemVariant(own(value)) {}
    explicit ItemVariant(float value) : ItemVariant(own(value)) {}
    explicit ItemVariant(double value) : ItemVariant(own(value)) {}
    explicit ItemVariant(bool value) : ItemVariant(own(value)) {}
    explicit ItemVariant(char const* text) : ItemVariant(QN_String(text)) {}
    explicit ItemVariant(QN_String const& value);
    explicit ItemVariant(Vector3<float> const& value) : ItemVariant(own(value)) {}
    explicit ItemVariant(Vector3<double> const& value) : ItemVariant(own(value)) {}
    explicit ItemVariant(Color4<float> const& value) : ItemVariant(own(value)) {}
    explicit ItemVariant(Color4<double> const& value) : ItemVariant(own(value)) {}
    explicit ItemVariant(Array<QN_String> const& value);
    explicit ItemVariant(Tuple2<QN_String, int> const& value);
    ///@}

    /// Holds a T as a fresh property does: 0, false, empty, opaque black; a vector's components are
    /// unwritten.
    template <class T> static ItemVariant makeDefault();

    ItemVariant(ItemVariant const& other);                     ///< deep; copies are sized exactly
    ItemVariant(ItemVariant&& other) noexcept { swap(other); } ///< leaves a default one behind
    ItemVariant& operator=(ItemVariant other) noexcept;        ///< deep, or a move

    virtual ~ItemVariant(); ///< slots 0 and 1

    /// The tag as 4 bytes, then the value. An unknown tag is stored, with nothing read behind it. Meant for a
    /// variant without a value: one that it holds is not released.
    virtual void readFrom(FileStreamRaw& stream); ///< slot 2

    /// An unknown tag is written alone; a tag whose value was deleted as 0, so that readers stay in step.
    virtual void writeTo(FileStreamRaw& stream) const; ///< slot 3

    template <class Stream> void readFromT(Stream& stream); ///< what readFrom does; made for FileStreamRaw
    template <class Stream>
    void writeToT(Stream& stream) const; ///< what writeTo does; made for FileStreamRaw

    unsigned int tag() const { return tag_; } ///< the kind, by the table above

    ///@{
    /// The value as a T; null when there is none or the tag does not fit. Two kinds are meant to fit more
    /// than their own tag: int also tag 12 (the index of the pair), QN_String also tag 12 (the label) and tag
    /// 11 (the list object itself, although it is no string: it is not to be read as one).
    template <class T> T* as();
    template <class T> T const* as() const { return const_cast<ItemVariant*>(this)->as<T>(); }
    ///@}

    /// Frees the value. The tag stays: meant, whoever reads a value checks the pointer.
    void deleteValue();

    /// The product's shared variant without a value. Lives until the process ends.
    static ItemVariant* ItemVariant_Invalid;

private:
    template <class T> static ItemVariant own(T const& value) { return {detail::Kind<T>(), new T(value)}; }
    template <class T> ItemVariant(detail::Kind<T>, T* value) : tag_(detail::variantTag<T>), value_(value) {}
    void swap(ItemVariant& other) noexcept;

    unsigned int tag_ = 0;
    void* value_ = nullptr;
};

static_assert(sizeof(ItemVariant) == 24, "virtual table, tag, value");

// ---------------------------------------------------------------------------

template <class T> ItemVariant ItemVariant::makeDefault() {
    return {detail::Kind<T>(), detail::newDefaultValue<T>()};
}

template <class T> T* ItemVariant::as() {
    static_assert(detail::variantTag<T> != 0, "no variant holds a value of this type");
    return tag_ == detail::variantTag<T> ? static_cast<T*>(value_) : nullptr;
}

/// An int, or the index of a pair.
template <> inline int* ItemVariant::as<int>() {
    if (tag_ == detail::variantTag<int>) return static_cast<int*>(value_);
    auto* const pair = as<Tuple2<QN_String, int>>();
    return pair == nullptr ? nullptr : &pair->second;
}

/// A text, or the label of a pair; of a list the list object.
template <> inline QN_String* ItemVariant::as<QN_String>() {
    switch (tag_) {
    case detail::variantTag<QN_String>:
    case detail::variantTag<Array<QN_String>>:
    case detail::variantTag<Tuple2<QN_String, int>>:
        return static_cast<QN_String*>(value_); // the label is first
    default: return nullptr;
    }
}

} // namespace quarn

#endif
