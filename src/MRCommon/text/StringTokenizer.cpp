#include <MRCommon/text/StringTokenizer.h>

#include <MRCommon/text/detail/LeadingInteger.h>
#include <MRCommon/text/StringTools.h>

#include <cstdlib>

namespace StringTools {

using quarn::detail::leadingInteger;

namespace {

/// Whether two delimiters may stand in a row: their first characters then stand a delimiter's length apart.
/// Looks at every pair of such characters without a branch, many at a time.
bool mayHoldRuns(std::string const& text, std::string const& delimiter) {
    int found = 0;
    char const first = delimiter[0];
    for (std::size_t i = 0, j = delimiter.size(); j < text.size(); ++i, ++j)
        found |= static_cast<int>(text[i] == first) & static_cast<int>(text[j] == first);
    return found != 0;
}

std::string withSingleDelimiters(std::string const& text, std::string const& delimiter) {
    if (!mayHoldRuns(text, delimiter)) return text;
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

} // namespace

StringTokenizer::StringTokenizer(std::string const& text, std::string const& delimiter) {
    if (text.empty() || delimiter.empty()) return;
    delimiter_ = delimiter;
    remaining_ = withSingleDelimiters(text, delimiter);
    std::size_t const length = delimiter.size();
    if (remaining_.compare(0, length, delimiter) == 0) remaining_.erase(0, length);
    if (remaining_.size() >= length && remaining_.compare(remaining_.size() - length, length, delimiter) == 0)
        remaining_.resize(remaining_.size() - length);
}

unsigned int StringTokenizer::countTokens() const {
    if (!hasMoreTokens()) return 0;
    unsigned int count = 1;
    std::size_t hit = remaining_.find(delimiter_, position_);
    for (; hit != std::string::npos; hit = remaining_.find(delimiter_, hit + delimiter_.size())) ++count;
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
    std::size_t const cut = piece.find(limit);
    std::string token(cut == std::string_view::npos ? rest() : piece.substr(0, cut));
    skipPiece(piece.size(), delimiter_.size());
    return token;
}

int StringTokenizer::nextIntTokenWithLimit(std::string const& limit) {
    return static_cast<int>(leadingInteger(nextTokenWithLimit(limit)));
}

std::string StringTokenizer::filterNextToken(std::string const& filter) {
    return replace_all(nextToken(), filter, "");
}

std::string StringTokenizer::filterNextTokenWithLimit(std::string const& limit, std::string const& filter) {
    return replace_all(nextTokenWithLimit(limit), filter, "");
}

/// The rest up to the next delimiter, all of it where there is none.
std::string_view StringTokenizer::nextPiece(std::string_view delimiter) const {
    return rest().substr(0, delimiter.empty() ? std::string_view::npos : rest().find(delimiter));
}

void StringTokenizer::skipPiece(std::size_t length, std::size_t delimiterLength) {
    position_ = length == rest().size() ? remaining_.size() : position_ + length + delimiterLength;
    // What was handed out is cut off once it outweighs the rest, so each character moves a few times at most.
    if (position_ <= remaining_.size() / 2) return;
    remaining_.erase(0, position_);
    position_ = 0;
}

} // namespace StringTools
