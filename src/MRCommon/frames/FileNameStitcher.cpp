#include <MRCommon/frames/FileNameStitcher.h>

#include <MRCommon/frames/detail/FrameSearch.h>
#include <MRCommon/text/detail/LeadingInteger.h>
#include <qn_fileio/qn_fileio.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

using quarn::QN_String;

namespace {

/// What distinguishes the four orders: the text before the frame, and whether the extension stands there too.
struct Layout {
    std::string_view mark;
    bool frameLast;
};

constexpr std::array<Layout, 4> layouts = {{
    {".", false}, // FRAME_ORDER_NAME_DOT_FRAME_DOT_EXT
    {".", true},  // FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME
    {"", false},  // FRAME_ORDER_NAME_FRAME_DOT_EXT
    {"_", false}, // FRAME_ORDER_NAME_UNDERSCORE_FRAME_DOT_EXT
}};

/// Null for a value that is none of the four, as a file or a caller may hold.
Layout const* layoutOf(FrameExtensionOrder order) {
    int const index = order;
    return index >= 0 && index < 4 ? &layouts[static_cast<std::size_t>(index)] : nullptr;
}

/// The frame's place in a name: a head, zeros, a tail.
struct FrameField {
    std::string_view head;
    std::size_t zeros;
    std::string_view tail;

    std::size_t size() const { return head.size() + zeros + tail.size(); }
};

/// A frame as "%0<padding>d" prints it.
class PrintedFrame {
public:
    PrintedFrame(int frame, unsigned int padding) {
        char const* const end = std::to_chars(text_.data(), text_.data() + text_.size(), frame).ptr;
        std::string_view const text(text_.data(), static_cast<std::size_t>(end - text_.data()));
        std::size_t const sign = frame < 0 ? 1 : 0;
        field_ = {text.substr(0, sign), padding > text.size() ? padding - text.size() : 0, text.substr(sign)};
    }
    PrintedFrame(PrintedFrame const&) = delete; // the field looks into the text
    PrintedFrame& operator=(PrintedFrame const&) = delete;

    FrameField const& field() const { return field_; }

private:
    std::array<char, 11> text_; // "-2147483648"
    FrameField field_;
};

/// The parts of a name, measured before they are written as so many bytes without a terminator.
struct NameParts {
    std::string_view prefix;
    std::string_view name;
    FrameField frame;
    std::string_view ext;

    std::size_t sizeIn(Layout const& layout) const {
        return prefix.size() + name.size() + layout.mark.size() + frame.size() + 1 + ext.size();
    }
    void writeTo(char* out, Layout const& layout) const;
};

char* put(char* out, std::string_view text) { return std::copy(text.begin(), text.end(), out); }

void NameParts::writeTo(char* out, Layout const& layout) const {
    out = put(put(out, prefix), name);
    if (layout.frameLast) out = put(put(out, "."), ext);
    out = put(put(out, layout.mark), frame.head);
    out = put(std::fill_n(out, frame.zeros, '0'), frame.tail);
    if (!layout.frameLast) put(put(out, "."), ext);
}

std::string_view viewOf(QN_String const& text) { return {text.data(), text.length()}; }

QN_String toQnString(std::string_view text) { return {std::string(text).c_str()}; }

/// Up to the first NUL, as a printed text ends.
std::string_view printedView(std::string const& text) { return text.c_str(); }

/// Tells whether a frame's file exists, readable or not. Paths are built in a fixed buffer; one that does not
/// fit is no file, since a path cut short would be the name of another.
class FrameProbe {
public:
    FrameProbe(FrameExtensionOrder order, std::string_view name, std::string_view ext, unsigned int padding)
        : layout_(layoutOf(order)), name_(name), ext_(ext), padding_(padding) {}

    bool operator()(unsigned int frame) const {
        if (layout_ == nullptr) return false;
        PrintedFrame const printed(static_cast<int>(frame), padding_);
        NameParts const parts{"", name_, printed.field(), ext_};
        std::array<char, 1024> path;
        std::size_t const size = parts.sizeIn(*layout_);
        if (size >= path.size()) return false;
        parts.writeTo(path.data(), *layout_);
        path[size] = '\0';
        return access(path.data(), F_OK) == 0;
    }

private:
    Layout const* layout_;
    std::string_view name_;
    std::string_view ext_;
    unsigned int padding_;
};

/// Of a number too long the low 32 bits count.
unsigned int frameOf(std::string_view digits) {
    return static_cast<unsigned int>(quarn::detail::leadingInteger(std::string(digits)));
}

/// What a path says about its sequence, before the disk is asked.
struct ParsedPath {
    std::string_view name;
    std::string_view ext;
    std::string_view digits; ///< the characters of the frame; empty where there is none
    FrameExtensionOrder order = FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME;

    unsigned int padding() const { return static_cast<unsigned int>(digits.size()); }

    /// Only where the digits stand right behind the name.
    void giveDigitsToName() {
        name = {name.data(), name.size() + digits.size()};
        digits = {};
    }
};

struct FrameRange {
    unsigned int first, last;
};

FrameRange rangeOnDisk(ParsedPath const& path) {
    FrameProbe const exists(path.order, path.name, path.ext, path.padding());
    unsigned int const known = frameOf(path.digits);
    return {quarn::detail::firstFrame(known, exists),
            quarn::detail::lastFrame(known, path.padding(), exists)};
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Cuts `text` at its last dot and returns what stands behind; all of it, leaving nothing, where there is no
/// dot.
std::string_view takeLastPiece(std::string_view& text) {
    std::size_t const dot = text.rfind('.');
    std::string_view const piece = dot == std::string_view::npos ? text : text.substr(dot + 1);
    text = text.substr(0, dot == std::string_view::npos ? 0 : dot);
    return piece;
}

/// Whether the last piece of a path is a frame. Meant: a piece such as "12abc" is one too.
bool isFrame(std::string_view piece) {
    if (piece.empty()) return false;
    return std::all_of(piece.begin(), piece.end(), isDigit) || frameOf(piece) != 0;
}

/// The digits at the end of a stem, ten at most; what stands before them stays part of the name.
std::string_view trailingDigits(std::string_view stem) {
    std::size_t count = 0;
    while (count < 10 && count < stem.size() && isDigit(stem[stem.size() - 1 - count])) ++count;
    return stem.substr(stem.size() - count);
}

/// Reads a path that holds at least one dot.
ParsedPath parse(std::string_view path) {
    ParsedPath parsed;
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

} // namespace

FileNameStitcher& FileNameStitcher::instance() {
    static FileNameStitcher stitcher;
    return stitcher;
}

std::string FileNameStitcher::doIt(std::string const& name, int frame, std::string const& ext) const {
    constexpr std::string_view placeholder = "$(SCENENAME)";
    constexpr unsigned int widest = 65535;

    Layout const* const layout = layoutOf(order);
    if (layout == nullptr) return {};
    std::string bareExt = ext;
    bareExt.erase(std::remove(bareExt.begin(), bareExt.end(), '.'), bareExt.end());
    std::string named; // most prefixes are printed as they stand
    std::size_t const place = prefix.find(placeholder);
    if (place != std::string::npos) (named = prefix).replace(place, placeholder.size(), sceneName);

    PrintedFrame const printed(frame, std::min(padding, widest));
    NameParts const parts{printedView(place == std::string::npos ? prefix : named), printedView(name),
                          printed.field(), printedView(bareExt)};
    std::string text(parts.sizeIn(*layout), '\0');
    parts.writeTo(text.data(), *layout);
    return text;
}

void FileNameStitcher::setSceneName(std::string const& text) { sceneName = text.substr(0, text.find('.')); }

// The record:
//   u32    length of the prefix      00 00 00 03
//   bytes  prefix, no terminator     61 62 2F
//   u32    padding                   00 00 00 05
//   i32    order                     00 00 00 02
void FileNameStitcher::save() const {
    auto length = static_cast<unsigned int>(prefix.size());
    unsigned int width = padding;
    int layout = order;
    WriteUInt(&length, 1, nullptr);
    WriteBuffer(prefix.data(), 1, length, nullptr);
    WriteUInt(&width, 1, nullptr);
    WriteInt(&layout, 1, nullptr);
}

void FileNameStitcher::load() {
    unsigned int length = 0;
    int layout = order;
    ReadUInt(&length, 1, nullptr);
    prefix.resize(length);
    ReadBuffer(prefix.data(), 1, length, nullptr);
    ReadUInt(&padding, 1, nullptr);
    ReadInt(&layout, 1, nullptr);
    order = static_cast<FrameExtensionOrder>(layout);
}

void FileNameStitcher::setFormatStr(char* out, FrameExtensionOrder order, unsigned int padding) {
    Layout const* const layout = layoutOf(order);
    if (layout == nullptr) return;
    std::string const width = std::to_string(static_cast<int>(padding)) + "d";
    NameParts parts{"", "%s", {"%0", 0, width}, "%s"};
    Layout const withoutFrame{"", false};
    bool const frameless = padding == 0 && !layout->frameLast;
    if (frameless) parts.frame = {};
    Layout const& used = frameless ? withoutFrame : *layout;
    parts.writeTo(out, used);
    out[parts.sizeIn(used)] = '\0';
}

bool FileNameStitcher::frameExtensionFromPath(QN_String const& path, QN_String& name, QN_String& ext,
                                              unsigned int& minFrame, unsigned int& maxFrame,
                                              unsigned int& padding, FrameExtensionOrder& order) {
    order = FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME;
    std::string const text(viewOf(path)); // the outputs may be the path itself
    if (text.find('.') == std::string::npos) return false;
    ParsedPath parsed = parse(text);
    FrameRange range{0, 0};
    if (!parsed.digits.empty()) range = rangeOnDisk(parsed);
    if (parsed.order == FRAME_ORDER_NAME_FRAME_DOT_EXT && range.last <= range.first) {
        range = {0, 0};
        parsed.giveDigitsToName();
    }
    name = toQnString(parsed.name);
    ext = toQnString(parsed.ext);
    minFrame = range.first;
    maxFrame = range.last;
    padding = parsed.padding();
    order = parsed.order;
    return true;
}

bool FileNameStitcher::frameExtensionFromPath(QN_String const& path, unsigned int& minFrame,
                                              unsigned int& maxFrame, unsigned int& padding,
                                              FrameExtensionOrder& order) {
    QN_String name;
    QN_String ext;
    return frameExtensionFromPath(path, name, ext, minFrame, maxFrame, padding, order);
}

bool FileNameStitcher::frameExtensionFromPath(QN_String const& path, FrameExtensionOrder& order) {
    unsigned int minFrame = 0;
    unsigned int maxFrame = 0;
    unsigned int padding = 0;
    return frameExtensionFromPath(path, minFrame, maxFrame, padding, order);
}

unsigned int FileNameStitcher::findMinValue(FrameExtensionOrder order, QN_String const& name,
                                            QN_String const& ext, unsigned int padding, unsigned int known) {
    return quarn::detail::firstFrame(known, FrameProbe(order, viewOf(name), viewOf(ext), padding));
}

unsigned int FileNameStitcher::findMaxValue(FrameExtensionOrder order, QN_String const& name,
                                            QN_String const& ext, unsigned int padding, unsigned int known) {
    return quarn::detail::lastFrame(known, padding, FrameProbe(order, viewOf(name), viewOf(ext), padding));
}
