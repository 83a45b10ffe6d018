// RecordText, RecordJson: the fields of a record as a line of text and as a JSON object.
//     RecordText fields("PptyFloat");
//     fields.property(ppty, true);
//     fields.line                       // PptyFloat name="gravity" value=-9.8100004196166992
#ifndef MRCOMMON_TOOLS_RECORDTEXT_H
#define MRCOMMON_TOOLS_RECORDTEXT_H

#include <MRCommon/frames/FileNameStitcher.h>
#include <MRCommon/properties/Ppty.h>

#include <nlohmann/json.hpp>

#include <string>

/// Real numbers have 17 digits. A string is shown without its last NUL; bytes that are not printable ASCII, quotes and
/// backslashes are \xNN; a string of size 0 is none. Fields are in the order of the record.
class RecordText {
public:
    explicit RecordText(std::string const& start) : line(start) {}

    void property(quarn::Ppty const& ppty, bool raw);
    void variant(quarn::ItemVariant const& variant);
    void settings(FileNameStitcher const& settings);
    void unknown(unsigned int schema,
                 unsigned long long size); ///< a record of a class that is not registered

    std::string line;
};

/// Strings are shown without their last NUL; numbers that are not finite are null.
class RecordJson {
public:
    RecordJson(std::string const& file, unsigned long long offset, std::string const& kind)
        : object{{"file", file}, {"offset", offset}, {"kind", kind}} {}

    void property(quarn::Ppty const& ppty, bool raw);
    void variant(quarn::ItemVariant const& variant);
    void settings(FileNameStitcher const& settings);
    void unknown(unsigned int schema,
                 unsigned long long size); ///< a record of a class that is not registered

    nlohmann::ordered_json object;
};

#endif
