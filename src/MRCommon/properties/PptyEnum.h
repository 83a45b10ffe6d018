// PptyEnum: one choice out of a table of named choices, with the table.
//     PptyEnum p("mode");
//     p.itemLabels = {"Low", "High"};
//     p.itemValues = {10, 20};
//     p.setValue(ItemVariant("High"));          // true: label "High", index 20
//     p.setValue(ItemVariant(15));              // false: no such choice, the value stays
//
//   record, on both stream kinds
//     head       name
//     U32        layout number: the schema of the class, 2
//     STR, I32   label, index
//     STRARRAY   the labels of the table
//     U32        number of values, then all of them as one block of 4 bytes each, in the order of the machine
//                on both stream kinds: meant, existing files are laid out so
//   the old layout lacks layout number and label. Which of the two a record has is decided by the version of
//   the host's "WorkSpace": see readFrom.
#ifndef MRCOMMON_PROPERTIES_PPTYENUM_H
#define MRCOMMON_PROPERTIES_PPTYENUM_H

#include <MRCommon/properties/BasePpty.h>
#include <MRCommon/streams/FileStreamEndian.h>

namespace quarn {

extern template class BasePpty<Tuple2<QN_String, int>, Ppty::TYPE_ENUM>;

class MRCOMMON_API PptyEnum : public BasePpty<Tuple2<QN_String, int>, Ppty::TYPE_ENUM> {
public:
    QN_CLASS_IDENTITY

    PptyEnum(); ///< without a name, no choice: label empty, index -1, empty table
    explicit PptyEnum(QN_String const& name); ///< no choice, an empty table
    /// Stores the pair as it is, with an empty table.
    explicit PptyEnum(QN_String const& name, Tuple2<QN_String, int> const& value);
    PptyEnum(PptyEnum const& other); ///< name, value and table
    ~PptyEnum() override;

    Ppty* clone() const override;
    Ppty* cloneWithNewName(QN_String const& name) const override;
    QN_String toStr() const override;

    /// Looks the choice up in the table: a string by its label, an int and a pair by their number (the pair's
    /// own label is ignored). The first entry that matches gives label and index. False, the value unchanged,
    /// for any other variant and when nothing matches.
    bool setValue(ItemVariant const& value) override;

    /// Stores the pair as it is, whatever the table holds; true. The pair's type is spelled, Tuple2<QN_String,
    /// int>("Low", 10): bare braces could mean a variant as well.
    bool setValue(Tuple2<QN_String, int> const& value) override;

    /// Asks ConfigurationMngr for the host's "WorkSpace" and takes the record for one with a layout number
    /// when its version is above 5087, or when there is no host or no such object. A layout number of 0 or 1
    /// is followed by the old layout, whose label comes from the table, or is empty when the table lacks the
    /// index.
    void readFrom(FileStreamRaw& stream) override;
    void readFrom(FileStreamEndian& stream) override;
    void writeTo(FileStreamRaw& stream) const override;
    void writeTo(FileStreamEndian& stream) const override;

    Array<QN_String> itemLabels; ///< the choices' labels; an entry without a value matches nothing
    Array<int> itemValues;       ///< the choices' numbers, entry by entry; without a label likewise

private:
    template <class Matches> int findChoice(Matches const& matches) const;
    template <class Stream> void readFromT(Stream& stream);
    template <class Stream> void readTable(Stream& stream);
    template <class Stream> void writeToT(Stream& stream) const;
};

} // namespace quarn

#endif
