// Frames: one record file per frame, named by the process's FileNameStitcher.
//   raw records    PptyInt "particles": how many; then one PptyVector3D per particle, its position under its id
//     FrameNames const names("harbour.scene", "out/frames");
//     FrameRecord record;
//     record.write(names.path(12), simulation.particles());    // out/frames/harbour_fountain00012.rec
#ifndef FOUNTAIN_FRAMES_H
#define FOUNTAIN_FRAMES_H

#include "RecordFile.h"
#include "Simulation.h"

#include <MRCommon/properties/BasicPpty.h>

#include <string>
#include <vector>

/// The names of the frames of a scene in a folder. Sets the process's FileNameStitcher, so there is one at a time.
class FrameNames {
public:
    FrameNames(std::string const& sceneFile, std::string const& folder);

    /// Returns the file of a frame, whether it exists or not.
    std::string path(int frame) const;

    /// Returns the last frame on the disk before the first gap after `frame`, or `frame` if the next one is missing.
    int lastOnDisk(int frame) const;

private:
    std::string pathBeforeFrame_;
};

/// Positions and ids of one frame as properties, which are used again for the next frame.
class FrameRecord {
public:
    /// Writes the particles; returns the bytes. Throws FileError if the disk does not take them.
    long write(std::string const& path, std::vector<Particle> const& particles);

    /// Reloads the file and returns how it differs from these particles, in words; empty if it is the same to the last
    /// bit.
    std::string difference(std::string const& path, std::vector<Particle> const& particles);

    ///@{
    /// Returns the bytes of a frame's file, and roughly those in memory that a particle takes here.
    static unsigned long long fileSize(std::size_t particles);
    static std::size_t memoryPerParticle();
    ///@}

private:
    void take(std::vector<Particle> const& particles);
    bool write(std::FILE* file) const;
    void read(std::FILE* file);
    bool holds(std::vector<Particle> const& particles) const;

    quarn::PptyInt count_{"particles"};
    std::vector<quarn::PptyVector3D> positions_;
};

#endif
