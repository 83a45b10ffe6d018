// FileNameStitcher: builds and parses the names of a sequence of files, one per frame.
//     FileNameStitcher& s = FileNameStitcher::instance();
//     s.prefix = "/cache/$(SCENENAME)/";
//     s.setSceneName("shot.scn");
//     s.doIt("fluid", 12, "bin");                            // "/cache/shot/fluid00012.bin"
//     s.frameExtensionFromPath(path, first, last, padding, order);
// docs/frame-names.md says how real names are parsed and what the search assumes about gaps. There is one
// stitcher in the process; its creation is thread-safe, nothing else is: use it from one thread or lock
// around it.
#ifndef MRCOMMON_FRAMES_FILENAMESTITCHER_H
#define MRCOMMON_FRAMES_FILENAMESTITCHER_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>

#include <string>

/// The order of name, frame and extension. The values are stored in files.
enum FrameExtensionOrder : int {
    FRAME_ORDER_NAME_DOT_FRAME_DOT_EXT = 0,       ///< fluid.00012.bin
    FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME = 1,       ///< fluid.bin.00012
    FRAME_ORDER_NAME_FRAME_DOT_EXT = 2,           ///< fluid00012.bin
    FRAME_ORDER_NAME_UNDERSCORE_FRAME_DOT_EXT = 3 ///< fluid_00012.bin
};

class MRCOMMON_API FileNameStitcher {
public:
    /// Returns the process-wide stitcher, created on first use and destroyed at exit.
    static FileNameStitcher& instance();
    FileNameStitcher(FileNameStitcher const&) = delete;
    FileNameStitcher& operator=(FileNameStitcher const&) = delete;

    std::string prefix;    ///< precedes every built name, with its own separator; may contain "$(SCENENAME)"
    std::string sceneName; ///< replaces the placeholder; never saved
    unsigned int padding = 5; ///< least number of characters of a frame, its sign included
    FrameExtensionOrder order = FRAME_ORDER_NAME_FRAME_DOT_EXT; ///< of the names that `doIt` builds

    /// Returns the file name of a frame: the prefix, with the scene name for its first placeholder, then
    /// name, frame and extension in the current order. With padding 5, frame -3 is "-0003"; a frame wider
    /// than the padding is printed in full. A padding above 65535 counts as 65535; an unknown order gives an
    /// empty string. Intentional: every dot of `ext` is dropped, so ".bin" is "bin" and "tar.gz" is "targz".
    /// Tested by FileNameStitcher.BuildsNames.
    [[nodiscard]] std::string doIt(std::string const& name, int frame, std::string const& ext) const;

    /// Stores the text up to its first dot.
    void setSceneName(std::string const& text);

    ///@{
    /// Write and read prefix, padding and order on the current stream of qn_fileio. Errors are not reported.
    /// Values that a record lacks stay as they were, but if even the prefix's length is missing, the prefix
    /// becomes empty. A prefix that is cut short has the length that the record states: after the bytes that
    /// were delivered come those of the previous prefix, then NULs. If that length cannot be allocated,
    /// std::bad_alloc is thrown and nothing changes.
    void save() const;
    void load();
    ///@}

    /// Reads what `save` writes, like `load`, but changes nothing unless all of it is there, the order is known,
    /// and a file that can be positioned has as many bytes left as the prefix's length states. Returns whether
    /// that is so; the stream is then after the record, otherwise anywhere in it. Memory is only used for bytes that
    /// the file delivers; if it is exhausted, std::bad_alloc is thrown and nothing changes.
    [[nodiscard]] bool loadChecked();

    /// Writes to `out` the printf format of a name: "%s_%04d.%s" for name, frame, extension; in the order
    /// NAME_DOT_EXT_DOT_FRAME "%s.%s.%04d" for name, extension, frame. 21 bytes are always enough. An unknown
    /// order writes nothing. Intentional: padding 0 gives "%s.%s", but "%s.%s.%00d" in the order
    /// NAME_DOT_EXT_DOT_FRAME. Tested by FileNameStitcher.WritesFormats.
    static void setFormatStr(char* out, FrameExtensionOrder order, unsigned int padding);

    ///@{
    /// Parses the path of an existing file and searches the disk for the first and last frame beside it.
    /// Returns false, setting only `order` (to NAME_DOT_EXT_DOT_FRAME), if the path contains no dot. A file
    /// without a frame number gives padding, first and last frame 0; so does one whose digits directly follow
    /// its name if neither an earlier nor a later frame was found ("take2.bin"). The outputs may be the path
    /// itself. If memory is exhausted, std::bad_alloc is thrown, and of the outputs at most `order` has been
    /// set.
    static bool frameExtensionFromPath(quarn::QN_String const& path, quarn::QN_String& name,
                                       quarn::QN_String& ext, unsigned int& minFrame, unsigned int& maxFrame,
                                       unsigned int& padding, FrameExtensionOrder& order);
    static bool frameExtensionFromPath(quarn::QN_String const& path, unsigned int& minFrame,
                                       unsigned int& maxFrame, unsigned int& padding,
                                       FrameExtensionOrder& order);
    ///@}

    /// Sets only the order, in the same way. It follows from the path, so the disk is not asked.
    static bool frameExtensionFromPath(quarn::QN_String const& path, FrameExtensionOrder& order);

    /// Returns the first frame on disk of the sequence that contains frame `known`, assuming no gap below it.
    /// Takes about log2(known) looks at the disk. A path of 1024 bytes or more, or an unknown order, counts
    /// as a missing file.
    [[nodiscard]] static unsigned int findMinValue(FrameExtensionOrder order, quarn::QN_String const& name,
                                                   quarn::QN_String const& ext, unsigned int padding,
                                                   unsigned int known);

    /// Returns the last frame on disk before the first gap above `known`. Looks for each frame on the way; if
    /// hundreds seem to follow, it reads the folder as well, as far as that may save time. Returns known - 1 if
    /// `known` fits the padding but is missing. Intentional: returns `known` if all frames up to the largest
    /// that fits the padding exist, and, without a look, if `known` does not fit itself. Tested by
    /// LastFrame.IsTheOneBeforeTheFirstGap.
    [[nodiscard]] static unsigned int findMaxValue(FrameExtensionOrder order, quarn::QN_String const& name,
                                                   quarn::QN_String const& ext, unsigned int padding,
                                                   unsigned int known);

private:
    FileNameStitcher() = default;
    ~FileNameStitcher() = default;
};

#endif
