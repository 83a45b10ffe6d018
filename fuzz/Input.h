// Input: what a fuzz target is given, taken apart from the front; and how a target says what must hold.
//     Input input(data, size);
//     unsigned char const kind = input.number<unsigned char>();
//     std::string const text = input.piece();
// An input that is too short gives zeros and empty pieces.
#ifndef MRCOMMON_FUZZ_INPUT_H
#define MRCOMMON_FUZZ_INPUT_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

class Input {
public:
    Input(std::uint8_t const* data, std::size_t size) : rest_(reinterpret_cast<char const*>(data), size) {}

    template <class Number> Number number() {
        Number value = 0;
        std::string_view const bytes = take(sizeof value);
        if (!bytes.empty()) std::memcpy(&value, bytes.data(), bytes.size());
        return value;
    }

    /// A text whose length stands before it in one byte.
    std::string piece() { return std::string(take(number<unsigned char>())); }
    std::string_view rest() const { return rest_; }

private:
    std::string_view take(std::size_t count) {
        std::string_view const taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    std::string_view rest_;
};

/// Ends the program with the law that was broken, as the engine expects it.
inline void require(bool holds, char const* law) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", law);
    std::abort();
}

inline bool isDigit(char c) { return c >= '0' && c <= '9'; }
inline bool isAlphanumeric(char c) { return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// Without the characters that `unwanted` names.
template <class Unwanted> std::string without(std::string text, Unwanted const& unwanted) {
    text.erase(std::remove_if(text.begin(), text.end(), unwanted), text.end());
    return text;
}

#endif
