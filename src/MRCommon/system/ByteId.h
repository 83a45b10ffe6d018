// ByteId: a 16-byte identifier with two text forms, whose last eight bytes can be used as a counter.
//     ByteId id("00112233-4455-6677-8899-AABBCCDDEEFF");
//     id.toString();                        // "00112233445566778899AABBCCDDEEFF"
//     id.incIdFromLast8BytesAsIdx64();      // the next one of a numbered run
// A malformed text gives the zero identifier; no errors are reported.
#ifndef MRCOMMON_SYSTEM_BYTEID_H
#define MRCOMMON_SYSTEM_BYTEID_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/basic/Tuple.h>
#include <MRCommon/Export.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace quarn {

class MRCOMMON_API ByteId {
public:
    static unsigned int const BYTE_LENGTH = 16;       ///< of every identifier
    using Bytes = TupleN<BYTE_LENGTH, unsigned char>; ///< what an identifier consists of

    /// The number in the top three bits of byte 7, as far as `variant()` distinguishes it.
    enum Variant : unsigned int {
        VARIANT_0 = 0,
        VARIANT_2 = 2,
        VARIANT_6 = 6,
        VARIANT_NONE = 0xFFFFFFFF ///< -1 as an int
    };

    MRCOMMON_HIDDEN ByteId() noexcept = default;                                    ///< all bytes 0
    MRCOMMON_HIDDEN explicit ByteId(Bytes const& bytes) noexcept : bytes_(bytes) {} ///< copies all 16
    explicit ByteId(Variant const& variant) noexcept; ///< its low three bits in byte 7, everything else 0

    /// Reads pairs of hexadecimal digits, uppercase or lowercase, with dashes anywhere. Bytes without a pair
    /// are 0; an odd last digit and everything after the 32nd digit is ignored. If a pair is malformed, all
    /// bytes are 0.
    explicit ByteId(QN_String const& text) noexcept;
    ByteId(std::nullptr_t) = delete; ///< neither nullptr nor 0, which would be a null `char const*`

    [[nodiscard]] QN_String toString() const;     ///< 32 uppercase digits
    [[nodiscard]] QN_String toUuidString() const; ///< the digits as 8-4-4-4-12

    /// Writes the 32 digits of any 16 bytes to `out`, whose capacity becomes exactly 33. Returns true.
    template <class Tuple> MRCOMMON_HIDDEN bool arrToHexStr(QN_String& out, Tuple const& bytes) const;

    ///@{
    /// Convert one digit and its value. Return false, leaving `out` unchanged, for a value above 15 or a
    /// character that is not a hexadecimal digit.
    bool byteToChar(char& out, unsigned char const& value) const noexcept;
    bool charToByte(unsigned char& out, char const& digit) const noexcept;
    ///@}

    MRCOMMON_HIDDEN bool isZero() const noexcept { return *this == ByteId(); } ///< whether all bytes are 0

    /// Returns VARIANT_NONE if byte 7 is below 0x20, VARIANT_0 below 0x40, VARIANT_2 below 0xC0, otherwise
    /// VARIANT_6. Intentional: that is not the inverse of the constructor. Tested by
    /// ByteId.HasCoarseVariants.
    Variant variant() const noexcept;

    unsigned long long last8BytesToUint64() const noexcept; ///< bytes 8 to 15, the first most significant
    unsigned long long toQN_INDEX64() const noexcept;       ///< the same without its top bit
    /// Returns what toQN_INDEX64() returns.
    MRCOMMON_HIDDEN unsigned long long last8BytesToIdx64() const noexcept { return toQN_INDEX64(); }
    unsigned int last4BytesToUint32() const noexcept; ///< bytes 12 to 15, the first most significant
    unsigned int last4BytesToIdx32() const noexcept;  ///< the same without its top bit

    /// Returns 0 for all bytes. Intentional: callers use the index views. Tested by
    /// ByteId.CountsInItsLastEightBytes.
    unsigned long long toUINT64() const noexcept;

    void setLast8BytesFromIdx64(unsigned long long const& index) noexcept; ///< all 64 bits; bytes 0 to 7 stay

    /// Adds 1 to the index without its top bit, stores the sum in bytes 8 to 15 and returns it. So a set top
    /// bit is lost, and 0x7FFFFFFFFFFFFFFF becomes 0x8000000000000000.
    unsigned long long incIdFromLast8BytesAsIdx64() noexcept;

    MRCOMMON_HIDDEN Bytes& array() noexcept { return bytes_; }                        ///< for writing
    MRCOMMON_HIDDEN Bytes const& getTuple() const noexcept { return bytes_; }         ///< for reading
    MRCOMMON_HIDDEN unsigned int const& size() const noexcept { return BYTE_LENGTH; } ///< 16

private:
    static void writeHex(QN_String& out, Bytes const& bytes);
    /// Returns eight bytes as a number, the first one most significant.
    MRCOMMON_HIDDEN unsigned long long numberAt(unsigned int first) const noexcept;
    MRCOMMON_HIDDEN bool isBefore(ByteId const& other) const noexcept;

    // Compared byte by byte from byte 0 on; bytes are unsigned.
    MRCOMMON_HIDDEN friend bool operator==(ByteId const& a, ByteId const& b) noexcept {
        return std::memcmp(a.bytes_.data(), b.bytes_.data(), BYTE_LENGTH) == 0;
    }
    MRCOMMON_HIDDEN friend bool operator!=(ByteId const& a, ByteId const& b) noexcept { return !(a == b); }
    MRCOMMON_HIDDEN friend bool operator<(ByteId const& a, ByteId const& b) noexcept { return a.isBefore(b); }
    MRCOMMON_HIDDEN friend bool operator<=(ByteId const& a, ByteId const& b) noexcept {
        return !b.isBefore(a);
    }
    MRCOMMON_HIDDEN friend bool operator>(ByteId const& a, ByteId const& b) noexcept { return b.isBefore(a); }
    MRCOMMON_HIDDEN friend bool operator>=(ByteId const& a, ByteId const& b) noexcept {
        return !a.isBefore(b);
    }

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

namespace detail {

/// Converts between a number and its bytes in memory, the most significant one first.
MRCOMMON_HIDDEN inline unsigned long long bigEndian(unsigned long long number) noexcept {
    return __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? __builtin_bswap64(number) : number;
}

} // namespace detail

inline unsigned long long ByteId::numberAt(unsigned int first) const noexcept {
    unsigned long long number;
    std::memcpy(&number, bytes_.data() + first, sizeof number);
    return detail::bigEndian(number);
}

inline bool ByteId::isBefore(ByteId const& other) const noexcept {
    unsigned long long const mine = numberAt(0);
    unsigned long long const others = other.numberAt(0);
    return mine != others ? mine < others : numberAt(8) < other.numberAt(8);
}

inline unsigned long long ByteId::last8BytesToUint64() const noexcept { return numberAt(8); }

inline unsigned long long ByteId::toQN_INDEX64() const noexcept { return numberAt(8) & 0x7FFFFFFFFFFFFFFF; }

inline unsigned int ByteId::last4BytesToUint32() const noexcept {
    return static_cast<unsigned int>(numberAt(8));
}

inline unsigned int ByteId::last4BytesToIdx32() const noexcept { return last4BytesToUint32() & 0x7FFFFFFF; }

inline void ByteId::setLast8BytesFromIdx64(unsigned long long const& index) noexcept {
    unsigned long long const number = detail::bigEndian(index);
    std::memcpy(bytes_.data() + 8, &number, sizeof number);
}

inline unsigned long long ByteId::incIdFromLast8BytesAsIdx64() noexcept {
    unsigned long long const next = toQN_INDEX64() + 1;
    setLast8BytesFromIdx64(next);
    return next;
}

} // namespace quarn

#endif
