#include <MRCommon/text/StringTools.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>
#include <utility>

namespace StringTools {

namespace {

/// A set of bytes.
class CharacterSet {
public:
    constexpr explicit CharacterSet(std::string_view members) {
        for (char const c : members) has_[static_cast<unsigned char>(c)] = true;
    }
    constexpr bool operator()(char c) const { return has_[static_cast<unsigned char>(c)]; }

private:
    std::array<bool, 256> has_{};
};

constexpr CharacterSet isWhitespace(" \t\n\v\f\r");
constexpr CharacterSet isAlphanumeric("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789");

/// Returns the characters of `text` for which `keep` is true, in a string of exactly their number.
template <class Keep> std::string filtered(std::string const& text, Keep const& keep) {
    std::string result(static_cast<std::size_t>(std::count_if(text.begin(), text.end(), keep)), '\0');
    std::copy_if(text.begin(), text.end(), result.begin(), keep);
    return result;
}

/// The characters that represent a byte in a URL; the last element is their number.
using UrlCode = std::array<char, 4>;

constexpr std::array<UrlCode, 256> makeUrlCodes() {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::array<UrlCode, 256> codes{};
    for (unsigned int byte = 0; byte < codes.size(); ++byte) {
        char const c = static_cast<char>(byte);
        if (isAlphanumeric(c) || isWhitespace(c))
            codes[byte] = {isWhitespace(c) ? '+' : c, 0, 0, 1};
        else
            codes[byte] = {'%', digits[byte / 16], digits[byte % 16], 3};
    }
    return codes;
}

constexpr std::array<UrlCode, 256> urlCodes = makeUrlCodes();

UrlCode const& urlCode(char c) { return urlCodes[static_cast<unsigned char>(c)]; }

std::size_t urlLength(std::string const& text) {
    std::size_t length = 0;
    for (char const c : text) length += static_cast<std::size_t>(urlCode(c).back());
    return length;
}

/// Copies `text` to `out` up to the first `wanted` and returns the number of characters copied. Most pieces
/// are short: looking at 16 characters costs less than the two calls that a longer piece takes.
std::size_t copyUntil(char* out, std::string_view text, char wanted) {
    std::size_t const near = std::min<std::size_t>(text.size(), 16);
    for (std::size_t i = 0; i < near; ++i) {
        if (text[i] == wanted) return i;
        out[i] = text[i];
    }
    std::size_t const end = std::min(text.find(wanted, near), text.size());
    text.copy(out + near, end - near, near);
    return end;
}

/// Splits a string at single characters, one token at a time.
class Splitter {
public:
    Splitter(std::string const& text, std::string const& delimiters) : text_(text), isDelimiter_(delimiters) {
        skipDelimiters();
    }

    bool atEnd() const { return position_ == text_.size(); }
    std::string_view rest() const { return text_.substr(position_); }
    void skipDelimiters() {
        while (!atEnd() && isDelimiter_(text_[position_])) ++position_;
    }

    /// Appends the characters before the next delimiter, at least one, to `tokens`.
    void takePlain(std::vector<std::string>& tokens) {
        std::size_t const start = position_;
        while (!atEnd() && !isDelimiter_(text_[position_])) ++position_;
        tokens.emplace_back(text_.substr(start, position_ - start));
        if (!atEnd()) ++position_;
    }

    /// Does the same, interpreting quotes and backslashes, which may leave nothing.
    void takeQuoted(std::vector<std::string>& tokens) {
        std::string token = scanQuoted();
        if (!token.empty()) tokens.push_back(std::move(token));
    }

private:
    std::string scanQuoted() {
        std::string token;
        bool escaped = false;
        while (!atEnd()) {
            char const c = text_[position_++];
            if (isDelimiter_(c) && !insideQuotes_) return token;
            if (c == '"' && !escaped) {
                crossQuote();
                return token;
            }
            if (c == '\\' && !escaped) {
                escaped = true;
                continue;
            }
            // Before any other character a backslash is an ordinary character.
            if (escaped && c != '"' && c != '\\') token += '\\';
            token += c;
            escaped = false;
        }
        return token;
    }

    void crossQuote() {
        insideQuotes_ = !insideQuotes_;
        if (!insideQuotes_ && !atEnd() && isDelimiter_(text_[position_])) ++position_;
    }

    std::string_view text_;
    CharacterSet isDelimiter_;
    std::size_t position_ = 0;
    bool insideQuotes_ = false; // kept from token to token
};

/// Prints at most `size` bytes, the terminator included, and returns the length of the whole text; 0 if it
/// cannot be printed.
[[gnu::format(printf, 3, 0)]] std::size_t printInto(char* out, std::size_t size, char const* format,
                                                    std::va_list arguments) {
    auto const print = [&] {
        std::va_list copy;
        va_copy(copy, arguments);
        int const length = std::vsnprintf(out, size, format, copy);
        va_end(copy);
        return length;
    };
    int length = print();
    if (length < 0) {
        // errno may be older than this call: it was not cleared, since "%m" prints it.
        errno = 0;
        length = print();
        if (length < 0 && errno == ENOMEM) throw std::bad_alloc();
    }
    return length < 0 ? 0 : static_cast<std::size_t>(length);
}

/// Returns how many tokens may be split off before the rest becomes the last one.
std::size_t tokensBeforeRest(int limit) {
    if (limit == 0) return std::numeric_limits<std::size_t>::max();
    return limit < 2 ? 0 : static_cast<std::size_t>(limit) - 1;
}

} // namespace

std::string format(char const* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    try {
        std::string text = vformat(format, arguments);
        va_end(arguments);
        return text;
    } catch (...) {
        va_end(arguments);
        throw;
    }
}

std::string vformat(char const* format, std::va_list arguments) {
    std::array<char, 8192> local;
    std::size_t length = printInto(local.data(), local.size(), format, arguments);
    if (length < local.size()) return {local.data(), length};
    // An argument may change meanwhile (another thread, "%n"), so the length is only final once it fits.
    std::string text;
    do {
        text.resize(length);
        length = printInto(text.data(), text.size() + 1, format, arguments);
    } while (length > text.size());
    text.resize(length);
    return text;
}

std::string replace_all(std::string const& text, std::string const& from, std::string const& to) {
    std::string result = text;
    if (from.empty()) return result;
    std::string_view rest = text;
    std::size_t size = 0; // of what is written; there is always room for the rest
    while (rest.size() >= from.size()) {
        std::size_t const plain = copyUntil(&result[size], rest, from[0]);
        size += plain;
        rest.remove_prefix(plain);
        if (rest.empty()) break;
        if (rest.substr(0, from.size()) != from) {
            result[size++] = rest[0];
            rest.remove_prefix(1);
            continue;
        }
        rest.remove_prefix(from.size());
        std::size_t const needed = size + to.size() + rest.size();
        if (needed > result.size()) result.resize(std::max(needed, 2 * result.size()));
        to.copy(&result[size], to.size());
        size += to.size();
    }
    rest.copy(&result[size], rest.size());
    result.resize(size + rest.size());
    return result;
}

std::string no_whitespace(std::string const& text) {
    return filtered(text, [](char c) { return !isWhitespace(c); });
}

std::string removeNonAlphanumeric(std::string const& text) { return filtered(text, isAlphanumeric); }

std::vector<std::string> tokenize(std::string const& text, std::string const& delimiters, int limit,
                                  bool quoting) {
    std::vector<std::string> tokens;
    Splitter splitter(text, delimiters);
    std::size_t const most = tokensBeforeRest(limit);
    while (tokens.size() < most) {
        splitter.skipDelimiters(); // before each token, but not before the rest
        if (splitter.atEnd()) return tokens;
        if (quoting)
            splitter.takeQuoted(tokens);
        else
            splitter.takePlain(tokens);
    }
    if (!splitter.atEnd()) tokens.emplace_back(splitter.rest());
    return tokens;
}

unsigned int parseDuration(std::string const& text) noexcept {
    unsigned int total = 0;
    unsigned int number = 0;
    auto const take = [&](unsigned int minutesPerUnit) {
        total += std::exchange(number, 0) * minutesPerUnit;
    };
    for (char const c : text) {
        if (c >= '0' && c <= '9') number = number * 10 + static_cast<unsigned int>(c - '0');
        if (c == 'h' || c == 'H') take(60);
        if (c == 'd' || c == 'D') take(24 * 60);
        if (c == 'w') take(7 * 24 * 60); // intentional: an uppercase W is not a unit
    }
    return total + number;
}

std::string url_encode(std::string const& text) {
    // Encoded beside the result, which is thus allocated once, without being filled first.
    constexpr std::size_t blockSize = 256;
    std::array<char, 3 * blockSize + 1> block;
    auto const encoded = [&block](std::string_view piece) {
        char* out = block.data();
        for (char const c : piece) {
            UrlCode const& code = urlCode(c);
            std::memcpy(out, code.data(), code.size()); // the next code overwrites the surplus
            out += code.back();
        }
        return std::string_view(block.data(), static_cast<std::size_t>(out - block.data()));
    };
    if (text.size() <= blockSize) return std::string(encoded(text));
    std::string result;
    result.reserve(urlLength(text));
    for (std::size_t done = 0; done < text.size(); done += blockSize)
        result += encoded(std::string_view(text).substr(done, blockSize));
    return result;
}

std::string escape(std::string const& text, char escapeCharacter) {
    auto const letters = std::count_if(text.begin(), text.end(), isAlphanumeric);
    std::string result(2 * text.size() - static_cast<std::size_t>(letters), '\0');
    char* out = result.data();
    for (char const c : text) {
        *out = escapeCharacter; // overwritten if not needed
        out += isAlphanumeric(c) ? 0 : 1;
        *out++ = c;
    }
    return result;
}

std::string unescape(std::string const& text, char escapeCharacter) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == escapeCharacter) ++i;
        if (i == text.size()) {
            std::fputs("Found escape character at end of string\n", stderr);
            break;
        }
        result += text[i];
    }
    return result;
}

int unescape_lookup(std::string const& text, char escapeCharacter, char wanted) noexcept {
    std::size_t const end = std::min<std::size_t>(text.size(), std::numeric_limits<int>::max());
    for (std::size_t i = 0; i < end; ++i) {
        if (text[i] == wanted) return static_cast<int>(i);
        if (text[i] == escapeCharacter) ++i;
    }
    return -1;
}

} // namespace StringTools
