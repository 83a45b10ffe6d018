// PptyArrayString: a property with an ordered list of strings. Both stream kinds store its value.
//     PptyArrayString p("layers", {"sea", "foam"});
//     p.toStr().c_str()                 // "[ sea, foam ]"; "" if the list is empty
//     p.setValue(Array<QN_String>{"spray"});    // a single string needs the type of the list
//
//   record    name, then STRARRAY     01 00 00 00  02 00 00 00  61 00        the list of "a" on a raw stream
#ifndef MRCOMMON_PROPERTIES_PPTYARRAYSTRING_H
#define MRCOMMON_PROPERTIES_PPTYARRAYSTRING_H

#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>
#include <MRCommon/properties/BasePpty.h>
#include <MRCommon/properties/Ppty.h>
#include <MRCommon/streams/FileStreamEndian.h>
#include <MRCommon/streams/FileStreamRaw.h>

namespace quarn {

extern template class BasePpty<Array<QN_String>, Ppty::TYPE_ARRAY_STRING>;

class MRCOMMON_API PptyArrayString : public BasePpty<Array<QN_String>, Ppty::TYPE_ARRAY_STRING> {
public:
    QN_CLASS_IDENTITY_AS(MRCOMMON_HIDDEN)

    PptyArrayString();                               ///< an empty name and list
    explicit PptyArrayString(QN_String const& name); ///< an empty list
    explicit PptyArrayString(QN_String const& name, Array<QN_String> const& value); ///< copies both
    PptyArrayString(PptyArrayString const& other);                                  ///< copies name and list
    ~PptyArrayString() override;

    [[nodiscard]] Ppty* clone() const override;
    [[nodiscard]] Ppty* cloneWithNewName(QN_String const& name) const override;
    [[nodiscard]] QN_String toStr() const override;

    void readFrom(FileStreamRaw& stream) override;
    void writeTo(FileStreamRaw& stream) const override;
    void readFrom(FileStreamEndian& stream) override;
    void writeTo(FileStreamEndian& stream) const override;

private:
    template <class Stream> void readFromT(Stream& stream);
    template <class Stream> void writeToT(Stream& stream) const;
};

} // namespace quarn

#endif
