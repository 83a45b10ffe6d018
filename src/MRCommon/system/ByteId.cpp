#include <MRCommon/system/ByteId.h>

#include <array>
#include <string_view>

namespace quarn {

namespace {

constexpr std::string_view digits = "0123456789ABCDEF";
constexpr unsigned char noDigit = 0xFF;
constexpr unsigned long long indexBits64 = 0x7FFFFFFFFFFFFFFF;
constexpr unsigned int indexBits32 = 0x7FFFFFFF;

/// Both digits of every byte.
constexpr std::array<std::array<char, 2>, 256> makePairs() {
    std::array<std::array<char, 2>, 256> pairs{};
    for (unsigned int byte = 0; byte < pairs.size(); ++byte)
        pairs[byte] = {digits[byte / 16], digits[byte % 16]};
    return pairs;
}

/// The value of every character as a digit.
constexpr std::array<unsigned char, 256> makeValues() {
    std::array<unsigned char, 256> values{};
    for (unsigned char& value : values) value = noDigit;
    for (unsigned char value = 0; value < 16; ++value) {
        auto const digit = static_cast<unsigned char>(digits[value]);
        values[digit] = value;
        if (value >= 10) values[digit + ('a' - 'A')] = value;
    }
    return values;
}

constexpr std::array<std::array<char, 2>, 256> pairs = makePairs();
constexpr std::array<unsigned char, 256> values = makeValues();

unsigned char valueOf(char digit) { return values[static_cast<unsigned char>(digit)]; }

void putPair(char* out, unsigned char byte) { std::memcpy(out, pairs[byte].data(), 2); }

/// All digits and the terminator.
void putDigits(char* out, ByteId::Bytes const& bytes) {
    for (unsigned char const byte : bytes.elements) {
        putPair(out, byte);
        out += 2;
    }
    *out = '\0';
}

template <class Integer> Integer fromBigEndian(unsigned char const* bytes) {
    Integer value = 0;
    for (unsigned int i = 0; i < sizeof value; ++i) value = value << 8 | bytes[i];
    return value;
}

/// Fills `bytes` from pairs of digits; false at a pair that is none.
bool readPairs(std::string_view text, ByteId::Bytes& bytes) {
    char const* next = text.data();
    char const* const end = next + text.size();
    auto const skipDashes = [&] {
        while (next != end && *next == '-') ++next;
        return next != end;
    };
    for (unsigned int i = 0; i < bytes.size(); ++i) {
        if (!skipDashes()) return true;
        unsigned int const high = valueOf(*next++);
        if (!skipDashes()) return true; // an odd digit is no pair
        unsigned int const low = valueOf(*next++);
        if ((high | low) > 15) return false;
        bytes[i] = static_cast<unsigned char>(high << 4 | low);
    }
    return true;
}

} // namespace

unsigned int const ByteId::BYTE_LENGTH;

ByteId::ByteId(Variant const& variant) {
    bytes_[7] = static_cast<unsigned char>(static_cast<unsigned int>(variant) << 5);
}

ByteId::ByteId(QN_String const& text) {
    if (!readPairs({text.data(), text.length()}, bytes_)) bytes_ = {};
}

QN_String ByteId::toString() const {
    std::array<char, 2 * BYTE_LENGTH + 1> text;
    putDigits(text.data(), bytes_);
    return {text.data()};
}

QN_String ByteId::toUuidString() const {
    constexpr std::array<unsigned char, BYTE_LENGTH> places = {0,  2,  4,  6,  9,  11, 14, 16,
                                                               19, 21, 24, 26, 28, 30, 32, 34};
    std::array<char, 37> text = {"........-....-....-....-............"};
    for (unsigned int i = 0; i < BYTE_LENGTH; ++i) putPair(text.data() + places[i], bytes_[i]);
    return {text.data()};
}

void ByteId::writeHex(QN_String& out, Bytes const& bytes) {
    out.reserve(2 * BYTE_LENGTH + 1, false);
    out.setSize(2 * BYTE_LENGTH + 1);
    putDigits(out.data(), bytes);
}

bool ByteId::byteToChar(char& out, unsigned char const& value) const {
    if (value > 15) return false;
    out = digits[value];
    return true;
}

bool ByteId::charToByte(unsigned char& out, char const& digit) const {
    unsigned char const value = valueOf(digit);
    if (value == noDigit) return false;
    out = value;
    return true;
}

ByteId::Variant ByteId::variant() const {
    unsigned char const byte = bytes_[7];
    if (byte < 0x20) return VARIANT_NONE;
    if (byte < 0x40) return VARIANT_0;
    return byte < 0xC0 ? VARIANT_2 : VARIANT_6;
}

unsigned long long ByteId::last8BytesToUint64() const {
    return fromBigEndian<unsigned long long>(bytes_.data() + 8);
}

unsigned long long ByteId::toQN_INDEX64() const { return last8BytesToUint64() & indexBits64; }

unsigned int ByteId::last4BytesToUint32() const { return fromBigEndian<unsigned int>(bytes_.data() + 12); }

unsigned int ByteId::last4BytesToIdx32() const { return last4BytesToUint32() & indexBits32; }

unsigned long long ByteId::toUINT64() const { return 0; }

void ByteId::setLast8BytesFromIdx64(unsigned long long const& index) {
    unsigned long long const value = index;
    for (unsigned int i = 0; i < 8; ++i) bytes_[8 + i] = static_cast<unsigned char>(value >> (56 - 8 * i));
}

unsigned long long ByteId::incIdFromLast8BytesAsIdx64() {
    unsigned long long const next = toQN_INDEX64() + 1;
    setLast8BytesFromIdx64(next);
    return next;
}

} // namespace quarn
