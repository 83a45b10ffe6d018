// StringTools: free functions over 8-bit texts: printing, replacing, splitting, escaping.
//     StringTools::format("%s_%03d", "dunes", 7)              "dunes_007"
//     StringTools::tokenize("a, b,,c", ", ", 0, false)        {"a", "b", "c"}
// Nothing depends on the locale: a letter or digit is an ASCII one, whitespace is blank, tab, line feed,
// vertical tab, form feed or carriage return. Arguments are never modified and no state is kept.
#ifndef MRCOMMON_TEXT_STRINGTOOLS_H
#define MRCOMMON_TEXT_STRINGTOOLS_H

#include <MRCommon/Export.h>

#include <cstdarg>
#include <string>
#include <vector>

namespace StringTools {

///@{
/// Prints as printf does. A result below 8192 characters is printed once, on the stack; a longer one twice.
/// What cannot be printed gives the empty text; exhausted memory throws std::bad_alloc.
[[gnu::format(printf, 1, 2)]] MRCOMMON_API std::string format(char const* format, ...);
[[gnu::format(printf, 1, 0)]] MRCOMMON_API std::string vformat(char const* format, std::va_list arguments);
///@}

/// Replaces every `from`, left to right; matches do not overlap and `to` is not searched again.
///     "aaa", "aa" by "b"   "ba"        an empty `from` changes nothing
MRCOMMON_API std::string replace_all(std::string const& text, std::string const& from, std::string const& to);

/// The text without its whitespace.
MRCOMMON_API std::string no_whitespace(std::string const& text);

/// The text's letters and digits alone.
MRCOMMON_API std::string removeNonAlphanumeric(std::string const& text);

/// Splits at every character of `delimiters`; there are no empty tokens. A `limit` above 1 allows so many
/// tokens, the last being the rest as it stands; 1 or a negative one gives the rest behind the leading
/// delimiters as the only token; 0 is no limit.
///     "a  b c" at " ", limit 2, without quoting   "a", " b c"
/// With `quoting`, a delimiter between double quotes does not split and a backslash stands before a quote or
/// a backslash that is meant as such. Meant, too: an opening quote ends the token before it (ab"cd ef" gives
/// ab and cd ef), delimiters right behind an opening quote are dropped, and so is a backslash that ends a
/// token.
MRCOMMON_API std::vector<std::string> tokenize(std::string const& text, std::string const& delimiters,
                                               int limit, bool quoting);

/// Minutes in a text such as "1w2d3h30": weeks, days, hours, and a trailing number of minutes. Other
/// characters are skipped without ending the number, so "90m" is 90. Meant: d and h may be capitals, w may
/// not ("1W" is 1). Sums wrap at 32 bits.
MRCOMMON_API unsigned int parseDuration(std::string const& text);

/// Letters and digits as they are, whitespace as "+", every other byte as "%" and two capital digits: "a b/"
/// gives "a+b%2F".
MRCOMMON_API std::string url_encode(std::string const& text);

/// Puts `escapeCharacter` before everything that is not a letter or digit, itself included.
MRCOMMON_API std::string escape(std::string const& text, char escapeCharacter);

/// Undoes `escape`. An escape character at the very end is dropped, with a line on the standard error stream.
MRCOMMON_API std::string unescape(std::string const& text, char escapeCharacter);

/// Index of the first `wanted` without an escape character before it, or -1. When both are the same character
/// the first one is found. Only the first 2^31 - 1 characters are looked at, as far as the result can tell.
MRCOMMON_API int unescape_lookup(std::string const& text, char escapeCharacter, char wanted);

} // namespace StringTools

#endif
