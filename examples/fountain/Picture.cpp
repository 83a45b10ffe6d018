#include "Picture.h"

#include "RecordFile.h"

#include <array>
#include <cmath>
#include <cstdint>

namespace {

using Bytes = std::string;

void append32(Bytes& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
}

/// Returns the checksum that ends every chunk (ISO 3309).
std::uint32_t crc32(Bytes const& bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (char const byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

Bytes chunk(char const* type, Bytes const& content) {
    Bytes bytes;
    append32(bytes, static_cast<std::uint32_t>(content.size()));
    Bytes const checked = type + content;
    bytes += checked;
    append32(bytes, crc32(checked));
    return bytes;
}

/// Returns the zlib form of bytes without compression: stored blocks and the Adler-32 sum (RFC 1950, RFC 1951).
Bytes stored(Bytes const& content) {
    constexpr std::size_t most = 65535;
    Bytes bytes("\x78\x01", 2);
    std::uint32_t a = 1, b = 0;
    for (char const byte : content) {
        a = (a + static_cast<unsigned char>(byte)) % 65521;
        b = (b + a) % 65521;
    }
    for (std::size_t from = 0; from < content.size(); from += most) {
        Bytes const block = content.substr(from, most);
        std::size_t const size = block.size();
        bytes += from + most >= content.size() ? '\1' : '\0';
        for (std::size_t const n : {size, ~size}) {
            bytes += static_cast<char>(n);
            bytes += static_cast<char>(n >> 8);
        }
        bytes += block;
    }
    append32(bytes, b << 16 | a);
    return bytes;
}

char compressed(double light) {
    return static_cast<char>(std::lround(255 * std::pow(1 - std::exp(-light), 1 / 2.2)));
}

} // namespace

Picture::Picture(int width, int height)
    : width_(width), height_(height),
      pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
    for (Light& pixel : pixels_) pixel = {0, 0, 0};
}

void Picture::place(Picture const& other, int left, int top) {
    for (int y = 0; y < other.height(); ++y)
        for (int x = 0; x < other.width(); ++x) at(left + x, top + y) = other.at(x, y);
}

void Picture::savePng(std::string const& path) const {
    Bytes rows;
    for (int y = 0; y < height_; ++y) {
        rows += '\0'; // each row unfiltered
        for (int x = 0; x < width_; ++x)
            for (int i = 0; i < 3; ++i) rows += compressed(at(x, y)[i]);
    }
    Bytes header;
    append32(header, static_cast<std::uint32_t>(width_));
    append32(header, static_cast<std::uint32_t>(height_));
    header += Bytes("\x08\x02\0\0\0", 5); // 8 bits, red green blue
    Bytes const png =
        "\x89PNG\r\n\x1a\n" + chunk("IHDR", header) + chunk("IDAT", stored(rows)) + chunk("IEND", "");
    writeWhole(path, [&](std::FILE* file) {
        return std::fwrite(png.data(), 1, png.size(), file) == png.size() && std::fflush(file) == 0;
    });
}
