// FileNameStitcher: how the files of a sequence, one per frame, are named; names are put together and taken
// apart.
//     FileNameStitcher& s = FileNameStitcher::instance();
//     s.prefix = "/cache/$(SCENENAME)/";
//     s.setSceneName("shot.scn");
//     s.doIt("fluid", 12, "bin");                            // "/cache/shot/fluid00012.bin"
//     s.frameExtensionFromPath(path, first, last, padding, order);
// docs/frame-names.md tells what parsing makes of real names and what the search assumes about gaps. There is
// one stitcher for the process; only its making is guarded, so keep to one thread or lock around it.
#ifndef MRCOMMON_FRAMES_FILENAMESTITCHER_H
#define MRCOMMON_FRAMES_FILENAMESTITCHER_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>

#include <string>

/// Where the frame stands in a name. The values are stored in files.
enum FrameExtensionOrder : int {
    FRAME_ORDER_NAME_DOT_FRAME_DOT_EXT = 0,       ///< fluid.00012.bin
    FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME = 1,       ///< fluid.bin.00012
    FRAME_ORDER_NAME_FRAME_DOT_EXT = 2,           ///< fluid00012.bin
    FRAME_ORDER_NAME_UNDERSCORE_FRAME_DOT_EXT = 3 ///< fluid_00012.bin
};

class MRCOMMON_API FileNameStitcher {
public:
    /// The process's stitcher: made on first use, gone at exit.
    static FileNameStitcher& instance();
    FileNameStitcher(FileNameStitcher const&) = delete;
    FileNameStitcher& operator=(FileNameStitcher const&) = delete;

    std::string prefix;       ///< before every built name, with its own separator; may hold "$(SCENENAME)"
    std::string sceneName;    ///< stands for the placeholder; never saved
    unsigned int padding = 5; ///< least number of characters of a frame, its sign included
    FrameExtensionOrder order = FRAME_ORDER_NAME_FRAME_DOT_EXT; ///< where the frame stands

    /// The file name of a frame: prefix, with the scene name for its first placeholder, then name, frame and
    /// extension in the current order. Every dot of `ext` is dropped (".bin" is "bin", and, as it is meant,
    /// "tar.gz" is "targz"). With padding 5 frame -3 is "-0003"; a frame wider than the padding is printed in
    /// full. A padding above 65535 counts as 65535; an unknown order gives the empty text.
    std::string doIt(std::string const& name, int frame, std::string const& ext) const;

    /// Stores the text up to its first dot.
    void setSceneName(std::string const& text);

    ///@{
    /// Prefix, padding and order to and from the current stream of qn_fileio. A record that is not there
    /// gives an empty prefix and leaves the other two as they were.
    void save() const;
    void load();
    ///@}

    /// Writes into `out` the printf format of a name: "%s_%04d.%s" for name, frame, extension; in the order
    /// NAME_DOT_EXT_DOT_FRAME "%s.%s.%04d" for name, extension, frame. The caller provides room: 21 bytes do.
    /// Padding 0 gives "%s.%s", but, as it is meant, "%s.%s.%00d" for that one order. An unknown order writes
    /// nothing.
    static void setFormatStr(char* out, FrameExtensionOrder order, unsigned int padding);

    ///@{
    /// Takes the path of an existing file apart and looks for the first and last frame beside it. False, with
    /// `order` alone set (to NAME_DOT_EXT_DOT_FRAME), when the path holds no dot. A file without a frame
    /// number gives padding, first and last frame 0; so does one whose digits stand right at its name while
    /// no later frame exists ("take2.bin"). The outputs may be the path itself.
    static bool frameExtensionFromPath(quarn::QN_String const& path, quarn::QN_String& name,
                                       quarn::QN_String& ext, unsigned int& minFrame, unsigned int& maxFrame,
                                       unsigned int& padding, FrameExtensionOrder& order);
    static bool frameExtensionFromPath(quarn::QN_String const& path, unsigned int& minFrame,
                                       unsigned int& maxFrame, unsigned int& padding,
                                       FrameExtensionOrder& order);
    static bool frameExtensionFromPath(quarn::QN_String const& path, FrameExtensionOrder& order);
    ///@}

    /// The first frame on disk of the sequence that holds frame `known`, taken to be without a gap up to
    /// there: about log2(known) looks at the disk. A path of 1024 bytes or more, or an unknown order, is a
    /// file that does not exist.
    static unsigned int findMinValue(FrameExtensionOrder order, quarn::QN_String const& name,
                                     quarn::QN_String const& ext, unsigned int padding, unsigned int known);

    /// The last frame on disk before the first gap above `known`: one look for each frame on the way. Gives
    /// known - 1 when `known` is missing. Meant: gives `known`, not the largest frame that fits the padding,
    /// when all up to that one exist.
    static unsigned int findMaxValue(FrameExtensionOrder order, quarn::QN_String const& name,
                                     quarn::QN_String const& ext, unsigned int padding, unsigned int known);

private:
    FileNameStitcher() = default;
    ~FileNameStitcher() = default;
};

#endif
