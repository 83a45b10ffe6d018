#include "Frames.h"

#include <MRCommon/frames/FileNameStitcher.h>
#include <MRCommon/system/Paths.h>

#include <algorithm>
#include <cerrno>

using namespace quarn;

namespace {

constexpr char const* sequence = "fountain";
constexpr char const* extension = "rec";

FileNameStitcher& stitcher() { return FileNameStitcher::instance(); }

} // namespace

FrameNames::FrameNames(std::string const& sceneFile, std::string const& folder) {
    std::string file = sceneFile;
    stitcher().setSceneName(PathFindFileName(file.data()));
    stitcher().prefix = folder + "/$(SCENENAME)_";
    pathBeforeFrame_ = folder + "/" + stitcher().sceneName + "_" + sequence;
}

std::string FrameNames::path(int frame) const { return stitcher().doIt(sequence, frame, extension); }

int FrameNames::lastOnDisk(int frame) const {
    auto const next = static_cast<unsigned int>(frame + 1);
    return static_cast<int>(FileNameStitcher::findMaxValue(stitcher().order, pathBeforeFrame_.c_str(),
                                                           extension, stitcher().padding, next));
}

void FrameRecord::take(std::vector<Particle> const& particles) {
    count_.setValue(static_cast<int>(particles.size()));
    while (positions_.size() < particles.size())
        positions_.emplace_back(particles[positions_.size()].id.toUuidString());
    for (std::size_t i = 0; i < particles.size(); ++i) positions_[i].setValue(particles[i].position);
}

bool FrameRecord::write(std::FILE* file) const {
    FileStreamRaw stream(file);
    count_.writeTo(stream);
    auto const count = static_cast<std::size_t>(*count_.getVariantValue().as<int>());
    for (std::size_t i = 0; i < count; ++i) positions_[i].writeTo(stream);
    return stream.finish();
}

long FrameRecord::write(std::string const& path, std::vector<Particle> const& particles) {
    take(particles);
    return writeWhole(path, [&](std::FILE* file) { return write(file); });
}

void FrameRecord::read(std::FILE* file) {
    FileStreamRaw stream(file);
    count_.readFrom(stream);
    for (int i = 0; i < *count_.getRefToValue() && !stream.failed(); ++i)
        positions_[static_cast<std::size_t>(i)].readFrom(stream);
}

/// The bytes are compared first: a damaged size must not reach the library, which believes what it reads.
std::string FrameRecord::difference(std::string const& path, std::vector<Particle> const& particles) {
    take(particles);
    std::string const expected = bytesOf([&](std::FILE* file) { return write(file); });
    OpenFile const file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr) return errno == ENOENT ? "is missing" : systemReason();
    std::string found;
    try {
        found = contentOf(file.get(), expected.size() + 1);
    } catch (std::runtime_error const& error) {
        return error.what();
    }
    if (found.empty()) return "is empty";
    auto const differing = std::mismatch(found.begin(), found.end(), expected.begin(), expected.end());
    auto const at = static_cast<std::size_t>(differing.first - found.begin());
    if (at < found.size() && at < expected.size())
        return "differs from a new run of the scene at byte " + std::to_string(at);
    if (at < expected.size())
        return "ends after " + std::to_string(at) + " of " + std::to_string(expected.size()) + " bytes";
    if (at < found.size()) return "continues after its last particle";
    std::rewind(file.get());
    read(file.get());
    return holds(particles) ? "" : "does not reload to the values that were saved";
}

bool FrameRecord::holds(std::vector<Particle> const& particles) const {
    auto const count = static_cast<std::size_t>(*count_.getVariantValue().as<int>());
    if (count != particles.size()) return false;
    for (std::size_t i = 0; i < count; ++i)
        if (*positions_[i].getVariantValue().as<Vector>() != particles[i].position ||
            ByteId(positions_[i].getName()) != particles[i].id)
            return false;
    return true;
}

std::size_t FrameRecord::memoryPerParticle() {
    constexpr std::size_t allocations = 3 * 48; // of the name and the value, rounded up
    return sizeof(PptyVector3D) + allocations;
}

unsigned long long FrameRecord::fileSize(std::size_t particles) {
    static auto const sizeWith = [](std::size_t count) {
        FrameRecord record;
        record.take(std::vector<Particle>(count));
        return bytesOf([&](std::FILE* file) { return record.write(file); }).size();
    };
    static std::size_t const header = sizeWith(0), each = sizeWith(1) - header;
    return header + static_cast<unsigned long long>(particles) * each;
}
