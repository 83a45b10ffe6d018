// ItemVariant: an owned value of one of the twelve kinds that properties hold, with a tag for its kind.
//     ItemVariant v(2.5f);
//     v.tag()                           // 3
//     *v.as<float>()                    // 2.5
//     v.as<double>()                    // null: another kind
//
//   tag  0 none     3 float    6 QN_String          9 Color4<float>    11 Array<QN_String>
//        1 int      4 double   7 Vector3<float>    10 Color4<double>   12 Tuple2<QN_String, int>
//        2 long long 5 bool    8 Vector3<double>
//
// Tags 1 to 11 equal the type codes of the properties with such values, but tag 12 belongs to type code 18:
// do not compare the two. A variant may have a tag but no value: after deleteValue(), and after reading an
// unknown tag from a file.
#ifndef MRCOMMON_PROPERTIES_ITEMVARIANT_H
#define MRCOMMON_PROPERTIES_ITEMVARIANT_H

#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/Color4.h>
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/basic/Tuple.h>
#include <MRCommon/basic/Vector3.h>
#include <MRCommon/Export.h>
#include <MRCommon/properties/detail/VariantKinds.h>
#include <MRCommon/streams/FileStreamRaw.h>

#include <type_traits>
#include <utility>

namespace quarn {

class MRCOMMON_API ItemVariant {
public:
    MRCOMMON_HIDDEN ItemVariant() = default; ///< tag 0, no value
    ///@{
    /// Holds a copy, under the tag of its type; a long is stored as a long long, a C string as a QN_String.
    MRCOMMON_HIDDEN explicit ItemVariant(int value) : ItemVariant(detail::Kind<int>(), value) {}
    MRCOMMON_HIDDEN explicit ItemVariant(long value) : ItemVariant(static_cast<long long>(value)) {}
    MRCOMMON_HIDDEN explicit ItemVariant(long long value) : ItemVariant(detail::Kind<long long>(), value) {}
    MRCOMMON_HIDDEN explicit ItemVariant(float value) : ItemVariant(detail::Kind<float>(), value) {}
    MRCOMMON_HIDDEN explicit ItemVariant(double value) : ItemVariant(detail::Kind<double>(), value) {}
    MRCOMMON_HIDDEN explicit ItemVariant(bool value) : ItemVariant(detail::Kind<bool>(), value) {}
    MRCOMMON_HIDDEN explicit ItemVariant(char const* text) : ItemVariant(QN_String(text)) {}
    explicit ItemVariant(QN_String const& value);
    MRCOMMON_HIDDEN explicit ItemVariant(Vector3<float> const& value)
        : ItemVariant(detail::Kind<Vector3<float>>(), value) {}
    MRCOMMON_HIDDEN explicit ItemVariant(Vector3<double> const& value)
        : ItemVariant(detail::Kind<Vector3<double>>(), value) {}
    MRCOMMON_HIDDEN explicit ItemVariant(Color4<float> const& value)
        : ItemVariant(detail::Kind<Color4<float>>(), value) {}
    MRCOMMON_HIDDEN explicit ItemVariant(Color4<double> const& value)
        : ItemVariant(detail::Kind<Color4<double>>(), value) {}
    explicit ItemVariant(Array<QN_String> const& value);
    explicit ItemVariant(Tuple2<QN_String, int> const& value);
    ///@}

    /// Does not compile: a pointer other than a C string would become the bool true.
    template <class P, class = std::enable_if_t<detail::isPointer<P> && !detail::isCString<P>>>
    explicit ItemVariant(P pointer) = delete;

    /// Returns a variant with the T of a default property: 0, false, empty, opaque black; the components of a
    /// vector are uninitialised.
    template <class T> [[nodiscard]] MRCOMMON_HIDDEN static ItemVariant makeDefault();

    ItemVariant(ItemVariant const& other); ///< deep; copies are sized exactly
    /// Leaves `other` with tag 0 and no value.
    MRCOMMON_HIDDEN ItemVariant(ItemVariant&& other) noexcept { swap(other); }
    ItemVariant& operator=(ItemVariant other) noexcept; ///< a deep copy, or a move

    virtual ~ItemVariant(); ///< slots 0 and 1

    /// Reads the tag, 4 bytes, and then the value. Stores an unknown tag and reads nothing after it.
    /// Trusts the sizes and counts in the record and allocates what they ask for: call checkVariantRecord() before
    /// reading a file of unknown origin, and the stream's failed() afterwards.
    /// Intentional: a value that the variant holds is not freed; call deleteValue() first.
    virtual void readFrom(FileStreamRaw& stream); ///< slot 2

    /// Writes the tag and the value. Writes just the tag if it is unknown, and 0 if it is known but its
    /// value was deleted, so that readers stay in step.
    virtual void writeTo(FileStreamRaw& stream) const; ///< slot 3

    ///@{
    /// What readFrom and writeTo do. Instantiated for FileStreamRaw.
    template <class Stream> void readFromT(Stream& stream);
    template <class Stream> void writeToT(Stream& stream) const;
    ///@}

    [[nodiscard]] MRCOMMON_HIDDEN unsigned int tag() const noexcept { return tag_; } ///< see the table above

    ///@{
    /// Returns the value as a T, or null if the tag does not fit or the value was deleted.
    /// Intentional: two types fit other tags too. An int is also the index of a pair (tag 12); a QN_String is
    /// also the label of a pair (tag 12) and the list object itself (tag 11), which must not be read as a
    /// string. Tested by ItemVariant.GivesItsValueToTheTypesThatFit.
    template <class T> [[nodiscard]] MRCOMMON_HIDDEN T* as() noexcept;
    template <class T> [[nodiscard]] MRCOMMON_HIDDEN T const* as() const noexcept {
        return const_cast<ItemVariant*>(this)->as<T>();
    }
    ///@}

    /// Frees the value. Intentional: the tag stays, so callers check the pointer that as() returns.
    void deleteValue() noexcept;

    /// The shared variant without a value. It is never destroyed.
    static ItemVariant* ItemVariant_Invalid;

private:
    template <class T>
    MRCOMMON_HIDDEN ItemVariant(detail::Kind<T> kind, T const& value) : ItemVariant(kind, new T(value)) {}
    template <class T>
    MRCOMMON_HIDDEN ItemVariant(detail::Kind<T>, T* value) noexcept
        : tag_(detail::variantTag<T>), value_(value) {}
    void swap(ItemVariant& other) noexcept;

    unsigned int tag_ = 0;
    void* value_ = nullptr;
};

static_assert(sizeof(ItemVariant) == 24, "virtual table, tag, value");

// ---------------------------------------------------------------------------

template <class T> ItemVariant ItemVariant::makeDefault() {
    static_assert(detail::variantTag<T> != 0, "no variant holds a value of this type: see the table above");
    return {detail::Kind<T>(), detail::newDefaultValue<T>()};
}

template <class T> T* ItemVariant::as() noexcept {
    static_assert(detail::variantTag<T> != 0, "no variant holds a value of this type: see the table above");
    return tag_ == detail::variantTag<T> ? static_cast<T*>(value_) : nullptr;
}

/// Returns the int of tag 1, or the index of the pair of tag 12.
template <> MRCOMMON_HIDDEN inline int* ItemVariant::as<int>() noexcept {
    if (tag_ == detail::variantTag<int>) return static_cast<int*>(value_);
    auto* const pair = as<Tuple2<QN_String, int>>();
    return pair == nullptr ? nullptr : &pair->second;
}

/// Returns the string of tag 6, the label of the pair of tag 12, or the list object of tag 11.
template <> MRCOMMON_HIDDEN inline QN_String* ItemVariant::as<QN_String>() noexcept {
    switch (tag_) {
    case detail::variantTag<QN_String>:
    case detail::variantTag<Array<QN_String>>:
    case detail::variantTag<Tuple2<QN_String, int>>:
        return static_cast<QN_String*>(value_); // the label is the first member of a pair
    default: return nullptr;
    }
}

} // namespace quarn

#endif
