#include <MRCommon/frames/detail/FrameName.h>

#include <MRCommon/text/detail/LeadingInteger.h>

#include <algorithm>
#include <string>

namespace quarn::detail {

namespace {

constexpr std::array<FrameLayout, 4> layouts = {{
    {".", false}, // FRAME_ORDER_NAME_DOT_FRAME_DOT_EXT
    {".", true},  // FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME
    {"", false},  // FRAME_ORDER_NAME_FRAME_DOT_EXT
    {"_", false}, // FRAME_ORDER_NAME_UNDERSCORE_FRAME_DOT_EXT
}};

unsigned int frameOf(std::string_view digits) {
    return static_cast<unsigned int>(leadingInteger(std::string(digits)));
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Cuts `text` at its last dot and returns what follows it. Without a dot, returns all of it and leaves
/// nothing.
std::string_view takeLastPiece(std::string_view& text) {
    std::size_t const dot = text.rfind('.');
    std::string_view const piece = dot == std::string_view::npos ? text : text.substr(dot + 1);
    text = text.substr(0, dot == std::string_view::npos ? 0 : dot);
    return piece;
}

/// Returns whether the last piece of a path is a frame. Intentional: a piece such as "12abc" is one. Tested
/// by FrameExtensionFromPath.AcceptsFilesWithoutNeighbours.
bool isFrame(std::string_view piece) {
    if (piece.empty()) return false;
    return std::all_of(piece.begin(), piece.end(), isDigit) || frameOf(piece) != 0;
}

/// Returns the digits at the end of a stem, at most ten; further digits remain part of the name.
std::string_view trailingDigits(std::string_view stem) {
    std::size_t count = 0;
    while (count < 10 && count < stem.size() && isDigit(stem[stem.size() - 1 - count])) ++count;
    return stem.substr(stem.size() - count);
}

} // namespace

FrameLayout const* layoutOf(FrameExtensionOrder order) noexcept {
    int const index = order;
    return index >= 0 && index < 4 ? &layouts[static_cast<std::size_t>(index)] : nullptr;
}

PrintedFrame::PrintedFrame(int frame, unsigned int padding) noexcept {
    // Neither std::to_chars nor std::to_string: their tables of digits are unique symbols, and a library with
    // one of those is never unloaded.
    char const* const end = text_.data() + text_.size();
    char* begin = text_.data() + text_.size();
    unsigned int rest = frame < 0 ? 0 - static_cast<unsigned int>(frame) : static_cast<unsigned int>(frame);
    do {
        *--begin = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    if (frame < 0) *--begin = '-';
    std::string_view const text(begin, static_cast<std::size_t>(end - begin));
    std::size_t const sign = frame < 0 ? 1 : 0;
    field_ = {text.substr(0, sign), padding > text.size() ? padding - text.size() : 0, text.substr(sign)};
}

void FrameNameParts::writeTo(char* out, FrameLayout const& layout) const noexcept {
    auto const put = [&out](std::string_view text) { out = std::copy(text.begin(), text.end(), out); };
    auto const putExtension = [&] {
        put(".");
        put(ext);
    };
    put(prefix);
    put(name);
    if (layout.frameLast) putExtension();
    put(layout.mark);
    put(frame.head);
    out = std::fill_n(out, frame.zeros, '0');
    put(frame.tail);
    if (!layout.frameLast) putExtension();
}

unsigned int ParsedFramePath::frame() const { return frameOf(digits); }

void ParsedFramePath::appendDigitsToName() noexcept {
    name = {name.data(), name.size() + digits.size()};
    digits = {};
}

ParsedFramePath parseFramePath(std::string_view path) {
    ParsedFramePath parsed;
    std::string_view stem = path;
    std::string_view const last = takeLastPiece(stem);
    if (isFrame(last)) {
        parsed.digits = last;
        parsed.ext = takeLastPiece(stem);
        parsed.name = stem;
        return parsed;
    }
    parsed.ext = last;
    parsed.digits = trailingDigits(stem);
    stem.remove_suffix(parsed.digits.size());
    parsed.name = stem;
    if (parsed.digits.empty()) return parsed;
    parsed.order = FRAME_ORDER_NAME_FRAME_DOT_EXT;
    for (FrameExtensionOrder const marked :
         {FRAME_ORDER_NAME_DOT_FRAME_DOT_EXT, FRAME_ORDER_NAME_UNDERSCORE_FRAME_DOT_EXT})
        if (!stem.empty() && stem.back() == layoutOf(marked)->mark[0]) {
            parsed.name.remove_suffix(1);
            parsed.order = marked;
        }
    return parsed;
}

} // namespace quarn::detail
