// StringTokenizer: hands out the pieces of a string one at a time, separated by a delimiter that is a whole
// string.
//     StringTools::StringTokenizer t("a::b::::c", "::");
//     t.nextToken();                    // "a"
//     t.remainingString();              // "b::c": runs of the delimiter count as one
// No errors are reported: once everything is handed out, every token is empty and every number 0; so is a
// tokenizer that was moved from. Going through a string takes time in proportion to its length. If memory is
// exhausted, std::bad_alloc is thrown and no token is lost. Tokenizers are not thread-safe: a token is handed
// out by changing the tokenizer.
#ifndef MRCOMMON_TEXT_STRINGTOKENIZER_H
#define MRCOMMON_TEXT_STRINGTOKENIZER_H

#include <MRCommon/Export.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace StringTools {

class MRCOMMON_API StringTokenizer {
public:
    /// Drops delimiters at both ends of the text and merges runs of them, so that the stored delimiter gives
    /// no empty token. If the delimiter is empty, there is not a single token.
    StringTokenizer(std::string const& text, std::string const& delimiter);

    ///@{
    /// Copies or moves the rest of the text and the delimiter. A moved-from tokenizer has no tokens.
    MRCOMMON_HIDDEN StringTokenizer(StringTokenizer const&) = default;
    StringTokenizer(StringTokenizer&& other) noexcept;
    MRCOMMON_HIDDEN StringTokenizer& operator=(StringTokenizer const&) = default;
    StringTokenizer& operator=(StringTokenizer&& other) noexcept;
    ///@}
    MRCOMMON_HIDDEN ~StringTokenizer() = default;

    [[nodiscard]] unsigned int countTokens() const noexcept; ///< tokens still to come
    [[nodiscard]] MRCOMMON_HIDDEN bool hasMoreTokens() const noexcept {
        return !rest().empty();
    } ///< countTokens() != 0
    [[nodiscard]] MRCOMMON_HIDDEN std::string remainingString() const {
        return std::string(rest());
    } ///< not handed out yet

    /// Returns the text before the next delimiter and continues after it.
    std::string nextToken();

    /// Does the same with another delimiter for this one call. Its runs are not merged, so tokens may be
    /// empty; if it is empty, the whole rest is handed out.
    std::string nextToken(std::string const& delimiter);

    ///@{
    /// Returns the next token as a number, by the standard conversions: leading blanks are skipped, the
    /// number ends at the first character that does not fit, and without a number 0 is returned. An integer
    /// saturates at 64 bits, and its low 32 bits are returned. The decimal point of a float is that of
    /// LC_NUMERIC, which a host leaves at "C" so that "0.5" is a half everywhere.
    int nextIntToken();
    double nextFloatToken();
    ///@}

    ///@{
    /// Returns the next token up to `limit`: with "=" the text "key=value;next", split at ";", gives "key"
    /// and leaves "next". Intentional: if the token does not contain the limit, the whole rest is returned,
    /// delimiters included, although only the token is consumed: "plain;next" gives "plain;next" and leaves
    /// "next". Tested by StringTokenizer.CutsAtALimit.
    std::string nextTokenWithLimit(std::string const& limit);
    int nextIntTokenWithLimit(std::string const& limit);
    ///@}

    ///@{
    /// Returns the next token without any `filter`. What a removal joins is not searched again: "ab" removed
    /// from "aabb" leaves "ab". An empty filter removes nothing.
    std::string filterNextToken(std::string const& filter);
    std::string filterNextTokenWithLimit(std::string const& limit, std::string const& filter);
    ///@}

private:
    MRCOMMON_HIDDEN std::string_view rest() const noexcept {
        return {text_.data() + position_, text_.size() - position_};
    }
    std::string_view nextPiece(std::string_view delimiter) const noexcept;
    void skipPiece(std::size_t length, std::size_t delimiterLength) noexcept;

    std::string text_; ///< what was handed out included
    std::string delimiter_;
    std::size_t position_ = 0; ///< where the rest begins in `text_`
};

} // namespace StringTools

#endif
