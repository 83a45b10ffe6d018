// FrameName: how the name of one frame's file is built and parsed. Nothing here asks the disk.
//     parseFramePath("fluid_00012.bin")     // name "fluid", digits "00012", ext "bin", underscore order
#ifndef MRCOMMON_FRAMES_DETAIL_FRAMENAME_H
#define MRCOMMON_FRAMES_DETAIL_FRAMENAME_H

#include <MRCommon/frames/FileNameStitcher.h>

#include <array>
#include <cstddef>
#include <string_view>

namespace quarn::detail {

/// What distinguishes the four orders: the text before the frame, and whether the frame comes last.
struct FrameLayout {
    std::string_view mark;
    bool frameLast;
};

/// Returns null for an unknown order, which a file or a caller may contain.
FrameLayout const* layoutOf(FrameExtensionOrder order) noexcept;

/// The characters of a frame in a name: a head, zeros, a tail.
struct FrameField {
    std::string_view head;
    std::size_t zeros;
    std::string_view tail;

    std::size_t size() const noexcept { return head.size() + zeros + tail.size(); }
};

/// A frame as "%0<padding>d" prints it.
class PrintedFrame {
public:
    PrintedFrame(int frame, unsigned int padding) noexcept;
    PrintedFrame(PrintedFrame const&) = delete; // the field refers to the text
    PrintedFrame& operator=(PrintedFrame const&) = delete;

    FrameField const& field() const noexcept { return field_; }
    std::string_view unpadded() const noexcept {
        return {field_.head.data(), field_.head.size() + field_.tail.size()};
    }

private:
    std::array<char, 11> text_; // "-2147483648"
    FrameField field_;
};

/// The parts of a name. `writeTo` writes exactly `sizeIn` bytes, without a terminator.
struct FrameNameParts {
    std::string_view prefix;
    std::string_view name;
    FrameField frame;
    std::string_view ext;

    std::size_t sizeIn(FrameLayout const& layout) const noexcept {
        return prefix.size() + name.size() + layout.mark.size() + frame.size() + 1 + ext.size();
    }
    void writeTo(char* out, FrameLayout const& layout) const noexcept;
};

/// What a path says about its sequence before the disk is asked. Refers to the path's characters.
struct ParsedFramePath {
    std::string_view name;
    std::string_view ext;
    std::string_view
        digits; ///< the characters of the frame, a sign and blanks included; empty without a frame
    FrameExtensionOrder order = FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME;

    unsigned int padding() const noexcept { return static_cast<unsigned int>(digits.size()); }
    unsigned int frame() const; ///< the number saturates at 64 bits, and its low 32 bits are the frame

    /// Makes the digits part of the name. Precondition: they follow it directly.
    void appendDigitsToName() noexcept;
};

/// Parses a path. Precondition: it contains a dot.
ParsedFramePath parseFramePath(std::string_view path);

} // namespace quarn::detail

#endif
