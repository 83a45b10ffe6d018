#include <MRCommon/system/ByteId.h>

#include <array>
#include <string_view>
#include <tuple>

namespace quarn {

namespace {

constexpr std::string_view hexDigits = "0123456789ABCDEF";
constexpr unsigned char noDigit = 0xFF;

/// Both digits of every byte.
constexpr std::array<std::array<char, 2>, 256> makePairs() {
    std::array<std::array<char, 2>, 256> pairs{};
    for (unsigned int byte = 0; byte < pairs.size(); ++byte)
        pairs[byte] = {hexDigits[byte / 16], hexDigits[byte % 16]};
    return pairs;
}

/// The value of every character as a digit, `noDigit` for the others.
constexpr std::array<unsigned char, 256> makeValues() {
    std::array<unsigned char, 256> values{};
    for (unsigned char& value : values) value = noDigit;
    for (unsigned char value = 0; value < 16; ++value) {
        auto const digit = static_cast<unsigned char>(hexDigits[value]);
        values[digit] = value;
        if (value >= 10) values[digit + ('a' - 'A')] = value;
    }
    return values;
}

constexpr std::array<std::array<char, 2>, 256> pairs = makePairs();
constexpr std::array<unsigned char, 256> values = makeValues();

unsigned char valueOf(char digit) { return values[static_cast<unsigned char>(digit)]; }

void putPair(char* out, unsigned char byte) { std::memcpy(out, pairs[byte].data(), 2); }

/// Writes the 32 digits.
void putDigits(char* out, ByteId::Bytes const& bytes) {
    for (unsigned char const byte : bytes.elements) {
        putPair(out, byte);
        out += 2;
    }
}

/// Where the two digits of each byte begin.
using Places = std::array<unsigned char, ByteId::BYTE_LENGTH>;
constexpr Places plainPlaces = {0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30};
constexpr Places uuidPlaces = {0, 2, 4, 6, 9, 11, 14, 16, 19, 21, 24, 26, 28, 30, 32, 34};

bool hasUuidForm(std::string_view text) {
    return text.size() == 36 && text[8] == '-' && text[13] == '-' && text[18] == '-' && text[23] == '-';
}

/// Fills the first `count` bytes from pairs of digits. Returns false if a pair is malformed.
bool readPairs(char const* text, Places const& places, unsigned int count, ByteId::Bytes& bytes) {
    unsigned int all = 0; // of values; one above 15 belongs to a character that is not a digit
    for (unsigned int i = 0; i < count; ++i) {
        unsigned int const high = valueOf(text[places[i]]);
        unsigned int const low = valueOf(text[places[i] + 1]);
        all |= high | low;
        bytes[i] = static_cast<unsigned char>(high << 4 | low);
    }
    return all <= 15;
}

/// Reads the pairs of a text with dashes anywhere.
bool readScattered(std::string_view text, ByteId::Bytes& bytes) {
    std::array<char, 32> found;
    unsigned int count = 0;
    for (char const c : text) {
        if (c == '-') continue;
        found[count++] = c;
        if (count == found.size()) break;
    }
    return readPairs(found.data(), plainPlaces, count / 2, bytes);
}

} // namespace

unsigned int const ByteId::BYTE_LENGTH;

ByteId::ByteId(Variant const& variant) noexcept {
    bytes_[7] = static_cast<unsigned char>(static_cast<unsigned int>(variant) << 5);
}

ByteId::ByteId(QN_String const& text) noexcept {
    std::string_view const view = text.view();
    if (hasUuidForm(view) && readPairs(view.data(), uuidPlaces, BYTE_LENGTH, bytes_)) return;
    bytes_ = {};
    if (!readScattered(view, bytes_)) bytes_ = {};
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
    unsigned char const value = valueOf(digit);
    if (value == noDigit) return false;
    out = value;
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
