// PptyEnum: one choice out of a table of named choices, with the table.
//     PptyEnum p("mode");
//     p.itemLabels = {"Low", "High"};
//     p.itemValues = {10, 20};
//     p.setValue(ItemVariant("High"));          // true: label "High", index 20
//     p.setValue(ItemVariant(15));              // false: no such choice, the value stays
//
//   record, on both stream kinds
//     STR        name
//     U32        layout number: the schema of the class, 2
//     STR, I32   label, index
//     STRARRAY   the labels of the table
//     U32        number of values, then all of them as one block of 4 bytes each
//   The old layout lacks layout number and label. The version of the host's "WorkSpace" decides which layout a
//   record is read with: see readFrom.
//
// Intentional: the block of values has the byte order of the machine on both stream kinds, as in existing files.
// Tested by PptyEnum.IsDescribedByTextAndRecord.
#ifndef MRCOMMON_PROPERTIES_PPTYENUM_H
#define MRCOMMON_PROPERTIES_PPTYENUM_H

#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/basic/Tuple.h>
#include <MRCommon/Export.h>
#include <MRCommon/properties/BasePpty.h>
#include <MRCommon/properties/ItemVariant.h>
#include <MRCommon/properties/Ppty.h>
#include <MRCommon/streams/FileStreamEndian.h>
#include <MRCommon/streams/FileStreamRaw.h>

namespace quarn {

extern template class BasePpty<Tuple2<QN_String, int>, Ppty::TYPE_ENUM>;

class MRCOMMON_API PptyEnum : public BasePpty<Tuple2<QN_String, int>, Ppty::TYPE_ENUM> {
public:
    QN_CLASS_IDENTITY_AS(MRCOMMON_HIDDEN)

    PptyEnum(); ///< an empty name, no choice: label "", index -1, an empty table
    explicit PptyEnum(QN_String const& name); ///< no choice, an empty table
    /// Stores the pair, with an empty table.
    explicit PptyEnum(QN_String const& name, Tuple2<QN_String, int> const& value);
    PptyEnum(PptyEnum const& other); ///< copies name, value and table
    ~PptyEnum() override;

    [[nodiscard]] Ppty* clone() const override;
    [[nodiscard]] Ppty* cloneWithNewName(QN_String const& name) const override;
    [[nodiscard]] QN_String toStr() const override;

    /// Looks up the choice in the table: by label for a string, by number for an int or a pair, whose own label
    /// is ignored. Takes label and index of the first entry that matches. Returns false, leaving the value
    /// unchanged, if no entry matches or the variant has any other kind.
    bool setValue(ItemVariant const& value) override;

    /// Stores the pair even if the table lacks it: setValue({"Low", 10}). Returns true.
    bool setValue(Tuple2<QN_String, int> const& value) override;

    ///@{
    /// Expects a layout number if the version of the host's "WorkSpace", asked of ConfigurationMngr, is above
    /// 5087 or if host or object are missing. The old layout follows a layout number of 0 or 1; its
    /// label is that of the table, or empty if the table lacks the index.
    void readFrom(FileStreamRaw& stream) override;
    void readFrom(FileStreamEndian& stream) override;
    ///@}
    ///@{
    /// Writes the new layout under every version.
    void writeTo(FileStreamRaw& stream) const override;
    void writeTo(FileStreamEndian& stream) const override;
    ///@}

    Array<QN_String> itemLabels; ///< the labels of the choices; an entry without a value never matches
    Array<int> itemValues;       ///< the numbers of the choices; an entry without a label never matches

private:
    template <class Matches> int findChoice(Matches const& matches) const;
    template <class Stream> void readFromT(Stream& stream);
    template <class Stream> void readTable(Stream& stream);
    template <class Stream> void writeToT(Stream& stream) const;
};

} // namespace quarn

#endif
