// leadingInteger: the number at the beginning of a string, by the standard conversion.
//     leadingInteger(" -12abc")         -12
// Blanks and a sign before it are accepted. Returns 0 without a number; a number that does not fit 64
// bits saturates.
#ifndef MRCOMMON_TEXT_DETAIL_LEADINGINTEGER_H
#define MRCOMMON_TEXT_DETAIL_LEADINGINTEGER_H

#include <cstdlib>
#include <string>

namespace quarn::detail {

inline long long leadingInteger(std::string const& text) { return std::strtoll(text.c_str(), nullptr, 10); }

} // namespace quarn::detail

#endif
