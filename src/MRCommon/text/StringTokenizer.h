// StringTokenizer: hands out the pieces of a text one at a time, separated by a delimiter that is a whole
// string.
//     StringTools::StringTokenizer t("a::b::::c", "::");
//     t.nextToken();                    // "a"
//     t.remainingString();              // "b::c": runs of the delimiter count as one
// Nothing is reported: once all is handed out, every token is empty and every number 0. Going through a whole
// text takes time in proportion to its length.
#ifndef MRCOMMON_TEXT_STRINGTOKENIZER_H
#define MRCOMMON_TEXT_STRINGTOKENIZER_H

#include <MRCommon/Export.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace StringTools {

class MRCOMMON_API StringTokenizer {
public:
    /// Delimiters at both ends of the text are dropped and runs of them become one, so that the stored
    /// delimiter gives no empty token. An empty delimiter disables the whole text.
    StringTokenizer(std::string const& text, std::string const& delimiter);

    unsigned int countTokens() const;                                   ///< tokens still to come
    bool hasMoreTokens() const { return !rest().empty(); }              ///< whether countTokens() is not 0
    std::string remainingString() const { return std::string(rest()); } ///< what is not handed out yet

    /// The text before the next delimiter; the tokenizer goes on behind it.
    std::string nextToken();

    /// The same with another delimiter for this one call. Its runs count singly, so tokens may be empty; an
    /// empty one hands out the whole rest.
    std::string nextToken(std::string const& delimiter);

    ///@{
    /// The next token as a number, by the standard conversions: blanks before it are skipped, it ends at the
    /// first character that does not fit, and 0 stands for none. Of an integer too long the low 32 bits
    /// count.
    int nextIntToken();
    double nextFloatToken();
    ///@}

    ///@{
    /// The next token up to `limit`: from "key=value;next" at ";" with "=" it gives "key" and leaves "next".
    /// Meant: where the token does not hold the limit, the whole rest is returned, delimiters and all, though
    /// only the token is taken: "plain;next" gives "plain;next" and leaves "next".
    std::string nextTokenWithLimit(std::string const& limit);
    int nextIntTokenWithLimit(std::string const& limit);
    ///@}

    ///@{
    /// The next token without any `filter`; what closes up behind a removal is not searched again ("ab" out
    /// of "aabb" leaves "ab"). An empty filter removes nothing.
    std::string filterNextToken(std::string const& filter);
    std::string filterNextTokenWithLimit(std::string const& limit, std::string const& filter);
    ///@}

private:
    std::string_view rest() const { return std::string_view(remaining_).substr(position_); }
    std::string_view nextPiece(std::string_view delimiter) const;
    void skipPiece(std::size_t length, std::size_t delimiterLength);

    std::string remaining_; ///< what is not handed out yet, behind at most as much that is
    std::string delimiter_;
    std::size_t position_ = 0; ///< where in `remaining_` the rest begins
};

} // namespace StringTools

#endif
