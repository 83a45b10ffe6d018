#include "Budget.h"

#include "Frames.h"
#include "Sheet.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

std::string shown(ByteCount bytes) {
    constexpr char const* units[] = {"B", "kB", "MB", "GB", "TB"};
    std::size_t unit = 0;
    for (; bytes >= 10000 && unit < 4; ++unit) bytes = (bytes + 999) / 1000;
    return std::to_string(bytes) + " " + units[unit];
}

void check(char const* what, ByteCount needed, char const* offered, ByteCount available) {
    if (needed > available)
        throw std::runtime_error("the scene takes " + shown(needed) + " of " + what + ", " + offered + " " +
                                 shown(available));
}

ByteCount availableMemory() {
    auto const pages = static_cast<ByteCount>(sysconf(_SC_PHYS_PAGES));
    ByteCount const machine = pages * static_cast<ByteCount>(sysconf(_SC_PAGESIZE)) / 4 * 3;
    rlimit limit{};
    bool const isLimited = getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
    return isLimited ? std::min<ByteCount>(machine, limit.rlim_cur) : machine;
}

ByteCount freeSpace(std::string const& folder) {
    fs::path existing = fs::absolute(folder);
    while (!fs::exists(existing) && existing.has_relative_path()) existing = existing.parent_path();
    return fs::space(existing).available;
}

} // namespace

ByteCount memoryOf(Settings const& settings, long long sheetWidth) {
    constexpr std::size_t copiesOfAFrame = 2; // its file and what the file should contain
    auto const particles = static_cast<std::size_t>(settings.particles);
    return particles * (sizeof(Particle) + FrameRecord::memoryPerParticle()) +
           copiesOfAFrame * FrameRecord::fileSize(particles) + Sheet::memory(sheetWidth);
}

ByteCount diskOf(Settings const& settings, long long sheetWidth) {
    ByteCount bytes = Sheet::fileSize(sheetWidth);
    for (int frame = 1; frame <= settings.frames; ++frame) // time is rounded: one particle more at most
        bytes += FrameRecord::fileSize(settings.particlesAt(frame * settings.timeStep) + 1);
    return bytes;
}

void checkMemory(ByteCount needed) { check("memory", needed, "available are", availableMemory()); }

void checkDisk(ByteCount needed, ByteCount replaced, std::string const& folder, ByteCount limit) {
    check("disk", needed, "its diskLimit is", limit);
    check("disk", needed, "available are", freeSpace(folder) + replaced);
}
