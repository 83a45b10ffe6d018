// Crc32: the CRC-32 of ISO-HDLC: reflected polynomial EDB88320, initial value and final XOR FFFFFFFF.
//     Crc32 crc;
//     crc.update("123456789", 9);
//     crc.value()                       // 0xCBF43926
// Eight bytes at a time, by eight tables ("slicing by 8", Kounavis and Berry, 2005).
#ifndef MRCOMMON_PROPERTIES_DETAIL_CRC32_H
#define MRCOMMON_PROPERTIES_DETAIL_CRC32_H

#include <array>
#include <cstddef>
#include <cstdint>

namespace quarn::detail {

/// Entry [k][b] is the effect of the byte b with k bytes after it.
constexpr std::array<std::array<std::uint32_t, 256>, 8> makeCrcTables() {
    std::array<std::array<std::uint32_t, 256>, 8> tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t crc = byte;
        for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320u : 0u);
        tables[0][byte] = crc;
    }
    for (std::size_t k = 1; k < tables.size(); ++k)
        for (std::size_t byte = 0; byte < 256; ++byte)
            tables[k][byte] = tables[k - 1][byte] >> 8 ^ tables[0][tables[k - 1][byte] & 0xFF];
    return tables;
}

constexpr auto crcTables = makeCrcTables();

class Crc32 {
public:
    void update(void const* data, std::size_t size) {
        auto const* bytes = static_cast<unsigned char const*>(data);
        for (; size >= 8; bytes += 8, size -= 8) {
            std::uint32_t const low = crc_ ^ (bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 8 |
                                              static_cast<std::uint32_t>(bytes[2]) << 16 |
                                              static_cast<std::uint32_t>(bytes[3]) << 24);
            crc_ = crcTables[7][low & 0xFF] ^ crcTables[6][low >> 8 & 0xFF] ^ crcTables[5][low >> 16 & 0xFF] ^
                   crcTables[4][low >> 24] ^ crcTables[3][bytes[4]] ^ crcTables[2][bytes[5]] ^
                   crcTables[1][bytes[6]] ^ crcTables[0][bytes[7]];
        }
        for (; size != 0; ++bytes, --size) crc_ = crc_ >> 8 ^ crcTables[0][(crc_ ^ *bytes) & 0xFF];
    }

    std::uint32_t value() const { return ~crc_; }

private:
    std::uint32_t crc_ = 0xFFFFFFFF;
};

} // namespace quarn::detail

#endif
