// QN_String: owned 8-bit text whose size counts its terminating NUL.
//     QN_String s("ab");                // size 3, capacity 3, length() 2
//     s.format("%d frames", 12);        // replaces the text; the buffer only ever grows here
// A default string holds one NUL (size 1). A string of size 0 has no buffer at all: copying or reading a
// zero-length string gives one, a moved-from string is one, and everything here accepts it.
#ifndef MRCOMMON_BASIC_QN_STRING_H
#define MRCOMMON_BASIC_QN_STRING_H

#include <MRCommon/basic/Array.h>

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace quarn {

class MRCOMMON_API QN_String : public ArrayCore<char, char, char*, QN_NO, QN_NO, _Wa> {
public:
    MRCOMMON_HIDDEN QN_String() { setBytes("", 1); } ///< the empty text: one NUL
    /// A copy; `text` is not null.
    MRCOMMON_HIDDEN QN_String(char const* text) {
        setBytes(text, detail::containerSize(std::strlen(text) + 1));
    }
    MRCOMMON_HIDDEN_COPIES(QN_String)

    /// The text for C interfaces. An empty one where the bytes hold no terminator: a size of 0, a damaged
    /// record.
    MRCOMMON_HIDDEN char const* c_str() const { return length() < size() ? data() : ""; }

    /// Visible characters: those before the first NUL, never more than the size.
    MRCOMMON_HIDDEN unsigned int length() const;

    /// Prints into the string as printf does and returns the string. A buffer with room for the result is not
    /// reallocated. Arguments may point into the string itself. What cannot be printed gives the empty text;
    /// exhausted memory throws std::bad_alloc.
    [[gnu::format(printf, 2, 3)]] MRCOMMON_HIDDEN QN_String& format(char const* format, ...);

    /// Splits at every `separator` into `out`, whose slots are used again; returns the number of tokens.
    ///     "a,b" at ','   "a" "b"          ",a" at ','   ""  "a"
    ///     "a,"  at ','   "a" ""           "ab" at ','   "ab"
    /// A NUL as separator gives one token, the whole string; so does a string of size 0 (a token of size 0).
    /// `out` may hold this very string.
    MRCOMMON_HIDDEN unsigned int tokenize(char const& separator, Array<QN_String>& out) const;

private:
    MRCOMMON_HIDDEN std::string_view view() const { return {data(), length()}; }
    MRCOMMON_HIDDEN void setBytes(char const* bytes, unsigned int count);
    MRCOMMON_HIDDEN static void append(Array<QN_String>& out, char const* bytes, unsigned int count);

    // Compared by bytes, which are unsigned, up to the first NUL of each.
    MRCOMMON_HIDDEN friend bool operator==(QN_String const& a, QN_String const& b) {
        return a.view() == b.view();
    }
    MRCOMMON_HIDDEN friend bool operator!=(QN_String const& a, QN_String const& b) {
        return a.view() != b.view();
    }
    MRCOMMON_HIDDEN friend bool operator==(QN_String const& a, char const* b) {
        return a.view() == b;
    } // no string is made of b
    MRCOMMON_HIDDEN friend bool operator!=(QN_String const& a, char const* b) { return a.view() != b; }
    MRCOMMON_HIDDEN friend bool operator<(QN_String const& a, QN_String const& b) {
        return a.view() < b.view();
    }
};

static_assert(sizeof(QN_String) == 16, "a buffer pointer and two 32-bit counts, nothing else");

// ---------------------------------------------------------------------------

inline unsigned int QN_String::length() const {
    if (empty()) return 0;
    void const* const end = std::memchr(data(), '\0', size());
    return end == nullptr ? size() : static_cast<unsigned int>(static_cast<char const*>(end) - data());
}

inline QN_String& QN_String::format(char const* format, ...) {
    // Printed beside the string first, since an argument may be its own text.
    std::array<char, 1024> local;
    std::va_list arguments;
    va_start(arguments, format);
    int const length = std::vsnprintf(local.data(), local.size(), format, arguments);
    va_end(arguments);
    if (length < 0 && errno == ENOMEM) throw std::bad_alloc();

    unsigned int const needed = length < 0 ? 1 : static_cast<unsigned int>(length) + 1;
    if (length < 0) local[0] = '\0';
    if (needed <= local.size()) {
        if (needed > capacity()) reserve(needed, true);
        std::memcpy(data(), local.data(), needed);
        setSize(needed);
        return *this;
    }
    QN_String printed;
    printed.reserve(needed, false);
    va_start(arguments, format);
    int const again = std::vsnprintf(printed.data(), needed, format, arguments);
    va_end(arguments);
    if (again != length) throw std::bad_alloc();
    printed.setSize(needed);
    if (needed > capacity()) return *this = std::move(printed);
    std::memcpy(data(), printed.data(), needed);
    setSize(needed);
    return *this;
}

inline unsigned int QN_String::tokenize(char const& separator, Array<QN_String>& out) const {
    QN_String text(*this); // `out` may hold this string, and the separators become terminators
    char const mark = separator;
    out.setSize(0);
    char* rest = text.data();
    unsigned int left = text.size();
    unsigned int visible = mark == '\0' ? 0 : text.length();
    while (char* const hit = visible == 0 ? nullptr : static_cast<char*>(std::memchr(rest, mark, visible))) {
        auto const position = static_cast<unsigned int>(hit - rest);
        *hit = '\0';
        append(out, rest, position + 1);
        if (left - position <= 2) { // the separator was the last character
            append(out, "", 1);
            return out.size();
        }
        rest = hit + 1;
        left -= position + 1;
        visible -= position + 1;
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
