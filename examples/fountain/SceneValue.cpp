#include "SceneValue.h"

#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/properties/PptyArrayString.h>
#include <MRCommon/properties/PptyEnum.h>
#include <MRCommon/properties/RangeVectPpty.h>
#include <MRCommon/properties/RgdBasicPpty.h>

#include <locale.h>
#ifdef __APPLE__
#include <xlocale.h>
#endif

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <initializer_list>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

using namespace quarn;

namespace {

[[noreturn]] void refuse(std::string const& why) { throw std::invalid_argument(why); }

/// Returns the stream with the locale in which numbers look the same everywhere.
template <class Stream> Stream classic(Stream stream) {
    stream.imbue(std::locale::classic());
    return stream;
}

/// Sets the "C" locale of this thread for as long as a scope lasts, which std::strtod depends on. std::from_chars would
/// not, but some standard libraries lack it for floating point.
class ClassicLocale {
public:
    ClassicLocale() : classic_(newlocale(LC_ALL_MASK, "C", nullptr)), previous_(uselocale(classic_)) {}
    ~ClassicLocale() {
        uselocale(previous_);
        freelocale(classic_);
    }
    ClassicLocale(ClassicLocale const&) = delete;
    ClassicLocale& operator=(ClassicLocale const&) = delete;

private:
    locale_t classic_, previous_;
};

void parse(char const* text, char** end, float& value) { value = std::strtof(text, end); }
void parse(char const* text, char** end, double& value) { value = std::strtod(text, end); }

[[noreturn]] void refuseNumber(std::string const& word) { refuse("\"" + word + "\" is not a number"); }
[[noreturn]] void refuseSize(std::string const& word) {
    refuse("\"" + word + "\" is too large for this kind");
}

template <class T> T realNumber(std::string const& word) {
    // The call also accepts blanks, hexadecimal numbers, infinity and NaN.
    if (word.find_first_not_of("0123456789.+-eE") != std::string::npos) refuseNumber(word);
    ClassicLocale const locale;
    T value{};
    char* end = nullptr;
    parse(word.c_str(), &end, value);
    if (word.empty() || *end != '\0') refuseNumber(word);
    if (!std::isfinite(value)) refuseSize(word);
    return value;
}

template <class T> T wholeNumber(std::string const& word) {
    T value{};
    auto const [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error == std::errc::result_out_of_range) refuseSize(word);
    if (error != std::errc() || end != word.data() + word.size()) refuseNumber(word);
    return value;
}

/// Returns a bound rounded to the type of the number: 3.15 as a float exceeds 3.15 as a double, but is within the bound.
template <class T> double boundAs(double bound) {
    if constexpr (std::is_floating_point_v<T>) return static_cast<double>(static_cast<T>(bound));
    return bound;
}

template <class T> T number(std::string const& word, Bounds const& bounds) {
    T value{};
    if constexpr (std::is_floating_point_v<T>)
        value = realNumber<T>(word);
    else
        value = wholeNumber<T>(word);
    auto const wide = static_cast<double>(value);
    if (wide < boundAs<T>(bounds.lowest) || wide > boundAs<T>(bounds.highest)) {
        auto text = classic(std::ostringstream());
        text << word << " is outside " << bounds.lowest << " .. " << bounds.highest;
        refuse(text.str());
    }
    return value;
}

/// The words of a value, taken one by one, and what its numbers must lie within.
class Words {
public:
    Words(std::string_view text, Bounds const& bounds) : stream_(std::string(text)), bounds_(bounds) {}

    std::string next(char const* what) {
        std::string word;
        if (!(stream_ >> word)) refuse(std::string("the value lacks ") + what);
        return word;
    }

    template <class T> T nextNumber() { return number<T>(next("a number"), bounds_); }

    Bounds const& bounds() const { return bounds_; }

    bool more() { return !(stream_ >> std::ws).eof(); }

    void end() {
        if (more()) refuse("\"" + next("") + "\" is one word too many");
    }

private:
    std::istringstream stream_;
    Bounds bounds_;
};

template <class T> void take(Words& words, T& value) {
    static_assert(std::is_arithmetic_v<T>);
    value = words.nextNumber<T>();
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

/// Shows a real number with the fewest digits that identify it among its type.
template <class T> std::enable_if_t<std::is_floating_point_v<T>> show(std::ostream& out, T value) {
    std::string text;
    for (int digits = 6; digits <= std::numeric_limits<T>::max_digits10; ++digits) {
        auto attempt = classic(std::ostringstream());
        attempt.precision(digits);
        attempt << value;
        text = attempt.str();
        if (realNumber<T>(text) == value) break;
    }
    out << text;
}

void show(std::ostream& out, int value) { out << value; }
void show(std::ostream& out, long long value) { out << value; }
void show(std::ostream& out, bool value) { out << (value ? "True" : "False"); }
void show(std::ostream& out, QN_String const& value) { out << value.c_str(); }

template <class T> void show(std::ostream& out, std::initializer_list<T> components) {
    char const* separator = "(";
    for (T const component : components) {
        out << std::exchange(separator, ", ");
        show(out, component);
    }
    out << ")";
}

template <class T> void show(std::ostream& out, Vector3<T> const& v) { show(out, {v.x, v.y, v.z}); }
template <class T> void show(std::ostream& out, Color4<T> const& c) { show(out, {c.r, c.g, c.b, c.a}); }

void show(std::ostream& out, Array<QN_String> const& list) {
    for (unsigned int i = 0; i < list.size(); ++i) out << (i == 0 ? "" : ", ") << list[i].c_str();
}

template <class T> std::string shown(T const& value) {
    auto text = classic(std::ostringstream());
    show(text, value);
    return text.str();
}

template <class T> std::string range(T const& minimum, T const& maximum) {
    return shown(minimum) + " .. " + shown(maximum);
}

template <class T, unsigned int Code>
void set(BasicPpty<T, Code>& property, Words& words, std::string_view text) {
    if constexpr (std::is_same_v<T, QN_String>) {
        property.setValue(QN_String(std::string(text).c_str()));
    } else {
        T value{};
        take(words, value);
        words.end();
        property.setValue(value);
    }
}

template <class T, unsigned int Code> void set(RangePpty<T, Code>& property, Words& words, std::string_view) {
    T value{}, minimum{}, maximum{};
    take(words, value);
    take(words, minimum);
    take(words, maximum);
    words.end();
    property.setMin(minimum);
    property.setMax(maximum);
    if (!property.setValue(value)) refuse(shown(value) + " is outside " + range(minimum, maximum));
}

void set(PptyArrayString& property, Words&, std::string_view text) {
    Array<QN_String> elements;
    QN_String(std::string(text).c_str()).tokenize(',', elements);
    for (QN_String& element : elements) {
        std::string const untrimmed = element.c_str();
        element = untrimmed.c_str() + std::min(untrimmed.find_first_not_of(' '), untrimmed.size());
    }
    property.setValue(elements);
}

void set(PptyEnum& property, Words& words, std::string_view) {
    std::string const choice = words.next("a choice");
    while (words.more()) {
        std::string const entry = words.next("");
        std::size_t const equals = entry.find('=');
        if (equals == std::string::npos) refuse("\"" + entry + "\" is not of the form label=number");
        property.itemLabels.push_back(entry.substr(0, equals).c_str());
        property.itemValues.push_back(number<int>(entry.substr(equals + 1), words.bounds()));
    }
    if (!property.setValue(ItemVariant(choice.c_str()))) refuse("the table has no choice \"" + choice + "\"");
}

template <class T, unsigned int Code> std::string valueOf(BasicPpty<T, Code> const& property) {
    return shown(*property.getVariantValue().template as<T>());
}

template <class T, unsigned int Code> std::string valueOf(RangePpty<T, Code> const& property) {
    return shown(*property.getVariantValue().template as<T>()) + " in " +
           range(property.getMin(), property.getMax());
}

std::string valueOf(PptyArrayString const& property) {
    return shown(*property.getVariantValue().as<Array<QN_String>>());
}

std::string valueOf(PptyEnum const& property) {
    auto const& choice = *property.getVariantValue().as<Tuple2<QN_String, int>>();
    return shown(choice.first) + " = " + shown(choice.second);
}

template <class T> std::enable_if_t<std::is_arithmetic_v<T>> check(T value, Bounds const& bounds) {
    number<T>(shown(value), bounds);
}

void check(bool, Bounds const&) {}
void check(QN_String const&, Bounds const&) {}
void check(Array<QN_String> const&, Bounds const&) {}
void check(Tuple2<QN_String, int> const& choice, Bounds const& bounds) { check(choice.second, bounds); }

template <class T> void check(Vector3<T> const& v, Bounds const& bounds) {
    for (T const component : {v.x, v.y, v.z}) check(component, bounds);
}

template <class T> void check(Color4<T> const& c, Bounds const& bounds) {
    for (T const component : {c.r, c.g, c.b, c.a}) check(component, bounds);
}

template <class T, unsigned int Code>
void checkValue(BasePpty<T, Code> const& property, Bounds const& bounds) {
    check(*property.getVariantValue().template as<T>(), bounds);
}

template <class T, unsigned int Code>
void checkValue(RangePpty<T, Code> const& property, Bounds const& bounds) {
    for (T const& value :
         {*property.getVariantValue().template as<T>(), property.getMin(), property.getMax()})
        check(value, bounds);
}

/// Calls `visit` with the property cast to the kind that its type code names. A kind of a plug-in is passed as the kind
/// that it derives from.
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
    default: refuse("a scene cannot give this kind a value");
    }
}

} // namespace

void setFromText(Ppty& property, std::string_view text, Bounds const& bounds) {
    Words words(text, bounds);
    visitKind(property, [&](auto& kind) { set(kind, words, text); });
}

void checkNumbers(Ppty const& property, Bounds const& bounds) {
    visitKind(property, [&](auto const& kind) { checkValue(kind, bounds); });
}

std::string valueText(Ppty const& property) {
    std::string text;
    visitKind(property, [&](auto const& kind) { text = valueOf(kind); });
    return text;
}

std::string libraryText(Ppty const& property) {
    std::string text = property.toStr().c_str();
    for (std::size_t end; (end = text.find('\n')) != std::string::npos;) text.erase(end, 1);
    return text;
}
