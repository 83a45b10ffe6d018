#include "Scene.h"

#include "SceneValue.h"

#include <qn_basic/QN_MetaClassBase.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string_view>

namespace {

constexpr char const* blanks = " \t\r";

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

Property propertyOf(std::string_view line) {
    std::string const className = takeWord(line), name = takeWord(line);
    if (name.empty()) throw std::invalid_argument("a property needs a class name, a name and a value");
    Property property = makeProperty(className, name);
    setFromText(*property, line);
    return property;
}

} // namespace

Property makeProperty(std::string const& className, std::string const& name) {
    quarn::QN_MetaClassBase const* const metaClass = quarn::QN_MetaClassBase::find(className.c_str());
    void* object = metaClass == nullptr ? nullptr : metaClass->metaNew();
    auto* const property = dynamic_cast<quarn::Ppty*>(static_cast<quarn::QN_Class*>(object));
    Property named(property == nullptr ? nullptr : property->cloneWithNewName(name.c_str()));
    if (metaClass != nullptr) metaClass->metaDelete(object);
    if (named == nullptr) throw std::invalid_argument("there is no property class " + className);
    return named;
}

Properties readScene(std::string const& path, std::function<void(quarn::Ppty const&)> const& seen) {
    std::ifstream file(path);
    if (!file) throw FileError(path, std::strerror(errno));
    Properties properties;
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        std::string_view const text = trimmed(line);
        if (text.empty() || text.front() == '#') continue;
        try {
            properties.push_back(propertyOf(text));
            seen(*properties.back());
        } catch (std::invalid_argument const& error) {
            throw FileError(path, number, error.what());
        }
    }
    if (file.bad() || !file.eof()) throw FileError(path, "cannot be read to its end");
    return properties;
}
