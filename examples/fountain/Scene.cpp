#include "Scene.h"

#include "RecordFile.h"
#include "SceneValue.h"

#include <qn_basic/QN_MetaClassBase.h>

#include <algorithm>
#include <sstream>
#include <string_view>

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

Property propertyOf(std::string_view line, Properties const& earlier) {
    std::string const className = takeWord(line), name = takeWord(line);
    if (name.empty()) throw std::invalid_argument("a property needs a class name, a name and a value");
    if (name != "plugIn" && find(earlier, name) != nullptr)
        throw std::invalid_argument(name + ": given twice");
    Property property = makeProperty(className, name);
    try {
        setFromText(*property, line, boundsOf(name));
    } catch (std::invalid_argument const& error) {
        throw std::invalid_argument(name + ": " + error.what());
    }
    return property;
}

/// The messages of its exceptions lack the path, which the caller of the program adds.
std::istringstream linesOf(std::string const& path) {
    OpenFile const file = openToRead(path);
    std::string const text = contentOf(file.get(), largestFile + 1);
    if (text.size() > largestFile) throw std::runtime_error("larger than a scene may be (1 MiB)");
    return std::istringstream(text);
}

} // namespace

Property makeProperty(std::string const& className, std::string const& name) {
    quarn::QN_MetaClassBase const* const metaClass = quarn::QN_MetaClassBase::find(className.c_str());
    void* object = metaClass == nullptr ? nullptr : metaClass->metaNew();
    auto* const property = dynamic_cast<quarn::Ppty*>(static_cast<quarn::QN_Class*>(object));
    Property named(property == nullptr ? nullptr : property->cloneWithNewName(name.c_str()));
    if (metaClass != nullptr) metaClass->metaDelete(object);
    if (named == nullptr) throw std::invalid_argument("unknown property class " + className);
    return named;
}

Properties readScene(std::string const& path, std::function<void(quarn::Ppty const&)> const& seen) {
    std::istringstream lines = linesOf(path);
    Properties properties;
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        std::string_view const text = trimmed(line);
        if (text.empty() || text.front() == '#') continue;
        try {
            properties.push_back(propertyOf(text, properties));
            seen(*properties.back());
        } catch (std::invalid_argument const& error) {
            throw FileError(path, number, error.what());
        }
    }
    return properties;
}

quarn::Ppty const* find(Properties const& scene, std::string const& name) {
    auto const found = std::find_if(scene.begin(), scene.end(), [&](Property const& property) {
        return property->getName() == name.c_str();
    });
    return found == scene.end() ? nullptr : found->get();
}
