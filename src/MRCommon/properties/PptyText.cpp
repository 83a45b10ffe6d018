#include <MRCommon/properties/PptyText.h>

#include <MRCommon/properties/PptyEnum.h>

#include <array>
#include <cstdio>
#include <string>
#include <string_view>

namespace quarn::qn_basicppty {

namespace {

std::string_view visible(QN_String const& text) { return {text.data(), text.length()}; }

} // namespace

void QN_set(QN_String& out, bool const& value) { out = value ? "True" : "False"; }

void QN_set(QN_String& out, Array<QN_String> const& list) {
    std::string text;
    for (QN_String const& element : list) text.append(text.empty() ? "[ " : ", ").append(visible(element));
    if (!text.empty()) text += " ]";
    out = text.c_str();
}

void QN_set(QN_String& out, PptyEnum const& property) {
    auto const& [label, index] = *property.getVariantValue().as<Tuple2<QN_String, int>>();
    // Not std::to_string or std::to_chars: their table of digits is a unique symbol, which pins the library.
    std::array<char, 12> number{};
    static_cast<void>(std::snprintf(number.data(), number.size(), "%d", index));
    std::string text = " PptyEnum : ";
    text.append(visible(property.getName())).append("( ").append(visible(label)).append(", ");
    text.append(number.data()).append(" )\n");
    out = text.c_str();
}

} // namespace quarn::qn_basicppty
