// StringTools: free functions over 8-bit strings: printing, replacing, splitting, escaping.
//     StringTools::format("%s_%03d", "dunes", 7)              "dunes_007"
//     StringTools::tokenize("a, b,,c", ", ", 0, false)        {"a", "b", "c"}
// A letter or digit is an ASCII one and whitespace is space, tab, line feed, vertical tab, form feed or
// carriage return, in every locale. Only `format` and `vformat` depend on the locale: they print numbers with
// the decimal point of LC_NUMERIC, which a host leaves at "C" so that what it prints can be read again
// elsewhere. Arguments are never modified and no state is kept.
#ifndef MRCOMMON_TEXT_STRINGTOOLS_H
#define MRCOMMON_TEXT_STRINGTOOLS_H

#include <MRCommon/Export.h>

#include <cstdarg>
#include <string>
#include <vector>

namespace StringTools {

///@{
/// Prints as printf does. A result of fewer than 8192 characters is printed once, on the stack; a longer one
/// again, into the result. If the arguments cannot be printed, the result is empty; if memory is exhausted,
/// std::bad_alloc is thrown.
[[nodiscard, gnu::format(printf, 1, 2)]] MRCOMMON_API std::string format(char const* format, ...);
[[nodiscard, gnu::format(printf, 1, 0)]] MRCOMMON_API std::string vformat(char const* format,
                                                                          std::va_list arguments);
///@}

/// Replaces every `from`, left to right; matches do not overlap and `to` is not searched again.
///     "aaa", "aa" by "b"   "ba"        an empty `from` changes nothing
[[nodiscard]] MRCOMMON_API std::string replace_all(std::string const& text, std::string const& from,
                                                   std::string const& to);

/// Returns the text without its whitespace.
[[nodiscard]] MRCOMMON_API std::string no_whitespace(std::string const& text);

/// Returns only the letters and digits of the text.
[[nodiscard]] MRCOMMON_API std::string removeNonAlphanumeric(std::string const& text);

/// Splits at every character of `delimiters`; empty tokens are dropped. If `limit` is above 1, there are at
/// most `limit` tokens, and the last one is the unchanged rest. If it is 1 or negative, the only token is
/// everything after the leading delimiters. 0 means no limit.
///     "a  b c" at " ", limit 2, without quoting   "a", " b c"
/// With `quoting`, a delimiter between double quotes does not split, and a backslash before a double quote or
/// a backslash makes that an ordinary character. Intentional: an opening quote ends the token before it
/// (ab"cd ef" gives ab and cd ef), delimiters right after an opening quote are dropped, and so is a backslash
/// that ends a token. Tested by Tokenize.InterpretsQuotesAndBackslashes.
[[nodiscard]] MRCOMMON_API std::vector<std::string>
tokenize(std::string const& text, std::string const& delimiters, int limit, bool quoting);

/// Returns the minutes in a duration such as "1w2d3h30": weeks, days, hours and a trailing number of minutes.
/// Other characters are skipped without ending the number, so "90m" is 90. Sums wrap at 32 bits. Intentional:
/// d and h may be uppercase, w may not ("1W" is 1). Tested by ParseDuration.AddsUnits.
[[nodiscard]] MRCOMMON_API unsigned int parseDuration(std::string const& text) noexcept;

/// Copies letters and digits, and writes whitespace as "+" and every other byte as "%" with two uppercase
/// digits: "a b/" gives "a+b%2F".
[[nodiscard]] MRCOMMON_API std::string url_encode(std::string const& text);

/// Puts `escapeCharacter` before every character that is not a letter or digit, itself included.
[[nodiscard]] MRCOMMON_API std::string escape(std::string const& text, char escapeCharacter);

/// Undoes `escape`, unless the escape character is a letter or digit: `escape` then does not escape it ("ax"
/// with 'a' comes back as "x"). An escape character at the very end is dropped, and a line is printed to
/// stderr.
[[nodiscard]] MRCOMMON_API std::string unescape(std::string const& text, char escapeCharacter);

/// Returns the index of the first `wanted` that is not escaped, or -1. If both characters are the same, the
/// first one is found. An index above 2^31 - 1 is not found, since the result could not hold it.
[[nodiscard]] MRCOMMON_API int unescape_lookup(std::string const& text, char escapeCharacter,
                                               char wanted) noexcept;

} // namespace StringTools

#endif
