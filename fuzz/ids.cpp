// Identifiers: the text forms are read back, order is the order of the texts, any text is read as it is meant.
//     bytes 0 to 15    an identifier
//     the rest         a text
#include "Input.h"

#include <MRCommon/system/ByteId.h>

#include <cctype>

using quarn::ByteId;

namespace {

std::string textOf(ByteId const& id) { return id.toString().c_str(); }

void requireTextForms(ByteId const& id) {
    std::string const digits = textOf(id);
    std::string const dashed = id.toUuidString().c_str();
    require(digits.size() == 32 && digits.find_first_not_of("0123456789ABCDEF") == std::string::npos,
            "32 capital digits");
    require(dashed == digits.substr(0, 8) + "-" + digits.substr(8, 4) + "-" + digits.substr(12, 4) + "-" +
                          digits.substr(16, 4) + "-" + digits.substr(20),
            "the digits as 8-4-4-4-12");
    require(ByteId(digits.c_str()) == id && ByteId(dashed.c_str()) == id, "both texts are read back");
    require(id.isZero() == (digits == std::string(32, '0')), "zero has zeros alone");
}

/// By the rule for texts, told in another way than the library goes about it.
void requireParsing(std::string const& text) {
    std::string digits = without(text.c_str(), [](char c) { return c == '-'; }).substr(0, 32);
    if (digits.size() % 2 != 0) digits.pop_back();
    bool const isGood = digits.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
    for (char& c : digits) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    std::string const expected =
        isGood ? digits + std::string(32 - digits.size(), '0') : std::string(32, '0');
    require(textOf(ByteId(text.c_str())) == expected,
            "pairs of digits fill the bytes from the front, or none");
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Input input(data, size);
    ByteId id;
    for (unsigned int i = 0; i < ByteId::BYTE_LENGTH; ++i) id.array()[i] = input.number<unsigned char>();
    std::string const text(input.rest());
    ByteId const other(text.c_str());
    requireTextForms(id);
    requireParsing(text);
    int const order = textOf(id).compare(textOf(other));
    require((id < other) == (order < 0) && (id >= other) == (order >= 0) && (id == other) == (order == 0),
            "the order is the order of the texts");
    return 0;
}
