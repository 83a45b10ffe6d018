#include "SceneValue.h"

#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/properties/PptyArrayString.h>
#include <MRCommon/properties/PptyEnum.h>
#include <MRCommon/properties/RangeVectPpty.h>
#include <MRCommon/properties/RgdBasicPpty.h>

#include <charconv>
#include <sstream>
#include <stdexcept>
#include <type_traits>
#include <vector>

using namespace quarn;

namespace {

[[noreturn]] void refuse(std::string const& why) { throw std::invalid_argument(why); }

/// The words of a value, taken one by one.
class Words {
public:
    explicit Words(std::string_view text) : stream_(std::string(text)) {}

    std::string next(char const* what) {
        std::string word;
        if (!(stream_ >> word)) refuse(std::string("the value lacks ") + what);
        return word;
    }

    bool more() { return !(stream_ >> std::ws).eof(); }

    void end() {
        if (more()) refuse("\"" + next("") + "\" is one word too many");
    }

private:
    std::istringstream stream_;
};

template <class T> T number(std::string const& word) {
    T value{};
    auto const [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error == std::errc::result_out_of_range) refuse("\"" + word + "\" is too large for this kind");
    if (error != std::errc() || end != word.data() + word.size()) refuse("\"" + word + "\" is not a number");
    return value;
}

template <class T> void take(Words& words, T& value) {
    static_assert(std::is_arithmetic_v<T>);
    value = number<T>(words.next("a number"));
}

void take(Words& words, bool& value) {
    std::string const word = words.next("True or False");
    if (word != "True" && word != "False") refuse("\"" + word + "\" is neither True nor False");
    value = word == "True";
}

template <class T> void take(Words& words, Vector3<T>& v) {
    for (T* component : {&v.x, &v.y, &v.z}) take(words, *component);
}

template <class T> void take(Words& words, Color4<T>& c) {
    for (T* component : {&c.r, &c.g, &c.b, &c.a}) take(words, *component);
}

template <class T> void show(std::ostream& out, T const& value) { out << value; }

template <class T> void show(std::ostream& out, Vector3<T> const& v) {
    out << "(" << v.x << ", " << v.y << ", " << v.z << ")";
}

template <class T> std::string range(T const& minimum, T const& maximum) {
    std::ostringstream text;
    show(text, minimum);
    text << " .. ";
    show(text, maximum);
    return text.str();
}

template <class T, unsigned int Code> void set(BasicPpty<T, Code>& property, std::string_view text) {
    if constexpr (std::is_same_v<T, QN_String>) {
        property.setValue(QN_String(std::string(text).c_str()));
    } else {
        Words words(text);
        T value{};
        take(words, value);
        words.end();
        property.setValue(value);
    }
}

template <class T, unsigned int Code> void set(RangePpty<T, Code>& property, std::string_view text) {
    Words words(text);
    T value{}, minimum{}, maximum{};
    take(words, value);
    take(words, minimum);
    take(words, maximum);
    words.end();
    property.setMin(minimum);
    property.setMax(maximum);
    if (!property.setValue(value)) refuse("the value lies outside its bounds " + range(minimum, maximum));
}

void set(PptyArrayString& property, std::string_view text) {
    Array<QN_String> elements;
    QN_String(std::string(text).c_str()).tokenize(',', elements);
    for (QN_String& element : elements) {
        std::string const untrimmed = element.c_str();
        element = untrimmed.c_str() + std::min(untrimmed.find_first_not_of(' '), untrimmed.size());
    }
    property.setValue(elements);
}

void set(PptyEnum& property, std::string_view text) {
    Words words(text);
    std::string const choice = words.next("a choice");
    while (words.more()) {
        std::string const entry = words.next("");
        std::size_t const equals = entry.find('=');
        if (equals == std::string::npos) refuse("\"" + entry + "\" is not of the form label=number");
        property.itemLabels.push_back(entry.substr(0, equals).c_str());
        property.itemValues.push_back(number<int>(entry.substr(equals + 1)));
    }
    if (!property.setValue(ItemVariant(choice.c_str()))) refuse("the table has no choice \"" + choice + "\"");
}

template <class T, unsigned int Code> std::string shown(RangePpty<T, Code> const& property) {
    std::ostringstream text;
    show(text, *property.getVariantValue().template as<T>());
    return text.str() + " in " + range(property.getMin(), property.getMax());
}

std::string shown(Ppty const& property) { return property.toStr().c_str(); }

/// Calls `visit` with the property as what its type code says. Plug-in kinds come as the kind that they
/// derive from.
template <class Base, class Visit> void visitKind(Base& property, Visit const& visit) {
    auto const as = [&](auto* kind) {
        using Kind = std::remove_pointer_t<decltype(kind)>;
        visit(static_cast<std::conditional_t<std::is_const_v<Base>, Kind const, Kind>&>(property));
    };
    switch (property.getType()) {
    case Ppty::TYPE_INT: return as(static_cast<PptyInt*>(nullptr));
    case Ppty::TYPE_INT64: return as(static_cast<PptyInt64*>(nullptr));
    case Ppty::TYPE_FLOAT: return as(static_cast<PptyFloat*>(nullptr));
    case Ppty::TYPE_DOUBLE: return as(static_cast<PptyDouble*>(nullptr));
    case Ppty::TYPE_BOOL: return as(static_cast<PptyBool*>(nullptr));
    case Ppty::TYPE_STRING: return as(static_cast<PptyString*>(nullptr));
    case Ppty::TYPE_VECTOR3F: return as(static_cast<PptyVector3F*>(nullptr));
    case Ppty::TYPE_VECTOR3D: return as(static_cast<PptyVector3D*>(nullptr));
    case Ppty::TYPE_COLOR4F: return as(static_cast<PptyColor4F*>(nullptr));
    case Ppty::TYPE_COLOR4D: return as(static_cast<PptyColor4D*>(nullptr));
    case Ppty::TYPE_ARRAY_STRING: return as(static_cast<PptyArrayString*>(nullptr));
    case Ppty::TYPE_RANGE_INT: return as(static_cast<RIntPpty*>(nullptr));
    case Ppty::TYPE_RANGE_INT64: return as(static_cast<RInt64Ppty*>(nullptr));
    case Ppty::TYPE_RANGE_FLOAT: return as(static_cast<RFloatPpty*>(nullptr));
    case Ppty::TYPE_RANGE_DOUBLE: return as(static_cast<RDoublePpty*>(nullptr));
    case Ppty::TYPE_RANGE_VECTOR3F: return as(static_cast<RangeVect3FPpty*>(nullptr));
    case Ppty::TYPE_RANGE_VECTOR3D: return as(static_cast<RangeVect3DPpty*>(nullptr));
    case Ppty::TYPE_ENUM: return as(static_cast<PptyEnum*>(nullptr));
    case Ppty::TYPE_FILE: return as(static_cast<PptyFile*>(nullptr));
    case Ppty::TYPE_DIRECTORY: return as(static_cast<PptyDirectory*>(nullptr));
    default: refuse("no value can be given to this kind");
    }
}

} // namespace

void setFromText(Ppty& property, std::string_view text) {
    visitKind(property, [&](auto& kind) { set(kind, text); });
}

std::string oneLine(Ppty const& property) {
    std::string text;
    visitKind(property, [&](auto const& kind) { text = shown(kind); });
    for (std::size_t end; (end = text.find('\n')) != std::string::npos;) text.erase(end, 1);
    return text;
}
