// Frames: one record file a frame, named by the process's FileNameStitcher.
//   raw records    PptyInt "particles": how many; then one PptyVector3D a particle, its position under its id
//     FrameRecord record;
//     record.write(names.doIt("fountain", 12, "rec"), simulation.particles());
//     FrameRange const range = FrameRange::around("out/frames/fountain00012.rec");
#ifndef FOUNTAIN_FRAMES_H
#define FOUNTAIN_FRAMES_H

#include "RecordFile.h"
#include "Simulation.h"

#include <MRCommon/properties/BasicPpty.h>

#include <string>
#include <vector>

/// Positions and ids of one frame as properties, which serve for one frame after the other.
class FrameRecord {
public:
    /// Writes the particles under the temporary-name rule; returns the bytes.
    long write(std::string const& path, std::vector<Particle> const& particles);

    /// FileError when the file is no frame.
    void read(std::string const& path);

    /// Whether the record holds exactly these particles, to the last bit.
    bool holds(std::vector<Particle> const& particles) const;

private:
    void take(std::vector<Particle> const& particles);

    quarn::PptyInt count_{"particles"};
    std::vector<quarn::PptyVector3D> positions_;
};

/// Where the frames of one run lie, found out from any one of them.
struct FrameRange {
    unsigned int first = 0, last = 0;

    /// FileError for a path that names no frame of a sequence on disk. Sets the process's FileNameStitcher to build
    /// the names of the same sequence.
    static FrameRange around(std::string const& anyFrame);

    std::string path(unsigned int frame) const; ///< the file of a frame, whether it is there or not

private:
    std::string name_, extension_;
};

#endif
