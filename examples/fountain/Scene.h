// Scene: the properties that a scene file describes. The classes are found by name in the registry, including those of
// plug-ins.
//     Properties const scene = readScene("harbour.scene", openPlugIn);
//     saveScene("out/harbour.props", scene);
// People write a scene as text, one property a line: class name, property name, value. A line that begins with `#` is a
// comment; blank lines are skipped. A file that ends in .props is a property file of the library instead.
#ifndef FOUNTAIN_SCENE_H
#define FOUNTAIN_SCENE_H

#include <MRCommon/properties/PropertyFile.h>

#include <functional>
#include <stdexcept>
#include <string>

using Properties = quarn::PropertyList;

/// What is wrong with a file, with the line if it is known: "file:line: what is wrong".
class FileError : public std::runtime_error {
public:
    FileError(std::string const& file, std::string const& what) : runtime_error(file + ": " + what) {}
    FileError(std::string const& file, int line, std::string const& what)
        : runtime_error(file + ":" + std::to_string(line) + ": " + what) {}
    explicit FileError(quarn::FileStatus const& status) : runtime_error(status.message) {}
};

/// Returns the properties in the order of the file, none of them kept as bytes. Throws FileError for a file that cannot
/// be read, and for the first property that is not valid: its class is known, every number is finite and within the
/// bounds of its name, and only "plugIn" occurs more than once. Properties are passed to `seen` before the classes of
/// those that follow are looked up, so that a plug-in that one names can register classes. std::invalid_argument from
/// `seen` is reported with the file, and with the line of a text.
Properties readScene(std::string const& path, std::function<void(quarn::Ppty const&)> const& seen);

/// Saves the scene as a property file. Throws FileError if the disk does not take it.
void saveScene(std::string const& path, Properties const& scene);

/// Sets one value in a property file, given as in a text. No plug-in is opened: properties of their classes stay as they
/// are in the file. Throws FileError if the file cannot be read or written, std::invalid_argument if the value does not
/// fit the property.
void changeScene(std::string const& path, std::string const& name, std::string const& value);

/// Returns the value of the property of this name. Throws std::invalid_argument if the scene lacks it or its value has
/// another type.
template <class T> T const& valueOf(Properties const& scene, std::string const& name) {
    quarn::Ppty const* const property = scene.find(name.c_str());
    if (property == nullptr) throw std::invalid_argument("the scene lacks the property " + name);
    T const* const value = property->getVariantValue().as<T>();
    if (value == nullptr)
        throw std::invalid_argument(name + ": the class " + property->getClassName().c_str() +
                                    " does not fit this property");
    return *value;
}

#endif
