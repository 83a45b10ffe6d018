// FrameProbe: asks whether the files of single frames exist, readable or not.
//     FrameProbe probe(FRAME_ORDER_NAME_UNDERSCORE_FRAME_DOT_EXT, "/cache/fluid", "bin", 5);
//     probe.exists(12)                  // whether there is a /cache/fluid_00012.bin
// The first files are looked up by their paths. After dozens that exist, the folder is opened and the others are
// looked up in it; if hundreds seem to follow, it is read as well. The results are the same in each way.
#ifndef MRCOMMON_FRAMES_DETAIL_FRAMEPROBE_H
#define MRCOMMON_FRAMES_DETAIL_FRAMEPROBE_H

#include <MRCommon/frames/detail/FrameName.h>

#include <dirent.h>

#include <array>
#include <bitset>
#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

namespace quarn::detail {

/// An open folder, and the frames among those of its entries that were read.
class FrameFolder {
public:
    static constexpr unsigned int mostFrames = 65536; ///< from the first on; others are not noted

    /// Takes over an open folder. The files of frames are named `head`, the frame as printed with `padding`,
    /// `tail`; head and tail together are shorter than 1024 bytes.
    FrameFolder(DIR* stream, std::string_view head, std::string_view tail, unsigned int padding,
                unsigned int first) noexcept;
    FrameFolder(FrameFolder const&) = delete; // the views refer to the text
    FrameFolder& operator=(FrameFolder const&) = delete;

    int descriptor() const noexcept { return dirfd(stream_.get()); }

    /// Reads the next `count` entries and notes the regular files among them that are frames. Returns false at
    /// the end of the folder, or if it cannot be read.
    bool read(unsigned int count) noexcept;

    /// Returns whether the file of the frame was noted.
    bool contains(unsigned int frame) const noexcept {
        return frame - first_ < mostFrames && frames_[frame - first_];
    }

private:
    struct Close {
        void operator()(DIR* stream) const noexcept { closedir(stream); }
    };

    void note(std::string_view name) noexcept;

    std::unique_ptr<DIR, Close> stream_;
    std::array<char, 1024> text_; ///< head and tail
    std::string_view head_, tail_;
    unsigned int padding_;
    unsigned int first_;
    std::bitset<mostFrames> frames_; ///< by their distance from the first
};

class FrameProbe {
public:
    FrameProbe(FrameExtensionOrder order, std::string_view name, std::string_view ext,
               unsigned int padding) noexcept
        : layout_(layoutOf(order)), name_(name), ext_(ext), padding_(padding) {}

    /// Returns whether the file of the frame exists. A path of 1024 bytes or more counts as missing, since a
    /// truncated one would name another file; so does every file of an unknown order.
    bool exists(unsigned int frame) noexcept;

private:
    bool ask(unsigned int frame) noexcept;
    void openFolder(unsigned int frame) noexcept;
    unsigned int framesAhead(unsigned int frame) noexcept;

    FrameLayout const* layout_;
    std::string_view name_;
    std::string_view ext_;
    unsigned int padding_;

    std::array<char, 1024> path_; ///< the last one that was asked for
    unsigned int found_ = 0;
    std::optional<FrameFolder> folder_;
    std::size_t folderSize_ = 0;    ///< of every path, as long as the folder is open
    unsigned int worthReading_ = 0; ///< entries of the folder
};

} // namespace quarn::detail

#endif
