// RecordText, RecordJson: the fields of a record, printed as a line of text and as a JSON object.
//     RecordText fields(program, "PptyFloat");
//     fields.property(ppty, true);
//     fields.end();                     // PptyFloat name="gravity" value=-9.8100004196166992
// Values are printed in pieces: a string of any size takes no memory of its own here.
#ifndef MRCOMMON_TOOLS_RECORDTEXT_H
#define MRCOMMON_TOOLS_RECORDTEXT_H

#include <MRCommon/frames/FileNameStitcher.h>
#include <MRCommon/properties/Ppty.h>

#include "CommandLine.h"

#include <string>
#include <string_view>

/// A line whose beginning is printed as soon as it is long.
class LongLine {
public:
    explicit LongLine(CommandLine& program) : program_(program) {}

    void append(std::string_view text);
    void end() { program_.print(line_); }

private:
    CommandLine& program_;
    std::string line_;
};

/// Real numbers have 17 digits. A string is shown without its last NUL; bytes that are not printable ASCII, quotes and
/// backslashes are \xNN; a string of size 0 is none. Fields are in the order of the record.
class RecordText {
public:
    RecordText(CommandLine& program, std::string const& start) : line_(program) { line_.append(start); }

    void property(quarn::Ppty const& ppty, bool raw);
    void variant(quarn::ItemVariant const& variant);
    void settings(FileNameStitcher const& settings);
    void unknown(unsigned int schema,
                 unsigned long long size); ///< a record of a class that is not registered
    void end() { line_.end(); }

private:
    template <class T> void add(char const* what, T const& value);

    LongLine line_;
};

/// Strings are shown without their last NUL; numbers that are not finite are null.
class RecordJson {
public:
    RecordJson(CommandLine& program, std::string const& file, unsigned long long offset,
               std::string const& kind);

    void property(quarn::Ppty const& ppty, bool raw);
    void variant(quarn::ItemVariant const& variant);
    void settings(FileNameStitcher const& settings);
    void unknown(unsigned int schema,
                 unsigned long long size); ///< a record of a class that is not registered
    void end();

private:
    template <class T> void add(char const* what, T const& value);

    LongLine line_;
    char const* separator_ = "{";
};

#endif
