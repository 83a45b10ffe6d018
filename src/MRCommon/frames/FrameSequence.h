// FrameSequence: the sequences of frames among many file names, with their gaps, versions and paddings.
//     FrameScan scan = scanFrames("/cache/shot");       // fluid.0001.exr fluid.0002.exr fluid.0005.exr notes.txt
//     FrameSequence const& s = scan.sequences[0];       // head "fluid.", tail ".exr", padding 4, ranges 1-2 5-5
//     s.missing();                                      // 3-4
//     s.fileName(5);                                    // "fluid.0005.exr"
//     scan.others;                                      // "notes.txt"
// The frame is the last piece between dots if that is all digits and something precedes its dot ("fluid.exr.0001"),
// else the digits right before the extension, else, in a name without a dot, the digits at its end. The extension is
// the text from the last dot on. A name with more than 18 digits there has no frame, nor does a hidden name. Where a
// name has a '/', only what follows the last one is examined, and the folder belongs to the head. Letters are those
// of ASCII. The functions are thread-safe.
#ifndef MRCOMMON_FRAMES_FRAMESEQUENCE_H
#define MRCOMMON_FRAMES_FRAMESEQUENCE_H

#include <MRCommon/Export.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace quarn {

/// Consecutive frames, both ends included.
struct FrameRange {
    long long first; ///< the first frame
    long long last;  ///< the last frame
};

/// The files that differ in the frame only, as groupFrames() and scanFrames() return them.
struct MRCOMMON_API FrameSequence {
    std::string head;               ///< what precedes the frame in every name
    std::string tail;               ///< what follows the frame in every name
    unsigned int padding = 1;       ///< least number of characters of the frame, a minus sign counted
    std::vector<FrameRange> ranges; ///< ascending, never touching

    long long first() const;                 ///< 0 if `ranges` is empty
    long long last() const;                  ///< 0 if `ranges` is empty
    unsigned long long count() const;        ///< the frames in all ranges
    bool contains(long long frame) const;    ///< whether the frame exists
    std::vector<FrameRange> missing() const; ///< the gaps between first() and last()

    /// Returns exactly the name that was found for a frame that the sequence contains; for another one, the name
    /// that its file would have.
    std::string fileName(long long frame) const;
};

/// How names are read, and how a long scan is followed.
struct MRCOMMON_API FrameScanOptions {
    /// A minus right before the digits belongs to the frame if nothing, a dot or an underscore precedes it and
    /// the number is not 0.
    bool negativeFrames = false;
    /// Digits right after a "v" or "V" that no letter precedes are not a frame: "smoke_v2.vdb" goes to the others.
    bool versionsAreNames = false;
    /// Extensions with dots inside, such as "tar.gz", without a leading dot. The longest that fits counts; an
    /// empty one never does.
    std::vector<std::string> compoundExtensions;
    /// Called after every 1,000 names; false cancels, and an exception passes through to the caller.
    std::function<bool(std::size_t namesSoFar)> progress;
};

/// The sequences among some names, and all other names.
struct MRCOMMON_API FrameScan {
    std::vector<FrameSequence> sequences; ///< by head, tail and padding, bytes compared as unsigned
    std::vector<std::string>
        others;           ///< names without a frame, sorted; one that was given twice is there twice
    bool complete = true; ///< false if cancelled; the rest then describes the names up to there
};

/// Sorts names into sequences; the disk is not asked. Within one head and tail, a frame with a leading zero fixes its
/// own width as a padding. A frame without one belongs to the largest fixed padding that is not above its width; the
/// others form one sequence more, whose padding is the least width among them. A frame that occurs twice counts once.
///     a.8.exr a.9.exr a.10.exr          padding 1, 8-10
///     a.0009.exr a.10000.exr            padding 4, 9-9 10000-10000
///     a.0009.exr a.10.exr               padding 2, 10-10, and padding 4, 9-9
MRCOMMON_API FrameScan groupFrames(std::vector<std::string> const& names,
                                   FrameScanOptions const& options = {});

/// Sorts the names in a folder into sequences. The folder is read once and no file is looked at: what the folder
/// itself calls a directory is left out, while a link, and everything on a file system whose folders do not say what
/// their entries are, counts as a file. Throws std::filesystem::filesystem_error with the system's reason if the
/// folder cannot be read to its end.
MRCOMMON_API FrameScan scanFrames(std::string const& folder, FrameScanOptions const& options = {});

} // namespace quarn

#endif
