// Texts: what is escaped can be unescaped, what is split can be joined, what is printed is complete; tokenizing,
// looking up and durations agree with naive versions.
//     byte 0        limit of tokens; bytes 1, 2 length of the text to print; byte 3 the escape character
//     two pieces    delimiters, a text to look for
//     the rest      the text
#include "Input.h"

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/text/StringTokenizer.h>
#include <MRCommon/text/StringTools.h>

using namespace StringTools;
using Texts = std::vector<std::string>;

namespace {

std::string joined(Texts const& texts, std::string const& mark) {
    std::string all;
    for (std::string const& text : texts) all += text + mark;
    return all.substr(0, all.size() - (texts.empty() ? 0 : mark.size()));
}

void requireEscapes(std::string const& text, char mark, std::string const& wanted) {
    if (isAlphanumeric(mark)) return; // letters and digits are not escaped
    std::string const escaped = escape(text, mark);
    require(unescape(escaped, mark) == text, "what is escaped can be unescaped");
    for (char const c : wanted)
        require(isAlphanumeric(c) || c == mark || unescape_lookup(escaped, mark, c) == -1,
                "nothing special stands unescaped");
}

void requireUrl(std::string const& text) {
    std::string decoded;
    std::string const url = url_encode(text);
    for (std::size_t i = 0; i < url.size(); ++i) {
        bool const isCode = url[i] == '%';
        require(isCode || isAlphanumeric(url[i]), "a URL has plain characters alone");
        decoded += isCode ? static_cast<char>(std::stoi(url.substr(i + 1, 2), nullptr, 16)) : url[i];
        i += isCode ? 2 : 0;
    }
    require(decoded == text, "a URL can be decoded");
}

void requireSplitting(std::string const& text, std::string const& delimiters, int limit) {
    Texts const all = tokenize(text, delimiters, 0, false);
    for (std::string const& token : all) require(!token.empty(), "no token is empty");
    require(joined(all, "") == without(text, [&](char c) { return delimiters.find(c) != std::string::npos; }),
            "tokens are the text without delimiters");
    Texts const some = tokenize(text, delimiters, limit, false);
    Texts const quoted = tokenize(text, delimiters, limit, true);
    bool const hasQuotes = text.find_first_of("\"\\") != std::string::npos;
    require(hasQuotes || quoted == some, "quoting needs quotes");
    require(limit <= 0 || std::max(some.size(), quoted.size()) <= static_cast<std::size_t>(limit),
            "no more tokens than allowed");
    for (std::size_t i = 0; i + 1 < some.size(); ++i)
        require(some[i] == all[i], "a limit changes the last alone");
}

void requireTokenizer(std::string const& text, std::string const& delimiter) {
    StringTokenizer tokenizer(text, delimiter);
    std::string const stored = tokenizer.remainingString();
    unsigned int const count = tokenizer.countTokens();
    Texts tokens;
    while (tokenizer.hasMoreTokens()) tokens.push_back(tokenizer.nextToken());
    require(tokens.size() == count, "as many tokens as were counted");
    require(joined(tokens, delimiter) == stored, "tokens make up what was stored");
}

/// The tokenizer's rules, followed on a plain string.
class NaiveTokenizer {
public:
    NaiveTokenizer(std::string rest, std::string delimiter)
        : rest_(std::move(rest)), delimiter_(std::move(delimiter)) {}

    std::string const& rest() const { return rest_; }

    std::string next() { return next(delimiter_); }
    std::string next(std::string const& delimiter) {
        std::size_t const end = delimiter.empty() ? std::string::npos : rest_.find(delimiter);
        std::string const token = rest_.substr(0, end);
        rest_.erase(0, end == std::string::npos ? end : end + delimiter.size());
        return token;
    }
    std::string nextWithLimit(std::string const& limit) {
        std::string const all = rest_, token = next();
        std::size_t const end = token.find(limit);
        return end == std::string::npos ? all : token.substr(0, end);
    }

private:
    std::string rest_, delimiter_;
};

/// Makes the calls that the bytes of `calls` name, with the texts as delimiters, limits and filters.
void requireNaiveTokens(std::string const& text, std::string const& delimiter, std::string const& other,
                        std::string const& calls) {
    StringTokenizer tokenizer(text, delimiter);
    NaiveTokenizer naive(tokenizer.remainingString(), delimiter);
    for (char const call : calls) {
        require(tokenizer.remainingString() == naive.rest(), "what is left agrees");
        require(tokenizer.hasMoreTokens() == (tokenizer.countTokens() != 0), "a rest has tokens");
        switch (call & 7) {
        case 0: require(tokenizer.nextToken() == naive.next(), "the next token"); break;
        case 1:
            require(tokenizer.nextToken(other) == naive.next(other), "the token up to another mark");
            break;
        case 2: require(tokenizer.nextTokenWithLimit(other) == naive.nextWithLimit(other), "a limit"); break;
        case 3:
            require(tokenizer.filterNextToken(other) == replace_all(naive.next(), other, ""), "a filter");
            break;
        case 4:
            require(tokenizer.filterNextTokenWithLimit(other, delimiter) ==
                        replace_all(naive.nextWithLimit(other), delimiter, ""),
                    "a filter and a limit");
            break;
        case 5:
            require(tokenizer.nextIntToken() ==
                        static_cast<int>(std::strtoll(naive.next().c_str(), nullptr, 10)),
                    "an integer");
            break;
        case 6:
            require(tokenizer.nextIntTokenWithLimit(other) ==
                        static_cast<int>(std::strtoll(naive.nextWithLimit(other).c_str(), nullptr, 10)),
                    "an integer up to a limit");
            break;
        default: {
            double const expected = std::strtod(naive.next().c_str(), nullptr);
            double const number = tokenizer.nextFloatToken();
            require(number == expected || number != number, "a real number");
        }
        }
    }
}

unsigned int naiveMinutes(std::string const& text) {
    std::uint32_t minutes = 0, number = 0;
    for (char const c : text) {
        std::uint32_t const unit = c == 'w'               ? 7 * 24 * 60
                                   : c == 'd' || c == 'D' ? 24 * 60
                                   : c == 'h' || c == 'H' ? 60
                                                          : 0;
        minutes += number * unit;
        if (isDigit(c)) number = number * 10 + static_cast<std::uint32_t>(c - '0');
        if (unit != 0) number = 0;
    }
    return minutes + number;
}

int naiveLookup(std::string const& text, char mark, char wanted) {
    bool isEscaped = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isEscaped && text[i] == wanted) return static_cast<int>(i);
        isEscaped = !isEscaped && text[i] == mark;
    }
    return -1;
}

void requireNaive(std::string const& text, char mark, std::string const& wanted) {
    require(parseDuration(text) == naiveMinutes(text), "minutes are added up");
    for (char const c : wanted)
        require(unescape_lookup(text, mark, c) == naiveLookup(text, mark, c), "the first that is unescaped");
    require(removeNonAlphanumeric(text) == without(text, [](char c) { return !isAlphanumeric(c); }),
            "letters and digits remain");
    if (wanted.empty()) return;
    std::string replaced;
    for (std::size_t i = 0; i < text.size();)
        if (text.compare(i, wanted.size(), wanted) == 0) {
            replaced += '!';
            i += wanted.size();
        } else
            replaced += text[i++];
    require(replace_all(text, wanted, "!") == replaced, "every match is replaced");
}

void requirePieces(std::string const& visible, char separator) {
    quarn::Array<quarn::QN_String> pieces;
    Texts texts(quarn::QN_String(visible.c_str()).tokenize(separator, pieces));
    std::transform(pieces.begin(), pieces.end(), texts.begin(),
                   [](auto const& piece) { return piece.c_str(); });
    require(joined(texts, std::string(1, separator)) == visible, "the pieces make up the text");
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Input input(data, size);
    int const limit = input.number<signed char>();
    std::string const filler(input.number<unsigned short>() % 10000u, 'x');
    char const mark = input.number<char>();
    std::string const delimiters = input.piece();
    std::string const wanted = input.piece();
    std::string const text(input.rest());
    requireEscapes(text, mark, wanted);
    requireUrl(no_whitespace(text)); // whitespace of every kind becomes a plus sign
    requireSplitting(text, delimiters, limit);
    requireTokenizer(text, delimiters);
    requireTokenizer(text, wanted);
    requireNaiveTokens(text, delimiters, wanted, std::string(input.rest().substr(0, 16)));
    requireNaive(text, mark, wanted);
    requirePieces(text.c_str(), mark);
    require(format("%s|%d", filler.c_str(), 7) == filler + "|7", "printing is complete");
    require(replace_all(text, wanted, wanted) == text, "replacing by the same changes nothing");
    return 0;
}
