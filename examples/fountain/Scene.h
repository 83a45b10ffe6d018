// Scene: the properties that a scene file describes, one a line: class name, property name, value.
//     Properties scene = readScene("harbour.scene");
// `#` starts a comment line; blank lines count for nothing. The classes are found by name in the registry,
// those of plug-ins too.
#ifndef FOUNTAIN_SCENE_H
#define FOUNTAIN_SCENE_H

#include <MRCommon/properties/Ppty.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using Property = std::unique_ptr<quarn::Ppty>;
using Properties = std::vector<Property>;

/// What is wrong with a file, where it is known with its line: "file:line: what is wrong".
class FileError : public std::runtime_error {
public:
    FileError(std::string const& file, std::string const& what) : runtime_error(file + ": " + what) {}
    FileError(std::string const& file, int line, std::string const& what)
        : runtime_error(file + ":" + std::to_string(line) + ": " + what) {}
};

/// A property of this class under this name, with a fresh value. std::invalid_argument when the registry
/// knows no such property class.
Property makeProperty(std::string const& className, std::string const& name);

/// The properties in the order of the file. FileError for a file that cannot be read, and for the first line
/// that is no property.
Properties readScene(std::string const& path);

#endif
