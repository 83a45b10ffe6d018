#include "RecordText.h"

#include <MRCommon/properties/MetaClasses.h>

#include <array>
#include <cstdio>
#include <tuple>
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
std::string_view bytesOf(QN_String const& text) {
    if (text.empty()) return {};
    bool const hasNul = text[text.size() - 1] == '\0';
    return {text.data(), text.size() - (hasNul ? 1 : 0)};
}

/// Appends the elements with `separator` between them.
template <class List, class Put>
void putList(LongLine& line, List const& list, char const* separator, Put const& put) {
    line.append("[");
    for (unsigned int i = 0; i < list.size(); ++i) {
        if (i != 0) line.append(separator);
        put(list[i]);
    }
    line.append("]");
}

// ---------------------------------------------------------------------------
// Text

void putText(LongLine& line, bool value) { line.append(value ? "true" : "false"); }
void putText(LongLine& line, int value) { line.append(std::to_string(value)); }
void putText(LongLine& line, unsigned int value) { line.append(std::to_string(value)); }
void putText(LongLine& line, unsigned long long value) { line.append(std::to_string(value)); }
void putText(LongLine& line, long long value) { line.append(std::to_string(value)); }
void putText(LongLine& line, double value) { line.append(formatted("%.17g", value)); }
void putText(LongLine& line, float value) { putText(line, static_cast<double>(value)); }

void putText(LongLine& line, std::string_view bytes) {
    line.append("\"");
    for (char const& c : bytes) {
        auto const byte = static_cast<unsigned char>(c);
        if (byte >= 32 && byte < 127 && byte != '"' && byte != '\\')
            line.append({&c, 1});
        else
            line.append(formatted("\\x%02x", byte));
    }
    line.append("\"");
}

void putText(LongLine& line, QN_String const& text) {
    text.empty() ? line.append("none") : putText(line, bytesOf(text));
}

template <class T> void putText(LongLine& line, Array<T> const& list) {
    putList(line, list, ", ", [&](T const& element) { putText(line, element); });
}

template <class First, class... Others>
void putTuple(LongLine& line, First const& first, Others const&... others) {
    line.append("(");
    putText(line, first);
    ((line.append(", "), putText(line, others)), ...);
    line.append(")");
}

template <class T> void putText(LongLine& line, Vector3<T> const& v) { putTuple(line, v.x, v.y, v.z); }
template <class T> void putText(LongLine& line, Color4<T> const& c) { putTuple(line, c.r, c.g, c.b, c.a); }
void putText(LongLine& line, Tuple2<QN_String, int> const& pair) { putTuple(line, pair.first, pair.second); }

// ---------------------------------------------------------------------------
// JSON

/// The choices of an enumeration: label and number of each, null for one that has no partner.
struct Choices {
    PptyEnum const& ppty;
};

/// Returns the size of the first piece of `bytes`, which ends between two characters of UTF-8. Three continuation bytes
/// end any character.
std::size_t pieceOf(std::string_view bytes) {
    constexpr std::size_t pieceSize = 1 << 12;
    if (bytes.size() <= pieceSize) return bytes.size();
    auto const isContinuation = [&](std::size_t i) {
        return (static_cast<unsigned char>(bytes[i]) & 0xC0) == 0x80;
    };
    for (std::size_t cut = pieceSize; cut > pieceSize - 4; --cut)
        if (!isContinuation(cut)) return cut;
    return pieceSize;
}

template <class T> std::enable_if_t<std::is_arithmetic_v<T>> putJson(LongLine& line, T value) {
    line.append(Json(value).dump());
}

/// Bytes that are not UTF-8 become U+FFFD.
void putJson(LongLine& line, std::string_view bytes) {
    line.append("\"");
    while (!bytes.empty()) {
        std::size_t const size = pieceOf(bytes);
        std::string const quoted =
            Json(bytes.substr(0, size)).dump(-1, ' ', false, Json::error_handler_t::replace);
        line.append(std::string_view(quoted).substr(1, quoted.size() - 2));
        bytes.remove_prefix(size);
    }
    line.append("\"");
}

void putJson(LongLine& line, QN_String const& text) { putJson(line, bytesOf(text)); }

template <class First, class... Others>
void putJsonTuple(LongLine& line, First const& first, Others const&... others) {
    line.append("[");
    putJson(line, first);
    ((line.append(","), putJson(line, others)), ...);
    line.append("]");
}

template <class T> void putJson(LongLine& line, Vector3<T> const& v) { putJsonTuple(line, v.x, v.y, v.z); }
template <class T> void putJson(LongLine& line, Color4<T> const& c) {
    putJsonTuple(line, c.r, c.g, c.b, c.a);
}

void putJson(LongLine& line, Tuple2<QN_String, int> const& pair) {
    line.append(R"({"label":)");
    putJson(line, pair.first);
    line.append(R"(,"index":)");
    putJson(line, pair.second);
    line.append("}");
}

void putJson(LongLine& line, Array<QN_String> const& list) {
    putList(line, list, ",", [&](QN_String const& text) { putJson(line, text); });
}

template <class T> void putElementOrNull(LongLine& line, Array<T> const& list, unsigned int i) {
    i < list.size() ? putJson(line, list[i]) : line.append("null");
}

void putJson(LongLine& line, Choices const& choices) {
    auto const& [labels, values] = std::tie(choices.ppty.itemLabels, choices.ppty.itemValues);
    line.append("[");
    for (unsigned int i = 0; i < labels.size() || i < values.size(); ++i) {
        line.append(i == 0 ? "[" : ",[");
        putElementOrNull(line, labels, i);
        line.append(",");
        putElementOrNull(line, values, i);
        line.append("]");
    }
    line.append("]");
}

} // namespace

void LongLine::append(std::string_view text) {
    constexpr std::size_t longLine = 1 << 16;
    line_ += text;
    if (line_.size() < longLine) return;
    program_.printBeginning(line_);
    line_.clear();
}

template <class T> void RecordText::add(char const* what, T const& value) {
    line_.append(" ");
    line_.append(what);
    line_.append("=");
    putText(line_, value);
}

void RecordText::property(Ppty const& ppty, bool raw) {
    add("name", ppty.getName());
    if (auto const* const choice = dynamic_cast<PptyEnum const*>(&ppty)) {
        add("label", choiceOf(*choice).first);
        add("index", choiceOf(*choice).second);
        add("labels", choice->itemLabels);
        add("values", choice->itemValues);
    } else if (holdsValue(ppty, raw)) {
        visitValue(ppty.getVariantValue(), [&](auto const& value) { add("value", value); });
        visitBounds(ppty, [&](auto const& maximum, auto const& minimum) {
            add("max", maximum);
            add("min", minimum);
        });
    }
}

void RecordText::variant(ItemVariant const& variant) {
    add("tag", variant.tag());
    visitValue(variant, [&](auto const& value) { add("value", value); });
}

void RecordText::settings(FileNameStitcher const& settings) {
    add("prefix", std::string_view(settings.prefix));
    add("padding", settings.padding);
    add("order", static_cast<int>(settings.order));
}

void RecordText::unknown(unsigned int schema, unsigned long long size) {
    add("schema", schema);
    add("bytes", size);
}

RecordJson::RecordJson(CommandLine& program, std::string const& file, unsigned long long offset,
                       std::string const& kind)
    : line_(program) {
    add("file", std::string_view(file));
    add("offset", offset);
    add("kind", std::string_view(kind));
}

template <class T> void RecordJson::add(char const* what, T const& value) {
    line_.append(separator_);
    separator_ = ",";
    putJson(line_, std::string_view(what));
    line_.append(":");
    putJson(line_, value);
}

void RecordJson::end() {
    line_.append("}");
    line_.end();
}

void RecordJson::property(Ppty const& ppty, bool raw) {
    add("name", ppty.getName());
    auto const* const choice = dynamic_cast<PptyEnum const*>(&ppty);
    if (choice == nullptr && !holdsValue(ppty, raw)) return;
    visitValue(ppty.getVariantValue(), [&](auto const& value) { add("value", value); });
    if (choice != nullptr) add("choices", Choices{*choice});
    visitBounds(ppty, [&](auto const& maximum, auto const& minimum) {
        add("minimum", minimum);
        add("maximum", maximum);
    });
}

void RecordJson::variant(ItemVariant const& variant) {
    add("tag", variant.tag());
    visitValue(variant, [&](auto const& value) { add("value", value); });
}

void RecordJson::settings(FileNameStitcher const& settings) {
    add("prefix", std::string_view(settings.prefix));
    add("padding", settings.padding);
    add("order", static_cast<int>(settings.order));
}

void RecordJson::unknown(unsigned int schema, unsigned long long size) {
    add("schema", schema);
    add("bytes", size);
}
