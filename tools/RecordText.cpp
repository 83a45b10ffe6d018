#include "RecordText.h"

#include <MRCommon/properties/MetaClasses.h>

#include <array>
#include <cstdio>
#include <type_traits>

using namespace quarn;
using Json = nlohmann::ordered_json;

namespace {

/// Calls `visit` with the value of a variant as what it is; does nothing if there is none.
template <class Visit> void visitValue(ItemVariant const& variant, Visit const& visit) {
    detail::visitKind(variant.tag(), [&](auto kind) {
        if (auto const* const value = variant.as<typename decltype(kind)::Type>()) visit(*value);
    });
}

template <class Ranged, class Visit> void visitBoundsAs(Ppty const& ppty, Visit const& visit) {
    if (auto const* const ranged = dynamic_cast<Ranged const*>(&ppty))
        visit(ranged->getMax(), ranged->getMin());
}

/// Calls `visit(maximum, minimum)` for a ranged kind.
template <class Visit> void visitBounds(Ppty const& ppty, Visit const& visit) {
    visitBoundsAs<RIntPpty>(ppty, visit);
    visitBoundsAs<RInt64Ppty>(ppty, visit);
    visitBoundsAs<RFloatPpty>(ppty, visit);
    visitBoundsAs<RDoublePpty>(ppty, visit);
    visitBoundsAs<RangeVect3FPpty>(ppty, visit);
    visitBoundsAs<RangeVect3DPpty>(ppty, visit);
}

/// Whether the record of this kind holds the value; a byte-order-aware one mostly holds the name alone.
bool holdsValue(Ppty const& ppty, bool raw) {
    return raw || dynamic_cast<PptyArrayString const*>(&ppty) != nullptr;
}

Tuple2<QN_String, int> const& choiceOf(PptyEnum const& ppty) {
    return *ppty.getVariantValue().as<Tuple2<QN_String, int>>();
}

template <class Number> std::string formatted(char const* pattern, Number value) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), pattern, value);
    return text.data();
}

/// The bytes of a string without its last NUL.
std::string bytesOf(QN_String const& text) {
    if (text.empty()) return {};
    bool const hasNul = text[text.size() - 1] == '\0';
    return {text.data(), text.size() - (hasNul ? 1 : 0)};
}

// ---------------------------------------------------------------------------
// Text

std::string textOf(bool value) { return value ? "true" : "false"; }
std::string textOf(int value) { return std::to_string(value); }
std::string textOf(unsigned int value) { return std::to_string(value); }
std::string textOf(unsigned long long value) { return std::to_string(value); }
std::string textOf(long long value) { return std::to_string(value); }
std::string textOf(double value) { return formatted("%.17g", value); }
std::string textOf(float value) { return textOf(static_cast<double>(value)); }

std::string textOf(std::string const& bytes) {
    std::string text = "\"";
    for (char const c : bytes) {
        auto const byte = static_cast<unsigned char>(c);
        if (byte >= 32 && byte < 127 && byte != '"' && byte != '\\')
            text += c;
        else
            text += formatted("\\x%02x", byte);
    }
    return text += '"';
}

std::string textOf(QN_String const& text) { return text.empty() ? "none" : textOf(bytesOf(text)); }

template <class T> std::string textOf(Array<T> const& list) {
    std::string text = "[";
    for (unsigned int i = 0; i < list.size(); ++i) {
        if (i != 0) text += ", ";
        text += textOf(list[i]);
    }
    return text += ']';
}

template <class First, class... Others> std::string tupleText(First const& first, Others const&... others) {
    std::string text = "(" + textOf(first);
    ((text += ", ", text += textOf(others)), ...);
    return text += ')';
}

template <class T> std::string textOf(Vector3<T> const& v) { return tupleText(v.x, v.y, v.z); }
template <class T> std::string textOf(Color4<T> const& c) { return tupleText(c.r, c.g, c.b, c.a); }
std::string textOf(Tuple2<QN_String, int> const& pair) { return tupleText(pair.first, pair.second); }

template <class T> void add(std::string& line, char const* what, T const& value) {
    line += ' ';
    line += what;
    line += '=';
    line += textOf(value);
}

// ---------------------------------------------------------------------------
// JSON

template <class T> Json jsonOf(T value) {
    static_assert(std::is_arithmetic_v<T>);
    return value;
}

Json jsonOf(QN_String const& text) { return bytesOf(text); }
template <class T> Json jsonOf(Vector3<T> const& v) { return Json::array({v.x, v.y, v.z}); }
template <class T> Json jsonOf(Color4<T> const& c) { return Json::array({c.r, c.g, c.b, c.a}); }
Json jsonOf(Tuple2<QN_String, int> const& pair) {
    return {{"label", jsonOf(pair.first)}, {"index", pair.second}};
}

Json jsonOf(Array<QN_String> const& list) {
    Json texts = Json::array();
    for (QN_String const& text : list) texts.push_back(jsonOf(text));
    return texts;
}

/// Label and number of each choice; null for one that has no partner.
Json choicesOf(PptyEnum const& ppty) {
    Json choices = Json::array();
    for (unsigned int i = 0; i < ppty.itemLabels.size() || i < ppty.itemValues.size(); ++i)
        choices.push_back(Json::array({i < ppty.itemLabels.size() ? jsonOf(ppty.itemLabels[i]) : Json(),
                                       i < ppty.itemValues.size() ? Json(ppty.itemValues[i]) : Json()}));
    return choices;
}

} // namespace

void RecordText::property(Ppty const& ppty, bool raw) {
    add(line, "name", ppty.getName());
    if (auto const* const choice = dynamic_cast<PptyEnum const*>(&ppty)) {
        add(line, "label", choiceOf(*choice).first);
        add(line, "index", choiceOf(*choice).second);
        add(line, "labels", choice->itemLabels);
        add(line, "values", choice->itemValues);
    } else if (holdsValue(ppty, raw)) {
        visitValue(ppty.getVariantValue(), [&](auto const& value) { add(line, "value", value); });
        visitBounds(ppty, [&](auto const& maximum, auto const& minimum) {
            add(line, "max", maximum);
            add(line, "min", minimum);
        });
    }
}

void RecordText::variant(ItemVariant const& variant) {
    add(line, "tag", variant.tag());
    visitValue(variant, [&](auto const& value) { add(line, "value", value); });
}

void RecordText::settings(FileNameStitcher const& settings) {
    add(line, "prefix", settings.prefix);
    add(line, "padding", settings.padding);
    add(line, "order", static_cast<int>(settings.order));
}

void RecordText::unknown(unsigned int schema, unsigned long long size) {
    add(line, "schema", schema);
    add(line, "bytes", size);
}

void RecordJson::property(Ppty const& ppty, bool raw) {
    object["name"] = jsonOf(ppty.getName());
    auto const* const choice = dynamic_cast<PptyEnum const*>(&ppty);
    if (choice == nullptr && !holdsValue(ppty, raw)) return;
    visitValue(ppty.getVariantValue(), [&](auto const& value) { object["value"] = jsonOf(value); });
    if (choice != nullptr) object["choices"] = choicesOf(*choice);
    visitBounds(ppty, [&](auto const& maximum, auto const& minimum) {
        object["minimum"] = jsonOf(minimum);
        object["maximum"] = jsonOf(maximum);
    });
}

void RecordJson::variant(ItemVariant const& variant) {
    object["tag"] = variant.tag();
    visitValue(variant, [&](auto const& value) { object["value"] = jsonOf(value); });
}

void RecordJson::settings(FileNameStitcher const& settings) {
    object["prefix"] = settings.prefix;
    object["padding"] = settings.padding;
    object["order"] = static_cast<int>(settings.order);
}

void RecordJson::unknown(unsigned int schema, unsigned long long size) {
    object["schema"] = schema;
    object["bytes"] = size;
}
