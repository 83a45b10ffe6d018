#include <MRCommon/frames/FileNameStitcher.h>

#include <MRCommon/frames/detail/FrameName.h>
#include <MRCommon/frames/detail/FrameProbe.h>
#include <MRCommon/frames/detail/FrameSearch.h>
#include <qn_fileio/qn_fileio.h>

#include <sys/types.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

using quarn::QN_String;
using quarn::detail::FrameField;
using quarn::detail::FrameLayout;
using quarn::detail::FrameNameParts;
using quarn::detail::FrameProbe;
using quarn::detail::layoutOf;
using quarn::detail::ParsedFramePath;
using quarn::detail::parseFramePath;
using quarn::detail::PrintedFrame;

namespace {

bool hasDot(QN_String const& path) { return path.view().find('.') != std::string_view::npos; }

QN_String toQnString(std::string_view text) { return {std::string(text).c_str()}; }

/// Returns the text up to its first NUL, as printf prints it.
std::string_view printedView(std::string const& text) { return text.c_str(); }

/// Returns how many bytes follow in a file. Returns the largest number if the file has no positions.
unsigned long long bytesLeft(std::FILE* file) {
    off_t const here = ftello(file);
    if (here < 0) return std::numeric_limits<unsigned long long>::max();
    off_t const end = fseeko(file, 0, SEEK_END) == 0 ? ftello(file) : 0;
    return fseeko(file, here, SEEK_SET) == 0 && end > here ? static_cast<unsigned long long>(end - here) : 0;
}

/// Reads `length` bytes from the current stream, block by block, so that a length that is too large does not
/// ask for memory at once. Returns false if there are fewer.
bool readText(std::string& text, std::size_t length) {
    constexpr std::size_t block = 65536;
    while (text.size() < length) {
        std::size_t const before = text.size();
        std::size_t const count = std::min(block, length - before);
        text.resize(before + count);
        if (ReadBuffer(&text[before], 1, count, nullptr) != count) return false;
    }
    return true;
}

struct FrameRange {
    unsigned int first, last;
};

/// Searches the disk for the frames around that of the path. Without any, digits that directly follow the
/// name become part of it, and the range is 0 to 0.
FrameRange findRange(ParsedFramePath& path) {
    if (path.digits.empty()) return {0, 0};
    FrameProbe probe(path.order, path.name, path.ext, path.padding());
    auto const exists = [&probe](unsigned int frame) { return probe.exists(frame); };
    unsigned int const known = path.frame();
    FrameRange const range{quarn::detail::firstFrame(known, exists),
                           quarn::detail::lastFrame(known, path.padding(), exists)};
    if (path.order != FRAME_ORDER_NAME_FRAME_DOT_EXT || range.last > range.first) return range;
    path.appendDigitsToName();
    return {0, 0};
}

} // namespace

FileNameStitcher& FileNameStitcher::instance() {
    static FileNameStitcher stitcher;
    return stitcher;
}

std::string FileNameStitcher::doIt(std::string const& name, int frame, std::string const& ext) const {
    constexpr std::string_view placeholder = "$(SCENENAME)";
    constexpr unsigned int widest = 65535;

    FrameLayout const* const layout = layoutOf(order);
    if (layout == nullptr) return {};
    std::string bareExt; // only an extension with a dot and a prefix with a placeholder are copied
    bool const hasDots = ext.find('.') != std::string::npos;
    if (hasDots) std::remove_copy(ext.begin(), ext.end(), std::back_inserter(bareExt), '.');
    std::string named;
    std::size_t const place = prefix.find(placeholder);
    if (place != std::string::npos) {
        named = prefix;
        named.replace(place, placeholder.size(), sceneName);
    }

    PrintedFrame const printed(frame, std::min(padding, widest));
    FrameNameParts const parts{printedView(place == std::string::npos ? prefix : named), printedView(name),
                               printed.field(), printedView(hasDots ? bareExt : ext)};
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

bool FileNameStitcher::loadChecked() {
    unsigned int length = 0;
    unsigned int width = 0;
    int layout = 0;
    std::string text;
    if (ReadUInt(&length, 1, nullptr) != 1 || length > bytesLeft(CurrentStream())) return false;
    if (!readText(text, length) || ReadUInt(&width, 1, nullptr) != 1 || ReadInt(&layout, 1, nullptr) != 1)
        return false;
    if (layoutOf(static_cast<FrameExtensionOrder>(layout)) == nullptr) return false;
    prefix = std::move(text);
    padding = width;
    order = static_cast<FrameExtensionOrder>(layout);
    return true;
}

void FileNameStitcher::setFormatStr(char* out, FrameExtensionOrder order, unsigned int padding) {
    FrameLayout const* const layout = layoutOf(order);
    if (layout == nullptr) return;
    PrintedFrame const printed(static_cast<int>(padding), 0); // as "%d" prints the padding
    std::array<char, 12> conversion;                          // "-2147483648d"
    char* const end = std::copy(printed.unpadded().begin(), printed.unpadded().end(), conversion.data());
    *end = 'd';
    FrameField const field{"%0", 0, {conversion.data(), printed.unpadded().size() + 1}};
    FrameNameParts parts{"", "%s", field, "%s"};
    FrameLayout const withoutFrame{"", false};
    bool const frameless = padding == 0 && !layout->frameLast;
    if (frameless) parts.frame = {};
    FrameLayout const& used = frameless ? withoutFrame : *layout;
    parts.writeTo(out, used);
    out[parts.sizeIn(used)] = '\0';
}

bool FileNameStitcher::frameExtensionFromPath(QN_String const& path, QN_String& name, QN_String& ext,
                                              unsigned int& minFrame, unsigned int& maxFrame,
                                              unsigned int& padding, FrameExtensionOrder& order) {
    order = FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME;
    if (!hasDot(path)) return false;
    ParsedFramePath parsed = parseFramePath(path.view());
    FrameRange const range = findRange(parsed);
    // All that may fail comes before the first output, which may be the path itself.
    QN_String parsedName = toQnString(parsed.name);
    QN_String parsedExt = toQnString(parsed.ext);
    minFrame = range.first;
    maxFrame = range.last;
    padding = parsed.padding();
    order = parsed.order;
    name = std::move(parsedName);
    ext = std::move(parsedExt);
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
    order = FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME;
    if (!hasDot(path)) return false;
    order = parseFramePath(path.view()).order; // no neighbour on the disk changes it
    return true;
}

unsigned int FileNameStitcher::findMinValue(FrameExtensionOrder order, QN_String const& name,
                                            QN_String const& ext, unsigned int padding, unsigned int known) {
    FrameProbe probe(order, name.view(), ext.view(), padding);
    return quarn::detail::firstFrame(known, [&](unsigned int frame) { return probe.exists(frame); });
}

unsigned int FileNameStitcher::findMaxValue(FrameExtensionOrder order, QN_String const& name,
                                            QN_String const& ext, unsigned int padding, unsigned int known) {
    FrameProbe probe(order, name.view(), ext.view(), padding);
    return quarn::detail::lastFrame(known, padding, [&](unsigned int frame) { return probe.exists(frame); });
}
