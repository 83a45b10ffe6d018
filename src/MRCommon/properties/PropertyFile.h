// PropertyFile: a file of properties that names the class of each, so that nobody has to know them.
//     PropertyList scene;
//     scene.add(std::make_unique<PptyFloat>("gravity", -9.81f));
//     FileStatus const saved = saveProperties("dunes.props", scene);
//     if (!saved.ok()) std::fprintf(stderr, "%s\n", saved.message.c_str());
//
//   file      8 bytes     "MRPROPS\n"
//             U32         format, 1
//             U32         number of entries
//   entry     STR         name of the class
//             U32         schema of the class
//             U64         number of bytes of the record
//                         the record, as writeTo(FileStreamRaw&) writes it
//   at last   U32         CRC-32 (ISO-HDLC) of everything before it
//
// The integers of the file are little-endian; those of the records are in the order of the machine, which is
// little-endian on every machine that the product runs on. Enumerations are stored and read in the current layout;
// the host's "WorkSpace" is not asked.
//
// A file is saved whole or not at all, and read only after all of it was found to be in order. Properties of classes
// that are not registered, or whose schema is newer than the registered one, are kept as bytes and saved again
// unchanged: a scene that is opened without one of its plug-ins and saved loses nothing.
#ifndef MRCOMMON_PROPERTIES_PROPERTYFILE_H
#define MRCOMMON_PROPERTIES_PROPERTYFILE_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>
#include <MRCommon/properties/Ppty.h>
#include <MRCommon/properties/RecordCheck.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace quarn {

namespace detail {
struct PropertyListAccess;
} // namespace detail

/// Properties in order, owned by the list. Clear it before a plug-in whose properties it holds is unloaded.
class MRCOMMON_API PropertyList {
public:
    PropertyList();                                         ///< without entries
    PropertyList(PropertyList&& other) noexcept;            ///< leaves `other` empty
    PropertyList& operator=(PropertyList&& other) noexcept; ///< leaves `other` empty
    ~PropertyList();

    void add(std::unique_ptr<Ppty> property);            ///< appends it; does nothing if it is null
    std::size_t size() const { return entries_.size(); } ///< entries, those kept as bytes included
    Ppty* property(std::size_t i) const; ///< null if the entry is kept as bytes, or i is too large
    std::string const& className(std::size_t i) const; ///< the registered name; empty if i is too large
    Ppty* find(QN_String const& name) const;           ///< the first of that name; null if there is none
    void clear();                                      ///< deletes the properties

    /// Appends an entry that is kept as bytes, as loading does for a class that is not registered. Saving stores the
    /// three as they are; no class is asked. Throws std::invalid_argument if the name is empty or contains a NUL.
    void addUnknown(std::string const& className, unsigned int schema, std::string const& record);
    unsigned int unknownSchema(std::size_t i) const;       ///< 0 unless entry i is kept as bytes
    std::string const& unknownRecord(std::size_t i) const; ///< empty unless entry i is kept as bytes

private:
    friend struct detail::PropertyListAccess;

    struct Entry {
        std::string className;
        std::unique_ptr<Ppty> property; // null if the record is kept as bytes
        unsigned int schema;            // of the bytes
        std::string bytes;
    };
    std::vector<Entry> entries_;
};

/// How saving or loading ended.
struct MRCOMMON_API FileStatus {
    /// Damaged includes entries that contradict the registered classes.
    enum Code { Ok, CannotOpen, CannotWrite, NotAPropertyFile, NewerFormat, Damaged };
    Code code = Ok; ///< what went wrong
    /// One line with the path, the entry, the field and the system's reason; empty when ok.
    std::string message;
    RecordCheck fault;                     ///< what is wrong, for Damaged inside a record
    int systemError = 0;                   ///< the errno of the call that failed; 0 if no call did
    bool ok() const { return code == Ok; } ///< whether saving or loading was complete
};

/// Saves the list so that `path` is the old file or the new one at any time, even if the process is killed. On failure
/// the old file stays and nothing else is left.
///   - The new file is written under a name such as ".mrprops-4711-0" in the same folder, flushed to the disk and then
///     renamed. Only a killed process leaves such a file.
///   - Symbolic links are followed: the link stays and the file that it leads to is replaced. A link to nothing fails.
///   - The permissions of an old file are kept, its owner and further hard links are not. A file that may not be written
///     is not replaced, and neither is anything but a regular file.
///   - Whether the new name survives a loss of power depends on the folder, which is flushed too; a failure of that last
///     step is not reported, since the file is complete under either name.
/// A property whose record could not be read again, such as a string without its NUL, makes saving fail.
MRCOMMON_API FileStatus saveProperties(std::string const& path, PropertyList const& list);

/// Replaces the contents of the list with those of the file, or leaves the list unchanged on failure. The checksum is
/// verified first, then each record by checkRecord before anything of it is read; reading must take exactly its bytes.
/// The bytes are read once; memory is in proportion to their number. What a class of a host's own throws passes on.
MRCOMMON_API FileStatus loadProperties(std::string const& path, PropertyList& list);

} // namespace quarn

#endif
