#include <MRCommon/text/StringTokenizer.h>

#include <MRCommon/text/detail/LeadingInteger.h>
#include <MRCommon/text/StringTools.h>

#include <cstdlib>
#include <utility>

namespace StringTools {

using quarn::detail::leadingInteger;

namespace {

/// Returns false only if no delimiter follows another directly: the first characters of two such delimiters
/// are a delimiter's length apart. Compares every such pair without a branch, so that the compiler vectorises
/// it.
bool mayContainRuns(std::string const& text, std::string const& delimiter) {
    int found = 0;
    char const first = delimiter[0];
    for (std::size_t i = 0, j = delimiter.size(); j < text.size(); ++i, ++j)
        found |= static_cast<int>(text[i] == first) & static_cast<int>(text[j] == first);
    return found != 0;
}

std::string withSingleDelimiters(std::string const& text, std::string const& delimiter) {
    if (!mayContainRuns(text, delimiter)) return text;
    std::string result;
    result.reserve(text.size());
    std::size_t done = 0;
    for (std::size_t hit = text.find(delimiter); hit != std::string::npos; hit = text.find(delimiter, done)) {
        std::size_t next = hit + delimiter.size();
        result.append(text, done, next - done);
        while (text.compare(next, delimiter.size(), delimiter) == 0) next += delimiter.size();
        done = next;
    }
    return result.append(text, done);
}

/// Returns the piece up to `limit`, or the whole rest, which begins with the piece, if that is not in the piece.
std::string_view upToLimit(std::string_view piece, std::string_view rest, std::string const& limit) {
    std::size_t const cut = piece.find(limit);
    return cut == std::string_view::npos ? rest : piece.substr(0, cut);
}

} // namespace

StringTokenizer::StringTokenizer(std::string const& text, std::string const& delimiter) {
    if (text.empty() || delimiter.empty()) return;
    delimiter_ = delimiter;
    text_ = withSingleDelimiters(text, delimiter);
    std::size_t const length = delimiter.size();
    if (text_.compare(0, length, delimiter) == 0) text_.erase(0, length);
    if (text_.size() >= length && text_.compare(text_.size() - length, length, delimiter) == 0)
        text_.resize(text_.size() - length);
}

StringTokenizer::StringTokenizer(StringTokenizer&& other) noexcept
    : text_(std::exchange(other.text_, {})), delimiter_(std::exchange(other.delimiter_, {})),
      position_(std::exchange(other.position_, 0)) {}

StringTokenizer& StringTokenizer::operator=(StringTokenizer&& other) noexcept {
    text_ = std::exchange(other.text_, {});
    delimiter_ = std::exchange(other.delimiter_, {});
    position_ = std::exchange(other.position_, 0);
    return *this;
}

unsigned int StringTokenizer::countTokens() const noexcept {
    if (!hasMoreTokens()) return 0;
    unsigned int count = 1;
    std::size_t hit = text_.find(delimiter_, position_);
    for (; hit != std::string::npos; hit = text_.find(delimiter_, hit + delimiter_.size())) ++count;
    return count;
}

std::string StringTokenizer::nextToken() { return nextToken(delimiter_); }

std::string StringTokenizer::nextToken(std::string const& delimiter) {
    std::string token(nextPiece(delimiter));
    skipPiece(token.size(), delimiter.size());
    return token;
}

int StringTokenizer::nextIntToken() { return static_cast<int>(leadingInteger(nextToken())); }

double StringTokenizer::nextFloatToken() { return std::strtod(nextToken().c_str(), nullptr); }

std::string StringTokenizer::nextTokenWithLimit(std::string const& limit) {
    std::string_view const piece = nextPiece(delimiter_);
    std::string token(upToLimit(piece, rest(), limit));
    skipPiece(piece.size(), delimiter_.size());
    return token;
}

int StringTokenizer::nextIntTokenWithLimit(std::string const& limit) {
    return static_cast<int>(leadingInteger(nextTokenWithLimit(limit)));
}

// The token is filtered before it is consumed, so that exhausted memory does not lose it.

std::string StringTokenizer::filterNextToken(std::string const& filter) {
    std::string_view const piece = nextPiece(delimiter_);
    std::string token = replace_all(std::string(piece), filter, "");
    skipPiece(piece.size(), delimiter_.size());
    return token;
}

std::string StringTokenizer::filterNextTokenWithLimit(std::string const& limit, std::string const& filter) {
    std::string_view const piece = nextPiece(delimiter_);
    std::string token = replace_all(std::string(upToLimit(piece, rest(), limit)), filter, "");
    skipPiece(piece.size(), delimiter_.size());
    return token;
}

/// Returns the rest up to the next delimiter; all of it without one.
std::string_view StringTokenizer::nextPiece(std::string_view delimiter) const noexcept {
    return rest().substr(0, delimiter.empty() ? std::string_view::npos : rest().find(delimiter));
}

void StringTokenizer::skipPiece(std::size_t length, std::size_t delimiterLength) noexcept {
    position_ = length == rest().size() ? text_.size() : position_ + length + delimiterLength;
}

} // namespace StringTools
