#include <MRCommon/system/ByteId.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <tuple>

namespace quarn {

namespace {

constexpr std::string_view hexDigits = "0123456789ABCDEF";
constexpr unsigned short noDigit = 0x100; // above every byte, so that it shows in the OR of many values

/// Both digits of every byte.
constexpr std::array<std::array<char, 2>, 256> makePairs() {
    std::array<std::array<char, 2>, 256> pairs{};
    for (unsigned int byte = 0; byte < pairs.size(); ++byte)
        pairs[byte] = {hexDigits[byte / 16], hexDigits[byte % 16]};
    return pairs;
}

using Values = std::array<unsigned short, 256>;

/// The value of every character as a digit, multiplied by `weight`; `noDigit` for the others.
constexpr Values makeValues(unsigned int weight) {
    Values values{};
    for (unsigned short& value : values) value = noDigit;
    for (unsigned int value = 0; value < 16; ++value) {
        auto const digit = static_cast<unsigned char>(hexDigits[value]);
        values[digit] = static_cast<unsigned short>(value * weight);
        if (value >= 10) values[digit + ('a' - 'A')] = values[digit];
    }
    return values;
}

constexpr std::array<std::array<char, 2>, 256> pairs = makePairs();
constexpr Values highValues = makeValues(16);
constexpr Values lowValues = makeValues(1);

void putPair(char* out, unsigned char byte) { std::memcpy(out, pairs[byte].data(), 2); }

/// Writes the 32 digits.
void putDigits(char* out, ByteId::Bytes const& bytes) {
    for (unsigned char const byte : bytes.elements) {
        putPair(out, byte);
        out += 2;
    }
}

/// Where the two digits of each byte begin among 36 characters.
constexpr std::array<unsigned char, ByteId::BYTE_LENGTH> uuidPlaces = {0,  2,  4,  6,  9,  11, 14, 16,
                                                                       19, 21, 24, 26, 28, 30, 32, 34};

/// Reads `count` bytes from their pairs of digits. Returns the OR of their values, which is above 0xFF if a
/// pair is malformed. The count is a small constant, so that the compiler unrolls the loop.
template <std::size_t count> unsigned int readPairs(char const* digits, unsigned char* bytes) {
    unsigned int all = 0;
    for (std::size_t i = 0; i < count; ++i) {
        auto const high = static_cast<unsigned char>(digits[2 * i]);
        auto const low = static_cast<unsigned char>(digits[2 * i + 1]);
        unsigned int const value = highValues[high] | lowValues[low];
        all |= value;
        bytes[i] = static_cast<unsigned char>(value);
    }
    return all;
}

/// Reads 32 digits. Returns false if one is malformed.
bool readDigits(char const* text, unsigned char* bytes) {
    unsigned int const all = readPairs<4>(text, bytes) | readPairs<4>(text + 8, bytes + 4) |
                             readPairs<4>(text + 16, bytes + 8) | readPairs<4>(text + 24, bytes + 12);
    return all <= 0xFF;
}

/// Reads 32 digits as 8-4-4-4-12. Returns false if one is malformed.
bool readUuid(char const* text, unsigned char* bytes) {
    unsigned int const all = readPairs<4>(text, bytes) | readPairs<2>(text + 9, bytes + 4) |
                             readPairs<2>(text + 14, bytes + 6) | readPairs<2>(text + 19, bytes + 8) |
                             readPairs<6>(text + 24, bytes + 10);
    return all <= 0xFF;
}

bool hasUuidForm(std::string_view text) {
    return text.size() == 36 && text[8] == '-' && text[13] == '-' && text[18] == '-' && text[23] == '-';
}

/// Reads the pairs of a text with dashes anywhere. Returns false if one is malformed.
bool readScattered(std::string_view text, unsigned char* bytes) {
    std::array<char, 32> digits;
    std::size_t count = 0;
    for (char const c : text) {
        if (c == '-') continue;
        digits[count++] = c;
        if (count == digits.size()) break;
    }
    std::fill(digits.begin() + count / 2 * 2, digits.end(), '0');
    return readDigits(digits.data(), bytes);
}

} // namespace

unsigned int const ByteId::BYTE_LENGTH;

ByteId::ByteId(Variant const& variant) noexcept {
    bytes_[7] = static_cast<unsigned char>(static_cast<unsigned int>(variant) << 5);
}

ByteId::ByteId(QN_String const& text) noexcept {
    std::string_view const view = text.view();
    if (hasUuidForm(view) && readUuid(view.data(), bytes_.data())) return;
    if (view.size() == 32 && readDigits(view.data(), bytes_.data())) return;
    if (!readScattered(view, bytes_.data())) bytes_ = {};
}

QN_String ByteId::toString() const {
    QN_String text("................................");
    putDigits(text.data(), bytes_);
    return text;
}

QN_String ByteId::toUuidString() const {
    QN_String text("........-....-....-....-............");
    char* const out = text.data();
    for (unsigned int i = 0; i < BYTE_LENGTH; ++i) putPair(out + uuidPlaces[i], bytes_[i]);
    return text;
}

void ByteId::writeHex(QN_String& out, Bytes const& bytes) {
    out.reserve(2 * BYTE_LENGTH + 1, false);
    out.setSize(2 * BYTE_LENGTH + 1);
    putDigits(out.data(), bytes);
    out[2 * BYTE_LENGTH] = '\0';
}

bool ByteId::byteToChar(char& out, unsigned char const& value) const noexcept {
    if (value > 15) return false;
    out = hexDigits[value];
    return true;
}

bool ByteId::charToByte(unsigned char& out, char const& digit) const noexcept {
    unsigned short const value = lowValues[static_cast<unsigned char>(digit)];
    if (value == noDigit) return false;
    out = static_cast<unsigned char>(value);
    return true;
}

ByteId::Variant ByteId::variant() const noexcept {
    unsigned char const byte = bytes_[7];
    if (byte < 0x20) return VARIANT_NONE;
    if (byte < 0x40) return VARIANT_0;
    return byte < 0xC0 ? VARIANT_2 : VARIANT_6;
}

unsigned long long ByteId::toUINT64() const noexcept { return 0; }

namespace {

/// The index views are inline and exported too, so that a module that does not inline their calls uses these
/// copies. A
/// copy in a plug-in would be shared with the plug-ins opened later and keep it from being unloaded.
[[gnu::used]] constexpr std::tuple exportedCopies{
    &ByteId::last8BytesToUint64, &ByteId::toQN_INDEX64,           &ByteId::last4BytesToUint32,
    &ByteId::last4BytesToIdx32,  &ByteId::setLast8BytesFromIdx64, &ByteId::incIdFromLast8BytesAsIdx64};

} // namespace

} // namespace quarn
