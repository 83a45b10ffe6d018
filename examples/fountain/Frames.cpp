#include "Frames.h"

#include <MRCommon/frames/FileNameStitcher.h>

using namespace quarn;

void FrameRecord::take(std::vector<Particle> const& particles) {
    count_.setValue(static_cast<int>(particles.size()));
    while (positions_.size() < particles.size())
        positions_.emplace_back(particles[positions_.size()].id.toUuidString());
    for (std::size_t i = 0; i < particles.size(); ++i) positions_[i].setValue(particles[i].position);
}

long FrameRecord::write(std::string const& path, std::vector<Particle> const& particles) {
    take(particles);
    return writeWhole(path, [&](std::FILE* file) {
        FileStreamRaw stream(file);
        count_.writeTo(stream);
        for (std::size_t i = 0; i < particles.size(); ++i) positions_[i].writeTo(stream);
        if (stream.failed()) throw FileError(path, "cannot be written");
    });
}

void FrameRecord::read(std::string const& path) {
    OpenFile const file = openToRead(path);
    FileStreamRaw stream(file.get());
    count_.readFrom(stream);
    for (int i = 0; i < *count_.getRefToValue() && !stream.failed(); ++i) {
        auto const index = static_cast<std::size_t>(i);
        if (index == positions_.size()) positions_.emplace_back();
        positions_[index].readFrom(stream);
    }
    if (stream.failed()) throw FileError(path, "ends before its last particle");
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

FrameRange FrameRange::around(std::string const& anyFrame) {
    FileNameStitcher& stitcher = FileNameStitcher::instance();
    FrameRange range;
    QN_String name, extension;
    bool const parsed = stitcher.frameExtensionFromPath(anyFrame.c_str(), name, extension, range.first,
                                                        range.last, stitcher.padding, stitcher.order);
    if (!parsed || stitcher.padding == 0) throw FileError(anyFrame, "is no frame of a sequence");
    stitcher.prefix.clear();
    range.name_ = name.c_str();
    range.extension_ = extension.c_str();
    return range;
}

std::string FrameRange::path(unsigned int frame) const {
    return FileNameStitcher::instance().doIt(name_, static_cast<int>(frame), extension_);
}
