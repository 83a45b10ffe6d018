// PptyArrayString: a property that holds an ordered list of strings. Its value travels on both stream kinds.
//     PptyArrayString p("layers", {"sea", "foam"});
//     p.toStr().c_str()                 // "[ sea, foam ]"; an empty list gives ""
//     p.setValue(Array<QN_String>{"spray"});    // the type is spelled: bare braces could mean a variant as well
//
//   record    head, then STRARRAY     01 00 00 00  02 00 00 00  61 00        the list of "a" on a raw stream
#ifndef MRCOMMON_PROPERTIES_PPTYARRAYSTRING_H
#define MRCOMMON_PROPERTIES_PPTYARRAYSTRING_H

#include <MRCommon/properties/BasePpty.h>

namespace quarn {

extern template class BasePpty<Array<QN_String>, Ppty::TYPE_ARRAY_STRING>;

class MRCOMMON_API PptyArrayString : public BasePpty<Array<QN_String>, Ppty::TYPE_ARRAY_STRING> {
public:
    QN_CLASS_IDENTITY

    PptyArrayString();                               ///< without a name, with an empty list
    explicit PptyArrayString(QN_String const& name); ///< an empty list
    /// Takes a copy of the list.
    explicit PptyArrayString(QN_String const& name, Array<QN_String> const& value);
    PptyArrayString(PptyArrayString const& other); ///< name and list
    ~PptyArrayString() override;

    Ppty* clone() const override;
    Ppty* cloneWithNewName(QN_String const& name) const override;
    QN_String toStr() const override;

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
