// Frame names: building agrees with printf, parsing takes apart what building put together, searching finds the ends.
//     byte 0       order; bytes 1, 2 padding; bytes 3 to 6 frame; bytes 7, 8 the length of the sequence
//     two pieces   name, extension
//     the rest     a path of any kind
#include "Input.h"

#include <MRCommon/frames/detail/FrameSearch.h>
#include <MRCommon/frames/FileNameStitcher.h>
#include <MRCommon/text/StringTools.h>

using quarn::QN_String;

namespace {

/// No file exists below it, whatever a name is made of.
constexpr char const* nowhere = "/no such folder/";

struct Parsed {
    QN_String name, ext;
    unsigned int first = 0, last = 0, padding = 0;
    FrameExtensionOrder order = FRAME_ORDER_NAME_DOT_FRAME_DOT_EXT;
    bool hasDot;

    explicit Parsed(std::string const& path)
        : hasDot(FileNameStitcher::frameExtensionFromPath(path.c_str(), name, ext, first, last, padding,
                                                          order)) {}
};

void requireBuildingAsPrintf(FileNameStitcher const& stitcher, std::string const& name, int frame,
                             std::string const& ext) {
    char format[32];
    FileNameStitcher::setFormatStr(format, stitcher.order, stitcher.padding);
    std::string const printed = stitcher.order == FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME
                                    ? StringTools::format(format, name.c_str(), ext.c_str(), frame)
                                    : StringTools::format(format, name.c_str(), frame, ext.c_str());
    require(stitcher.doIt(name, frame, ext) == printed, "names are built as printf prints them");
}

/// For names that say clearly where the frame stands, while no file exists.
void requireParsingOfBuilt(FileNameStitcher const& stitcher, std::string const& name, int frame,
                           std::string const& ext) {
    if (frame < 0 || stitcher.padding > 10 || ext.empty() || !isAlphanumeric(ext[0]) || isDigit(ext[0]))
        return;
    if (stitcher.order == FRAME_ORDER_NAME_FRAME_DOT_EXT) return;
    Parsed const parsed(stitcher.doIt(name, frame, ext));
    require(parsed.hasDot && parsed.name == name.c_str() && parsed.ext == ext.c_str() &&
                parsed.order == stitcher.order && parsed.first == static_cast<unsigned int>(frame) &&
                parsed.padding == std::max<std::size_t>(stitcher.padding, std::to_string(frame).size()),
            "a built name is taken apart into what it was built of");
}

void requireParsingOfAny(std::string const& path) {
    Parsed const parsed(path);
    require(parsed.hasDot == (path.find('.') != std::string::npos), "a path with a dot can be taken apart");
    if (parsed.hasDot && parsed.padding == 0)
        require(path == std::string(parsed.name.c_str()) + "." + parsed.ext.c_str(),
                "nothing of a path is lost");
}

void requireSearching(unsigned int first, unsigned int length, unsigned int known, unsigned int padding) {
    unsigned int const last = first + length;
    int questions = 0;
    auto const exists = [&](unsigned int frame) { return ++questions, first <= frame && frame <= last; };
    require(quarn::detail::firstFrame(known, exists) == first, "the first frame of a sequence without a gap");
    require(questions <= 33, "one question for each bit of the known frame, and one for frame 0");
    unsigned int const limit = quarn::detail::frameLimit(padding);
    bool const isBeyond = static_cast<int>(known) >= static_cast<int>(limit);
    bool const isFull = known < limit && last >= limit - 1;
    require(quarn::detail::lastFrame(known, padding, exists) == (isBeyond || isFull ? known : last),
            "the last frame, or the known one where the padding allows no more");
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Input input(data, size);
    auto& stitcher = FileNameStitcher::instance();
    stitcher.order = static_cast<FrameExtensionOrder>(input.number<unsigned char>() % 4);
    stitcher.padding = input.number<unsigned short>();
    int const frame = input.number<int>();
    unsigned int const length = input.number<unsigned short>() % 4096u;
    std::string const name = nowhere + without(input.piece(), [](char c) { return c == '\0'; });
    std::string const ext = without(input.piece(), [](char c) { return c == '\0' || c == '.'; });
    if (stitcher.padding == 0) stitcher.padding = 1; // without a padding the format has no frame
    requireBuildingAsPrintf(stitcher, name, frame, ext);
    stitcher.padding = stitcher.padding % 12 + 1;
    requireParsingOfBuilt(stitcher, name, frame, ext);
    requireParsingOfAny(nowhere + without(std::string(input.rest()), [](char c) { return c == '\0'; }));

    unsigned int const first = static_cast<unsigned int>(frame) & 0x7FFFFFFF;
    unsigned int const known = first + (length == 0 ? 0 : stitcher.padding * 97 % length);
    requireSearching(first, length, known, stitcher.padding);
    return 0;
}
