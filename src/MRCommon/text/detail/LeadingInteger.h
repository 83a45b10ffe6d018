// leadingInteger: the number that a text begins with, by the standard conversion.
//     leadingInteger(" -12abc")         -12
// Blanks before it and a sign are accepted, 0 stands for no number, and what 64 bits cannot hold saturates.
#ifndef MRCOMMON_TEXT_DETAIL_LEADINGINTEGER_H
#define MRCOMMON_TEXT_DETAIL_LEADINGINTEGER_H

#include <cstdlib>
#include <string>

namespace quarn::detail {

inline long long leadingInteger(std::string const& text) { return std::strtoll(text.c_str(), nullptr, 10); }

} // namespace quarn::detail

#endif
