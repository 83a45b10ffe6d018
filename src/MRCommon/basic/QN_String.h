// QN_String: an owned string of 8-bit characters whose size counts its terminating NUL.
//     QN_String s("ab");                // size 3, capacity 3, length() 2
//     s.format("%d frames", 12);        // replaces the text; the buffer only ever grows here
// A default string holds one NUL (size 1). A string of size 0 is empty too, and everything here accepts it: a
// moved-from string, which has no buffer, a copy of such a string, and a string read from a file with length 0,
// which keeps the buffer that it had.
#ifndef MRCOMMON_BASIC_QN_STRING_H
#define MRCOMMON_BASIC_QN_STRING_H

#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/ArrayCore.h>
#include <MRCommon/Export.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

namespace quarn {

class MRCOMMON_API QN_String : public ArrayCore<char, char, char*, QN_NO, QN_NO, _Wa> {
public:
    MRCOMMON_HIDDEN QN_String() { setBytes("", 1); } ///< makes the empty string: one NUL
    /// Copies `text`, which is not null.
    MRCOMMON_HIDDEN QN_String(char const* text) {
        setBytes(text, detail::containerSize(std::strlen(text) + 1));
    }
    MRCOMMON_HIDDEN_COPIES(QN_String)

    /// Returns the text for C interfaces; an empty one if the bytes hold no terminator (a size of 0, a damaged
    /// record).
    MRCOMMON_HIDDEN char const* c_str() const noexcept { return length() < size() ? data() : ""; }

    /// Returns the characters before the first NUL, or all of them without a NUL. Valid until the string
    /// changes.
    MRCOMMON_HIDDEN std::string_view view() const noexcept { return {data(), length()}; }

    /// Returns the number of characters before the first NUL; the size without a NUL.
    MRCOMMON_HIDDEN unsigned int length() const noexcept;

    /// Prints into the string as printf does and returns the string. A buffer with room for the result is not
    /// reallocated. Arguments may point into the string itself. The string becomes empty if the arguments
    /// cannot be printed (an invalid wide character); exhausted memory throws std::bad_alloc.
    [[gnu::format(printf, 2, 3)]] MRCOMMON_HIDDEN QN_String& format(char const* format, ...);

    /// Splits at every `separator` into `out`, whose strings are used again; returns the number of tokens.
    ///     "a,b" at ','   "a" "b"          ",a" at ','   ""  "a"
    ///     "a,"  at ','   "a" ""           "ab" at ','   "ab"
    /// Separators past the first NUL do not split: the last token takes all bytes that are left, those past
    /// that NUL included. A NUL as separator gives one token, the whole string; so does a string of size 0 (a
    /// token of size 0). `out` may hold this very string. If memory runs out, std::bad_alloc is thrown; `out`
    /// then holds the tokens made so far, or is unchanged if it holds this string.
    MRCOMMON_HIDDEN unsigned int tokenize(char const& separator, Array<QN_String>& out) const;

private:
    MRCOMMON_HIDDEN void setBytes(char const* bytes, unsigned int count);
    MRCOMMON_HIDDEN static void append(Array<QN_String>& out, char const* bytes, unsigned int count);

    ///@{
    /// Compare the characters before the first NUL as unsigned bytes. No string is made of a `char const*`.
    MRCOMMON_HIDDEN friend bool operator==(QN_String const& a, QN_String const& b) noexcept {
        return a.view() == b.view();
    }
    MRCOMMON_HIDDEN friend bool operator!=(QN_String const& a, QN_String const& b) noexcept {
        return a.view() != b.view();
    }
    MRCOMMON_HIDDEN friend bool operator==(QN_String const& a, char const* b) noexcept {
        return a.view() == b;
    }
    MRCOMMON_HIDDEN friend bool operator!=(QN_String const& a, char const* b) noexcept {
        return a.view() != b;
    }
    MRCOMMON_HIDDEN friend bool operator<(QN_String const& a, QN_String const& b) noexcept {
        return a.view() < b.view();
    }
    ///@}
};

static_assert(sizeof(QN_String) == 16, "a buffer pointer and two 32-bit counts, nothing else");

// ---------------------------------------------------------------------------

namespace detail {

/// Prints as std::vsnprintf does and returns how many bytes the whole text takes, its NUL included; prints the
/// empty text if the arguments cannot be printed. Returns 0 if memory ran out. Keeps errno.
MRCOMMON_HIDDEN inline unsigned int print(char* out, std::size_t room, char const* format,
                                          std::va_list arguments) noexcept {
    int const before = std::exchange(errno, 0); // a success does not clear it
    int const length = std::vsnprintf(out, room, format, arguments);
    bool const exhausted = length < 0 && errno == ENOMEM;
    errno = before;
    if (exhausted) return 0;
    if (length < 0) *out = '\0';
    return length < 0 ? 1 : static_cast<unsigned int>(length) + 1;
}

} // namespace detail

inline unsigned int QN_String::length() const noexcept {
    if (empty()) return 0;
    void const* const end = std::memchr(data(), '\0', size());
    return end == nullptr ? size() : static_cast<unsigned int>(static_cast<char const*>(end) - data());
}

inline QN_String& QN_String::format(char const* format, ...) {
    // Printed into another buffer first, since an argument may be the string's own text. It is large, because
    // past its end the C library would go on counting at less than a tenth of its speed.
    std::array<char, 8192> local;
    ArrayCore longer;
    char* printed = local.data();
    std::size_t room = local.size();
    for (;;) {
        std::va_list arguments;
        va_start(arguments, format);
        unsigned int const needed = detail::print(printed, room, format, arguments);
        va_end(arguments);
        if (needed == 0) throw std::bad_alloc();
        if (needed <= room) {
            if (needed > capacity()) reserve(needed, true);
            std::memcpy(data(), printed, needed);
            setSize(needed);
            return *this;
        }
        longer.reserve(needed, false);
        printed = longer.data();
        room = needed; // an argument that changes meanwhile may need more still
    }
}

inline unsigned int QN_String::tokenize(char const& separator, Array<QN_String>& out) const {
    char const mark = separator;
    if (detail::isAmong<QN_String>(this, out.data(), out.capacity())) {
        // The tokens would overwrite the only copy of the text.
        Array<QN_String> tokens;
        tokenize(mark, tokens);
        out = std::move(tokens);
        return out.size();
    }
    QN_String text(*this); // the separators become terminators
    out.setSize(0);
    char* rest = text.data();
    unsigned int left = text.size();
    unsigned int visible = mark == '\0' ? 0 : text.length();
    while (visible > 0) {
        auto* const hit = static_cast<char*>(std::memchr(rest, mark, visible));
        if (hit == nullptr) break;
        *hit = '\0';
        auto const token = static_cast<unsigned int>(hit + 1 - rest);
        append(out, rest, token);
        rest += token;
        left -= token;
        visible -= token;
        if (left <= 1) { // the separator was the last character
            append(out, "", 1);
            return out.size();
        }
    }
    append(out, rest, left);
    return out.size();
}

inline void QN_String::setBytes(char const* bytes, unsigned int count) {
    reserve(count, false);
    std::copy(bytes, bytes + count, data());
    setSize(count);
}

inline void QN_String::append(Array<QN_String>& out, char const* bytes, unsigned int count) {
    out.slotForAppend().setBytes(bytes, count);
    out.setSize(out.size() + 1);
}

} // namespace quarn

#endif
