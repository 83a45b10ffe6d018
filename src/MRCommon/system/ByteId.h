// ByteId: a 16-byte identifier with two text forms, whose last eight bytes may count.
//     ByteId id("00112233-4455-6677-8899-AABBCCDDEEFF");
//     id.toString();                        // "00112233445566778899AABBCCDDEEFF"
//     id.incIdFromLast8BytesAsIdx64();      // the next one of a numbered run
// A malformed text gives the zero identifier; nothing is reported.
#ifndef MRCOMMON_SYSTEM_BYTEID_H
#define MRCOMMON_SYSTEM_BYTEID_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/basic/Tuple.h>
#include <MRCommon/Export.h>

#include <cstring>
#include <type_traits>

namespace quarn {

class MRCOMMON_API ByteId {
public:
    static unsigned int const BYTE_LENGTH = 16;
    using Bytes = TupleN<BYTE_LENGTH, unsigned char>;

    /// The number in the top three bits of byte 7, as far as `variant()` tells it apart.
    enum Variant : unsigned int {
        VARIANT_0 = 0,
        VARIANT_2 = 2,
        VARIANT_6 = 6,
        VARIANT_NONE = 0xFFFFFFFF ///< -1 as an int
    };

    ByteId() = default; ///< all bytes 0
    explicit ByteId(Bytes const& bytes) : bytes_(bytes) {}
    explicit ByteId(Variant const& variant); ///< its low three bits in byte 7, the rest 0

    /// Reads pairs of hexadecimal digits, capital or small, dashes anywhere. Bytes without a pair stay 0; an
    /// odd last digit and what follows the 32nd are not looked at. A pair that is none gives all 16 bytes 0.
    explicit ByteId(QN_String const& text);

    QN_String toString() const;     ///< 32 capital digits
    QN_String toUuidString() const; ///< the digits as 8-4-4-4-12

    /// The 32 digits of any 16 bytes into `out`, whose capacity becomes exactly 33. True.
    template <class Tuple> bool arrToHexStr(QN_String& out, Tuple const& bytes) const;

    /// One digit and its value. False, `out` untouched, for a value above 15 or a character that is no digit.
    bool byteToChar(char& out, unsigned char const& value) const;
    bool charToByte(unsigned char& out, char const& digit) const;

    bool isZero() const { return *this == ByteId(); }

    /// Meant: not the inverse of the constructor. Byte 7 below 0x20 gives VARIANT_NONE, below 0x40 VARIANT_0,
    /// below 0xC0 VARIANT_2, else VARIANT_6.
    Variant variant() const;

    unsigned long long last8BytesToUint64() const; ///< bytes 8 to 15, the first most significant
    unsigned long long toQN_INDEX64() const;       ///< the same without its top bit
    unsigned long long last8BytesToIdx64() const { return toQN_INDEX64(); }
    unsigned int last4BytesToUint32() const; ///< bytes 12 to 15
    unsigned int last4BytesToIdx32() const;  ///< the same without its top bit
    unsigned long long toUINT64() const;     ///< 0, whatever the bytes: meant, callers use the index views

    void setLast8BytesFromIdx64(unsigned long long const& index); ///< all 64 bits; bytes 0 to 7 stay

    /// Adds 1 to the index without its top bit, stores the sum in bytes 8 to 15 and returns it. So a set top
    /// bit is lost, and 0x7FFFFFFFFFFFFFFF becomes 0x8000000000000000.
    unsigned long long incIdFromLast8BytesAsIdx64();

    Bytes& array() { return bytes_; }
    Bytes const& getTuple() const { return bytes_; }
    unsigned int const& size() const { return BYTE_LENGTH; }

private:
    static void writeHex(QN_String& out, Bytes const& bytes);

    /// Bytes are unsigned, byte 0 counts most.
    int compare(ByteId const& other) const {
        return std::memcmp(bytes_.data(), other.bytes_.data(), BYTE_LENGTH);
    }

    friend bool operator==(ByteId const& a, ByteId const& b) { return a.compare(b) == 0; }
    friend bool operator!=(ByteId const& a, ByteId const& b) { return a.compare(b) != 0; }
    friend bool operator<(ByteId const& a, ByteId const& b) { return a.compare(b) < 0; }
    friend bool operator<=(ByteId const& a, ByteId const& b) { return a.compare(b) <= 0; }
    friend bool operator>(ByteId const& a, ByteId const& b) { return a.compare(b) > 0; }
    friend bool operator>=(ByteId const& a, ByteId const& b) { return a.compare(b) >= 0; }

    Bytes bytes_{};
};

static_assert(sizeof(ByteId) == 16 && std::is_trivially_copyable_v<ByteId>, "a copy costs 16 bytes");

// ---------------------------------------------------------------------------

template <class Tuple> bool ByteId::arrToHexStr(QN_String& out, Tuple const& bytes) const {
    Bytes copy;
    for (unsigned int i = 0; i < BYTE_LENGTH; ++i) copy[i] = bytes[i];
    writeHex(out, copy);
    return true;
}

} // namespace quarn

#endif
