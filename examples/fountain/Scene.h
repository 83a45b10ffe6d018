// Scene: the properties that a scene file describes, one a line: class name, property name, value.
//     Properties scene = readScene("harbour.scene");
// `#` starts a comment line; blank lines count for nothing. The classes are found by name in the registry,
// those of plug-ins too.
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

/// The properties in the order of the file. FileError for a file that cannot be read, and for the first line that
/// is no property. Each property is shown to `seen` before the next line is read: what it names, a plug-in say, can
/// be there by then. std::invalid_argument from `seen` is told with file and line too.
Properties readScene(std::string const& path, std::function<void(quarn::Ppty const&)> const& seen);

/// The value of the property of this name. std::invalid_argument when the scene lacks it or it holds something else.
template <class T> T const& valueOf(Properties const& scene, std::string const& name) {
    for (Property const& property : scene)
        if (property->getName() == name.c_str())
            if (T const* const value = property->getVariantValue().as<T>()) return *value;
    throw std::invalid_argument("the scene lacks the property " + name + ", or it is of another kind");
}

#endif
