// RecordFile: properties in files of either stream kind, one record after the other.
//     writeWhole("scene.raw", [&](std::FILE* file) { return writeRecords<FileStreamRaw>(file, scene); });
// A file is written under a temporary name of its own and renamed when it is complete, so nobody ever finds half of
// one, and programs that write the same file at the same time do not disturb each other.
#ifndef FOUNTAIN_RECORDFILE_H
#define FOUNTAIN_RECORDFILE_H

#include "Scene.h"

#include <csignal>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;
using WriteFile = std::function<bool(std::FILE*)>; ///< returns whether everything was written and flushed

/// Delays the signals by which people end programs until a file is renamed or removed, for as long as a scope lasts.
class SignalsDelayed {
public:
    SignalsDelayed();
    ~SignalsDelayed();
    SignalsDelayed(SignalsDelayed const&) = delete;
    SignalsDelayed& operator=(SignalsDelayed const&) = delete;

private:
    sigset_t previous_{};
};

/// Returns the system's words for the last call that failed.
std::string systemReason();

/// Opens a file for reading. Throws FileError if that fails.
OpenFile openToRead(std::string const& path);

/// Returns what follows in an open file, `most` bytes at most. Throws std::runtime_error with the
/// system's reason if it cannot be read.
std::string contentOf(std::FILE* file, std::size_t most);

/// Returns what `write` writes, without a file on the disk.
std::string bytesOf(WriteFile const& write);

/// Creates the file that `write` fills, and returns its size in bytes. The file gets its name only if `write` returns
/// true. Throws FileError if the disk does not take all bytes.
long writeWhole(std::string const& path, WriteFile const& write);

/// Writes all records of a scene. Returns whether all of them were written and flushed.
template <class Stream> bool writeRecords(std::FILE* file, Properties const& scene) {
    Stream stream(file);
    for (std::size_t i = 0; i < scene.size(); ++i) scene.property(i)->writeTo(stream);
    return stream.finish();
}

#endif
