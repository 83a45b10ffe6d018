// Budget: what a scene will take of memory and disk, compared with what there is before the work starts.
//     checkMemory(memoryOf(settings, pictureSize));
//     checkDisk(diskOf(settings, pictureSize), 0, "out", diskLimit);
#ifndef FOUNTAIN_BUDGET_H
#define FOUNTAIN_BUDGET_H

#include "Simulation.h"

#include <string>

using ByteCount = unsigned long long;

/// Returns the bytes of memory for the particles and, unless its width is 0, for the contact sheet.
ByteCount memoryOf(Settings const& settings, long long sheetWidth);

/// Returns the bytes on the disk for all frames and the contact sheet.
ByteCount diskOf(Settings const& settings, long long sheetWidth);

/// Throws std::runtime_error if that is more than the process can have: three quarters of the machine's memory, or the
/// limit of the process.
void checkMemory(ByteCount needed);

/// Throws std::runtime_error if the scene's limit or the free space where `folder` is, or will be, is below `needed`.
/// `replaced` bytes of files that exist become free on the way.
void checkDisk(ByteCount needed, ByteCount replaced, std::string const& folder, ByteCount limit);

#endif
