// Ppty: the base of every named, typed value: its name, the type codes, the start of every record.
//     std::unique_ptr<Ppty> copy(property.cloneWithNewName("speed"));
//     copy->toStr().c_str()             // " 2.500000 "
//
//   record    name: U32 size, the NUL counted, then the bytes     02 00 00 00  61 00      a property named a
//             then what the kind appends
//
// On a FileStreamRaw every kind appends its value. On a FileStreamEndian only string lists and enumerations do.
// Intentional: all other kinds store just their name there, since such files contain their values as
// ItemVariant records. Tested by BasicPpty.HasItsTypeTagTextAndRecord. A record contains neither kind nor
// version: it must be read into a property of the same kind.
#ifndef MRCOMMON_PROPERTIES_PPTY_H
#define MRCOMMON_PROPERTIES_PPTY_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>
#include <MRCommon/properties/ItemVariant.h>
#include <MRCommon/properties/QN_Class.h>
#include <MRCommon/streams/FileStreamEndian.h>
#include <MRCommon/streams/FileStreamRaw.h>

namespace quarn {

class MRCOMMON_API Ppty : public QN_Class {
public:
    /// What getType() returns; also the second argument of the class templates derived from Ppty.
    enum Type : unsigned int {
        TYPE_NONE = 0,
        TYPE_INT = 1,
        TYPE_INT64 = 2,
        TYPE_FLOAT = 3,
        TYPE_DOUBLE = 4,
        TYPE_BOOL = 5,
        TYPE_STRING = 6,
        TYPE_VECTOR3F = 7,
        TYPE_VECTOR3D = 8,
        TYPE_COLOR4F = 9,
        TYPE_COLOR4D = 10,
        TYPE_ARRAY_STRING = 11,
        TYPE_RANGE_INT = 12,
        TYPE_RANGE_INT64 = 13,
        TYPE_RANGE_FLOAT = 14,
        TYPE_RANGE_DOUBLE = 15,
        TYPE_RANGE_VECTOR3F = 16,
        TYPE_RANGE_VECTOR3D = 17,
        TYPE_ENUM = 18,
        TYPE_FILE = 19,
        TYPE_DIRECTORY = 20
    };

    ~Ppty() override; ///< slots 6 and 7, after the identity operations

    ///@{
    /// Returns a copy of the same class, owned by the caller.
    [[nodiscard]] virtual Ppty* clone() const = 0;                                 ///< slot 8
    [[nodiscard]] virtual Ppty* cloneWithNewName(QN_String const& name) const = 0; ///< slot 9
    ///@}
    [[nodiscard]] virtual QN_String toStr() const = 0;      ///< slot 10: the value for people
    virtual ItemVariant const& getVariantValue() const = 0; ///< slot 11: the value itself, not a copy

    /// Copies the value of a variant of the same kind. Returns true. No conversion is made and no bound is
    /// tested. A variant of another kind is a caller's error: int, string and list kinds copy what the
    /// variant's as() returns for their type, the others the bytes of a number, vector or colour, at most as
    /// many as it has (a bool is true if its first byte is not 0); otherwise the value stays.
    /// PptyEnum has its own rules.
    virtual bool setValue(ItemVariant const& value) = 0; ///< slot 12

    virtual unsigned int getType() const; ///< slot 13: TYPE_NONE here

    ///@{
    /// Reads or writes the record. Reading reuses the buffers of the property and checks nothing: call the
    /// stream's failed() afterwards. If memory runs out, std::bad_alloc is thrown; the property may then contain parts
    /// of both records and can be read again, assigned and destroyed.
    virtual void readFrom(FileStreamRaw& stream);         ///< slot 14
    virtual void writeTo(FileStreamRaw& stream) const;    ///< slot 15
    virtual void readFrom(FileStreamEndian& stream);      ///< slot 16
    virtual void writeTo(FileStreamEndian& stream) const; ///< slot 17
    ///@}

    /// Returns the name that was given or read.
    [[nodiscard]] MRCOMMON_HIDDEN QN_String const& getName() const noexcept { return name_; }

    Ppty& operator=(Ppty const&) = delete;

protected:
    explicit Ppty(QN_String const& name); ///< copies the name
    Ppty(Ppty const& other);              ///< copies the name

    /// Renames a copy made by clone() and returns it. Deletes it if the name exhausts the memory.
    [[nodiscard]] static Ppty* withName(Ppty* copy, QN_String const& name);

private:
    QN_String name_;
};

} // namespace quarn

/// Overrides `clone` and `cloneWithNewName`. Used in the public part of every concrete kind, also of one that
/// derives from a concrete kind: without it, copies are objects of the base, and what the kind adds is lost.
///     class WindPpty : public quarn::RFloatPpty {
///     public:
///         QN_CLASS_IDENTITY
///         QN_PPTY_COPIES(WindPpty)
#define QN_PPTY_COPIES(KIND)                                                                                 \
    [[nodiscard]] ::quarn::Ppty* clone() const override { return new KIND(*this); }                          \
    [[nodiscard]] ::quarn::Ppty* cloneWithNewName(::quarn::QN_String const& name) const override {           \
        return ::quarn::Ppty::withName(clone(), name);                                                       \
    }

#endif
