// Texts: what is escaped can be unescaped, what is split can be joined, what is printed is complete.
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
    requirePieces(text.c_str(), mark);
    require(format("%s|%d", filler.c_str(), 7) == filler + "|7", "printing is complete");
    require(replace_all(text, wanted, wanted) == text, "replacing by the same changes nothing");
    return 0;
}
