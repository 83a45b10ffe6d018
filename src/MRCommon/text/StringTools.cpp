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

/// Which bytes belong to a class of characters.
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

/// The characters of `text` for which `keep` holds, in a result of exactly their number.
template <class Keep> std::string filtered(std::string const& text, Keep const& keep) {
    std::string result(static_cast<std::size_t>(std::count_if(text.begin(), text.end(), keep)), '\0');
    std::copy_if(text.begin(), text.end(), result.begin(), keep);
    return result;
}

/// What a byte becomes in a URL.
struct UrlCode {
    std::array<char, 3> text;
    unsigned char length;
};

constexpr std::array<UrlCode, 256> makeUrlCodes() {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::array<UrlCode, 256> codes{};
    for (unsigned int byte = 0; byte < codes.size(); ++byte) {
        char const c = static_cast<char>(byte);
        if (isAlphanumeric(c) || isWhitespace(c))
            codes[byte] = {{isWhitespace(c) ? '+' : c, 0, 0}, 1};
        else
            codes[byte] = {{'%', digits[byte / 16], digits[byte % 16]}, 3};
    }
    return codes;
}

constexpr std::array<UrlCode, 256> urlCodes = makeUrlCodes();

UrlCode const& urlCode(char c) { return urlCodes[static_cast<unsigned char>(c)]; }

/// Takes a text apart at single characters, one token at a time.
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

    /// Appends the characters before the next delimiter to `tokens`, if there are any.
    void takePlain(std::vector<std::string>& tokens) {
        std::size_t const start = position_;
        while (!atEnd() && !isDelimiter_(text_[position_])) ++position_;
        if (position_ != start) tokens.emplace_back(text_.substr(start, position_ - start));
        if (!atEnd()) ++position_;
    }

    /// The same where quotes and backslashes count.
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
            // A backslash before anything but a quote or a backslash stands for itself.
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
    bool insideQuotes_ = false; // lives from token to token
};

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
    std::va_list again;
    va_copy(again, arguments);
    int const length = std::vsnprintf(local.data(), local.size(), format, again);
    va_end(again);
    if (length < 0) {
        if (errno == ENOMEM) throw std::bad_alloc();
        return {};
    }
    auto const size = static_cast<std::size_t>(length);
    if (size < local.size()) return {local.data(), size};
    std::string text(size, '\0'); // the terminator has its place behind the last character
    if (std::vsnprintf(text.data(), size + 1, format, arguments) != length) throw std::bad_alloc();
    return text;
}

std::string replace_all(std::string const& text, std::string const& from, std::string const& to) {
    std::size_t match = from.empty() ? std::string::npos : text.find(from);
    if (match == std::string::npos) return text;
    std::string result;
    result.reserve(text.size());
    std::size_t done = 0;
    for (; match != std::string::npos; match = text.find(from, done)) {
        result.append(text, done, match - done).append(to);
        done = match + from.size();
    }
    return result.append(text, done);
}

std::string no_whitespace(std::string const& text) {
    return filtered(text, [](char c) { return !isWhitespace(c); });
}

std::string removeNonAlphanumeric(std::string const& text) { return filtered(text, isAlphanumeric); }

std::vector<std::string> tokenize(std::string const& text, std::string const& delimiters, int limit,
                                  bool quoting) {
    std::vector<std::string> tokens;
    Splitter splitter(text, delimiters);
    // As many tokens as may be split off before the rest is handed out whole.
    std::size_t const most = limit == 0  ? std::numeric_limits<std::size_t>::max()
                             : limit < 2 ? 0
                                         : static_cast<std::size_t>(limit) - 1;
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

unsigned int parseDuration(std::string const& text) {
    unsigned int total = 0;
    unsigned int number = 0;
    auto const take = [&](unsigned int minutesPerUnit) {
        total += std::exchange(number, 0) * minutesPerUnit;
    };
    for (char const c : text) {
        if (c >= '0' && c <= '9') number = number * 10 + static_cast<unsigned int>(c - '0');
        if (c == 'h' || c == 'H') take(60);
        if (c == 'd' || c == 'D') take(24 * 60);
        if (c == 'w') take(7 * 24 * 60); // meant: a capital W is no unit
    }
    return total + number;
}

std::string url_encode(std::string const& text) {
    std::size_t length = 0;
    for (char const c : text) length += urlCode(c).length;
    // Whole codes are copied and the next one overlaps what was too much: two bytes of room for the last.
    std::string result(length + 2, '\0');
    char* out = result.data();
    for (char const c : text) {
        UrlCode const& code = urlCode(c);
        std::memcpy(out, code.text.data(), code.text.size());
        out += code.length;
    }
    result.resize(length);
    return result;
}

std::string escape(std::string const& text, char escapeCharacter) {
    auto const letters = std::count_if(text.begin(), text.end(), isAlphanumeric);
    std::string result(2 * text.size() - static_cast<std::size_t>(letters), '\0');
    char* out = result.data();
    for (char const c : text) {
        *out = escapeCharacter; // overwritten where none is needed
        out += isAlphanumeric(c) ? 0 : 1;
        *out++ = c;
    }
    return result;
}

std::string unescape(std::string const& text, char escapeCharacter) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == escapeCharacter && ++i == text.size()) {
            std::fputs("Found escape character at end of string\n", stderr);
            break;
        }
        result += text[i];
    }
    return result;
}

int unescape_lookup(std::string const& text, char escapeCharacter, char wanted) {
    std::size_t const end = std::min<std::size_t>(text.size(), std::numeric_limits<int>::max());
    for (std::size_t i = 0; i < end; i += text[i] == escapeCharacter ? 2 : 1)
        if (text[i] == wanted) return static_cast<int>(i);
    return -1;
}

} // namespace StringTools
