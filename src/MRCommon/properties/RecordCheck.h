// RecordCheck: whether a record can be read, found out before anything of it is read.
//     RecordCheck const check = checkRecord(property, stream);
//     if (check.good()) property.readFrom(stream); else report(check.message());
//
// Reading trusts the sizes and counts in a record. A damaged one makes it ask for gigabytes, and a file of other
// classes than expected is read as nonsense. A check steps over the fields of the record without storing them:
//
//   good              reading delivers every byte, asks for no memory that bytes of the file do not account for, and
//                     leaves the stream just past the record
//   EndsEarly         the file ends inside a field of fixed size: a length, a number, a vector, a tag
//   SizeBeyondFile    a length or a count asks for more than is left; an element of a list of strings takes at least
//                     4 bytes, a value of an enumeration 4
//   Unterminated      a string of a size other than 0 whose last byte is not NUL
//   UnknownTag        the tag of a variant is above 12
//   NotSeekable       the stream has no FILE, or one whose position cannot be read and set
//
// A check looks at the FILE below the stream and puts its position back; the property and what the stream says in
// failed() stay as they are. A stream class whose `read` transforms the bytes of its FILE cannot be checked. The layout
// of an enumeration is the one that PptyEnum::readFrom would expect at that moment.
#ifndef MRCOMMON_PROPERTIES_RECORDCHECK_H
#define MRCOMMON_PROPERTIES_RECORDCHECK_H

#include <MRCommon/Export.h>
#include <MRCommon/properties/Ppty.h>
#include <MRCommon/streams/FileStreamEndian.h>
#include <MRCommon/streams/FileStreamRaw.h>

#include <string>

namespace quarn {

namespace detail {
class RecordBytes;
} // namespace detail

/// What a check found.
struct MRCOMMON_API RecordCheck {
    /// See the table at the top of this header.
    enum Reason { Good, EndsEarly, SizeBeyondFile, Unterminated, UnknownTag, NotSeekable };
    Reason reason = Good; ///< what is wrong
    unsigned long long offset =
        0; ///< in the file: where the faulty field begins; just past the record when good
    unsigned long long size = 0; ///< bytes of the whole record when good, 0 otherwise
    std::string field; ///< the faulty field, such as "name", "value" or "labels[3]"; empty when good

    bool good() const { return reason == Good; } ///< whether the record can be read
    /// Returns one line, such as "value at byte 12: the data ends inside it"; nothing when good.
    std::string message() const;
};

///@{
/// Checks the record at the position of `stream` against the class of `pattern`. A class that is not the library's own
/// is checked for what the library's class below it writes, and for its own fields if it is a CheckableRecord.
MRCOMMON_API RecordCheck checkRecord(Ppty const& pattern, FileStreamRaw& stream);
MRCOMMON_API RecordCheck checkRecord(Ppty const& pattern, FileStreamEndian& stream);
///@}

/// Checks the record of an ItemVariant at the position of `stream`.
MRCOMMON_API RecordCheck checkVariantRecord(FileStreamRaw& stream);

/// Steps over the fields of a record, for a CheckableRecord. Each call checks the field at the current position, by the
/// encodings of StreamEncoding.h, and moves past it. After a fault the calls do nothing and return false.
class MRCOMMON_API RecordFields {
public:
    bool u32(char const* field, unsigned int* value = nullptr); ///< stores the integer if `value` is not null
    bool i32(char const* field);                                ///< one signed integer
    bool str(char const* field);                                ///< one string
    bool strArray(char const* field);                           ///< an element's field is "field[3]"
    bool bytes(char const* field, unsigned long long byteCount); ///< a field of fixed size, such as a vector
    bool block(char const* field, unsigned int elementSize);     ///< U32 count, then that many elements
    bool tag(unsigned int& value);                               ///< the tag of a variant, stored
    bool good() const { return result_.good(); }                 ///< whether no fault was found so far

    RecordFields(RecordFields const&) = delete;
    RecordFields& operator=(RecordFields const&) = delete;

private:
    friend class detail::RecordBytes;
    RecordFields(detail::RecordBytes& bytes, unsigned long long start, bool raw)
        : bytes_(bytes), at_(start), raw_(raw) {}

    bool read32(unsigned int& value);
    bool skip(unsigned long long byteCount);
    bool strAt(char const* field, long long element);
    bool fail(RecordCheck::Reason reason, unsigned long long offset, char const* field,
              long long element = -1);
    unsigned long long leftAt(unsigned long long offset) const;

    detail::RecordBytes& bytes_;
    unsigned long long at_;
    bool raw_;
    RecordCheck result_;
};

/// The second base of a property class of a host's own whose fields are to be checked:
///     class WindPpty : public RFloatPpty, public CheckableRecord
/// Name the property class first: objects made by metaNew() are taken for a Ppty by their address.
class MRCOMMON_API CheckableRecord {
public:
    virtual ~CheckableRecord(); ///< slots 0 and 1

    /// Steps over what readFrom(FileStreamRaw&) reads after the fields of the library's class. If the base of this
    /// class is a CheckableRecord too, call the base's first.
    virtual void checkRawFields(RecordFields& fields) const = 0; ///< slot 2

    /// The same for readFrom(FileStreamEndian&), which most classes do not override. Does nothing.
    virtual void checkEndianFields(RecordFields& fields) const; ///< slot 3

protected:
    ///@{
    /// Holds nothing that could be copied.
    CheckableRecord() = default;
    CheckableRecord(CheckableRecord const&) = default;
    CheckableRecord& operator=(CheckableRecord const&) = default;
    ///@}
};

} // namespace quarn

#endif
