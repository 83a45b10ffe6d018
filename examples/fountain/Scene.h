// Scene: the properties that a scene file describes, one a line: class name, property name, value.
//     Properties scene = readScene("harbour.scene");
// A line that begins with `#` is a comment; blank lines are skipped. The classes are found by name in the registry,
// including those of plug-ins.
#ifndef FOUNTAIN_SCENE_H
#define FOUNTAIN_SCENE_H

#include <MRCommon/properties/Ppty.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using Property = std::unique_ptr<quarn::Ppty>;
using Properties = std::vector<Property>;

/// What is wrong with a file, with the line if it is known: "file:line: what is wrong".
class FileError : public std::runtime_error {
public:
    FileError(std::string const& file, std::string const& what) : runtime_error(file + ": " + what) {}
    FileError(std::string const& file, int line, std::string const& what)
        : runtime_error(file + ":" + std::to_string(line) + ": " + what) {}
};

/// Returns a property of this class and name with the default value. Throws std::invalid_argument if no property class
/// of this name is registered.
Property makeProperty(std::string const& className, std::string const& name);

/// Returns the properties in the order of the file. Throws FileError for a file that cannot be read, and for the first
/// line that is no valid property: every number is finite and within the bounds of its name, and only "plugIn" occurs
/// more than once. Each property is passed to `seen` before the next line is read, so that a plug-in that it names can
/// register classes for the lines below. std::invalid_argument from `seen` is reported with file and line.
Properties readScene(std::string const& path, std::function<void(quarn::Ppty const&)> const& seen);

/// Returns the property of this name, or null if there is none.
quarn::Ppty const* find(Properties const& scene, std::string const& name);

/// Returns the value of the property of this name. Throws std::invalid_argument if the scene lacks it or its value has
/// another type.
template <class T> T const& valueOf(Properties const& scene, std::string const& name) {
    quarn::Ppty const* const property = find(scene, name);
    if (property == nullptr) throw std::invalid_argument("the scene lacks the property " + name);
    T const* const value = property->getVariantValue().as<T>();
    if (value == nullptr)
        throw std::invalid_argument(name + ": the class " + property->getClassName().c_str() +
                                    " does not fit this property");
    return *value;
}

#endif
