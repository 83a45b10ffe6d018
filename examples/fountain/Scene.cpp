#include "Scene.h"

#include "RecordFile.h"
#include "SceneValue.h"

#include <qn_basic/QN_MetaClassBase.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <set>
#include <sstream>
#include <string_view>

using namespace quarn;

namespace {

constexpr char const* blanks = " \t\r";
constexpr std::size_t largestFile = 1 << 20; // a scene is written by hand

struct NamedBounds {
    std::string_view name;
    Bounds bounds;
};

// The simulation and the drawing rely on these: steps advance, tiles have room for a frame number, nothing overflows.
constexpr NamedBounds boundsByName[] = {
    {"particles", {1, 1e7}},    {"frames", {1, 99999}},
    {"timeStep", {1e-6, 1}},    {"subSteps", {1, 1000}},
    {"diskLimit", {0, 1e15}},   {"nozzle", {-1000, 1000}},
    {"speed", {0, 1000}},       {"spread", {0, 3.15}},
    {"tilt", {-3.15, 3.15}},    {"turn", {-36000, 36000}},
    {"gravity", {-1000, 1000}}, {"drawing", {1, 64}},
    {"water", {0, 1}},          {"foam", {0, 1}},
    {"camera", {-1000, 1000}},  {"pictureSize", {320, 8192}},
};
constexpr NamedBounds boundsByEnding[] = {
    // of the boxes
    {"Size", {0.001, 1000}},
    {"Centre", {-1000, 1000}},
    {"Turn", {-36000, 36000}},
};
constexpr Bounds boundsOfOthers{-1e9, 1e9}; // such as the settings of plug-ins

Bounds boundsOf(std::string_view name) {
    for (NamedBounds const& entry : boundsByName)
        if (name == entry.name) return entry.bounds;
    for (NamedBounds const& entry : boundsByEnding)
        if (name.size() > entry.name.size() && name.substr(name.size() - entry.name.size()) == entry.name)
            return entry.bounds;
    return boundsOfOthers;
}

std::string_view trimmed(std::string_view text) {
    std::size_t const first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Takes the first word off `text`, which keeps the rest without blanks at its ends.
std::string takeWord(std::string_view& text) {
    std::size_t const end = std::min(text.find_first_of(blanks), text.size());
    std::string const word(text.substr(0, end));
    text = trimmed(text.substr(end));
    return word;
}

/// Returns a property of this class and name with the default value. Throws std::invalid_argument if no property class
/// of this name is registered.
std::unique_ptr<Ppty> makeProperty(std::string const& className, std::string const& name) {
    QN_MetaClassBase const* const metaClass = QN_MetaClassBase::find(className.c_str());
    void* object = metaClass == nullptr ? nullptr : metaClass->metaNew();
    auto* const property = dynamic_cast<Ppty*>(static_cast<QN_Class*>(object));
    std::unique_ptr<Ppty> named(property == nullptr ? nullptr : property->cloneWithNewName(name.c_str()));
    if (metaClass != nullptr) metaClass->metaDelete(object);
    if (named == nullptr) throw std::invalid_argument("unknown property class " + className);
    return named;
}

/// Runs `act`, whose std::invalid_argument gets the name of the property.
template <class Act> void naming(std::string const& name, Act const& act) {
    try {
        act();
    } catch (std::invalid_argument const& error) {
        throw std::invalid_argument(name + ": " + error.what());
    }
}

void setValue(Ppty& property, std::string_view text) {
    std::string const name = property.getName().c_str();
    naming(name, [&] { setFromText(property, text, boundsOf(name)); });
}

void requireOnce(bool isFirst, std::string const& name) {
    if (!isFirst && name != "plugIn") throw std::invalid_argument(name + ": given twice");
}

std::unique_ptr<Ppty> propertyOf(std::string_view line, Properties const& earlier) {
    // Strings of the library would end there.
    if (line.find('\0') != std::string_view::npos) throw std::invalid_argument("the line contains a NUL");
    std::string const className = takeWord(line), name = takeWord(line);
    if (name.empty()) throw std::invalid_argument("a property needs a class name, a name and a value");
    requireOnce(earlier.find(name.c_str()) == nullptr, name);
    std::unique_ptr<Ppty> property = makeProperty(className, name);
    setValue(*property, line);
    return property;
}

/// The messages of its exceptions lack the path, which the caller of the program adds.
std::istringstream linesOf(std::string const& path) {
    OpenFile const file = openToRead(path);
    std::string const text = contentOf(file.get(), largestFile + 1);
    if (text.size() > largestFile) throw std::runtime_error("larger than a scene may be (1 MiB)");
    return std::istringstream(text);
}

Properties readText(std::string const& path, std::function<void(Ppty const&)> const& seen) {
    std::istringstream lines = linesOf(path);
    Properties properties;
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        std::string_view const text = trimmed(line);
        if (text.empty() || text.front() == '#') continue;
        try {
            properties.add(propertyOf(text, properties));
            seen(*properties.property(properties.size() - 1));
        } catch (std::invalid_argument const& error) {
            throw FileError(path, number, error.what());
        }
    }
    return properties;
}

Properties loadFile(std::string const& path) {
    Properties properties;
    FileStatus const status = loadProperties(path, properties);
    if (!status.ok()) throw FileError(status);
    return properties;
}

/// Throws std::invalid_argument for the first property that a text could not contain: the simulation relies on it.
void checkLoaded(Properties const& scene) {
    std::set<std::string> names;
    for (std::size_t i = 0; i < scene.size(); ++i) {
        Ppty const* const property = scene.property(i);
        if (property == nullptr)
            throw std::invalid_argument("unknown property class, or an older one than the file's: " +
                                        scene.className(i));
        std::string const name = property->getName().c_str();
        requireOnce(names.insert(name).second, name);
        naming(name, [&] { checkNumbers(*property, boundsOf(name)); });
    }
}

/// Loads the file twice. The first time finds the plug-ins, whose properties are bytes until they are opened.
Properties readPropertyFile(std::string const& path, std::function<void(Ppty const&)> const& seen) {
    try {
        Properties const first = loadFile(path);
        for (std::size_t i = 0; i < first.size(); ++i)
            if (first.property(i) != nullptr) seen(*first.property(i));
        Properties scene = loadFile(path);
        checkLoaded(scene);
        return scene;
    } catch (std::invalid_argument const& error) {
        throw FileError(path, error.what());
    }
}

} // namespace

Properties readScene(std::string const& path, std::function<void(Ppty const&)> const& seen) {
    bool const isPropertyFile = std::filesystem::path(path).extension() == ".props";
    return isPropertyFile ? readPropertyFile(path, seen) : readText(path, seen);
}

void saveScene(std::string const& path, Properties const& scene) {
    SignalsDelayed const delayed; // no temporary file is left
    FileStatus const status = saveProperties(path, scene);
    if (!status.ok()) throw FileError(status);
}

void changeScene(std::string const& path, std::string const& name, std::string const& value) {
    Properties const scene = loadFile(path);
    Ppty* const property = scene.find(name.c_str());
    if (property == nullptr) throw std::invalid_argument("the scene lacks the property " + name);
    setValue(*property, value);
    saveScene(path, scene);
}
