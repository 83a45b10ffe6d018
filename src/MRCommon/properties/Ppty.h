// Ppty: the base of every named, typed value: its name, the type codes, the head of every record.
//     std::unique_ptr<Ppty> copy(property.cloneWithNewName("speed"));
//     copy->toStr().c_str()             // " 2.500000 "
//
//   record    name: U32 size, the NUL counted, then the bytes     02 00 00 00  61 00      a property named a
//             then what the kind appends
//
// On a FileStreamRaw every kind appends its value. On a FileStreamEndian string lists and enumerations do,
// all other kinds store their name alone: meant, their values travel in such files as ItemVariant records. A
// record tells neither kind nor version: whoever reads it must hold a property of the right kind.
#ifndef MRCOMMON_PROPERTIES_PPTY_H
#define MRCOMMON_PROPERTIES_PPTY_H

#include <MRCommon/properties/ItemVariant.h>
#include <MRCommon/properties/QN_Class.h>
#include <MRCommon/streams/FileStreamEndian.h>
#include <MRCommon/streams/FileStreamRaw.h>

namespace quarn {

class MRCOMMON_API Ppty : public QN_Class {
public:
    /// What getType() answers, and the second argument of the templates below.
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

    ~Ppty() override; ///< slots 6 and 7, behind the identity operations

    virtual Ppty* clone() const = 0;                                 ///< slot 8: owned by the caller
    virtual Ppty* cloneWithNewName(QN_String const& name) const = 0; ///< slot 9: owned by the caller
    virtual QN_String toStr() const = 0;                             ///< slot 10: the value as text
    virtual ItemVariant const& getVariantValue() const = 0;          ///< slot 11: the value itself, no copy

    /// Takes the value over; true, also where a variant of another kind leaves it as it is (a caller's
    /// error). No conversion is made and no bound is tested. PptyEnum has rules of its own.
    virtual bool setValue(ItemVariant const& value) = 0; ///< slot 12

    virtual unsigned int getType() const; ///< slot 13: TYPE_NONE here

    ///@{
    /// The record. Reading reuses the buffers of the property and checks nothing: ask the stream's failed().
    virtual void readFrom(FileStreamRaw& stream);         ///< slot 14
    virtual void writeTo(FileStreamRaw& stream) const;    ///< slot 15
    virtual void readFrom(FileStreamEndian& stream);      ///< slot 16
    virtual void writeTo(FileStreamEndian& stream) const; ///< slot 17
    ///@}

    QN_String const& getName() const { return name_; } ///< as it was given or read

    Ppty& operator=(Ppty const&) = delete;

protected:
    explicit Ppty(QN_String const& name); ///< takes a copy of the name
    Ppty(Ppty const& other);              ///< the name alone

    /// Gives a fresh copy its new name: what every cloneWithNewName is made of.
    static Ppty* withName(Ppty* copy, QN_String const& name);

private:
    QN_String name_;
};

} // namespace quarn

#endif
