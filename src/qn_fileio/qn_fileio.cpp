#include <qn_fileio/qn_fileio.h>

#include <array>

namespace {

using Bytes = std::array<unsigned char, 4>; // most significant first

std::FILE* currentStream = nullptr;

std::FILE* resolveStream(std::FILE* file) { return file == nullptr ? currentStream : file; }

Bytes toBytes(unsigned int value) {
    return {static_cast<unsigned char>(value >> 24), static_cast<unsigned char>(value >> 16),
            static_cast<unsigned char>(value >> 8), static_cast<unsigned char>(value)};
}

unsigned int fromBytes(Bytes const& bytes) {
    return static_cast<unsigned int>(bytes[0]) << 24 | static_cast<unsigned int>(bytes[1]) << 16 |
           static_cast<unsigned int>(bytes[2]) << 8 | bytes[3];
}

template <class Integer> unsigned long readIntegers(Integer* values, unsigned long count, std::FILE* file) {
    std::FILE* const stream = resolveStream(file);
    if (stream == nullptr) return 0;
    for (unsigned long i = 0; i < count; ++i) {
        Bytes bytes;
        if (std::fread(bytes.data(), bytes.size(), 1, stream) != 1) return i;
        values[i] = static_cast<Integer>(fromBytes(bytes));
    }
    return count;
}

template <class Integer>
unsigned long writeIntegers(Integer const* values, unsigned long count, std::FILE* file) {
    std::FILE* const stream = resolveStream(file);
    if (stream == nullptr) return 0;
    for (unsigned long i = 0; i < count; ++i) {
        Bytes const bytes = toBytes(static_cast<unsigned int>(values[i]));
        if (std::fwrite(bytes.data(), bytes.size(), 1, stream) != 1) return i;
    }
    return count;
}

} // namespace

unsigned long ReadUInt(unsigned int* values, unsigned long count, std::FILE* file) {
    return readIntegers(values, count, file);
}

unsigned long WriteUInt(unsigned int* values, unsigned long count, std::FILE* file) {
    return writeIntegers(values, count, file);
}

unsigned long ReadInt(int* values, unsigned long count, std::FILE* file) {
    return readIntegers(values, count, file);
}

unsigned long WriteInt(int* values, unsigned long count, std::FILE* file) {
    return writeIntegers(values, count, file);
}

unsigned long ReadBuffer(void* buffer, unsigned long elementSize, unsigned long count, std::FILE* file) {
    std::FILE* const stream = resolveStream(file);
    return stream == nullptr ? 0 : std::fread(buffer, elementSize, count, stream);
}

unsigned long WriteBuffer(void const* buffer, unsigned long elementSize, unsigned long count,
                          std::FILE* file) {
    std::FILE* const stream = resolveStream(file);
    return stream == nullptr ? 0 : std::fwrite(buffer, elementSize, count, stream);
}

void SetCurrentStream(std::FILE* file) { currentStream = file; }

std::FILE* CurrentStream() { return currentStream; }
