// RecordFile: properties in files of either stream kind, one record after the other.
//     writeWhole("scene.raw", [&](std::FILE* file) { writeRecords<FileStreamRaw>(file, scene); });
//     readRecords<FileStreamRaw>(file, "scene.raw", sameKindsAgain);
// A file is written under a temporary name of its own and renamed when it is complete, so nobody ever finds half of
// one, and programs that write the same file at the same time do not disturb each other.
#ifndef FOUNTAIN_RECORDFILE_H
#define FOUNTAIN_RECORDFILE_H

#include "Scene.h"

#include <MRCommon/streams/FileStreamEndian.h>
#include <MRCommon/streams/FileStreamRaw.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <string>

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;
using WriteFile = std::function<void(std::FILE*)>;

/// Returns the system's words for the last call that failed.
std::string systemReason();

/// Opens a file for reading. Throws FileError if that fails.
OpenFile openToRead(std::string const& path);

/// Returns what follows in an open file, `most` bytes at most. Throws std::runtime_error with the
/// system's reason if it cannot be read.
std::string contentOf(std::FILE* file, std::size_t most);

/// Returns what `write` writes, without a file on the disk.
std::string bytesOf(WriteFile const& write);

/// Creates the file that `write` fills, open for reading too, and returns its size in bytes. The file gets its name
/// only if all bytes are written and `write` does not throw. Throws FileError if the disk does not take them.
long writeWhole(std::string const& path, WriteFile const& write);

/// Writes all records.
template <class Stream> void writeRecords(std::FILE* file, Properties const& properties);

/// Reads all records into properties of the same kinds in the same order. Throws FileError if the file contains fewer
/// or more.
template <class Stream>
void readRecords(std::FILE* file, std::string const& path, Properties const& properties);

// ---------------------------------------------------------------------------

template <class Stream> void writeRecords(std::FILE* file, Properties const& properties) {
    Stream stream(file);
    for (Property const& property : properties) property->writeTo(stream);
}

template <class Stream>
void readRecords(std::FILE* file, std::string const& path, Properties const& properties) {
    Stream stream(file);
    for (Property const& property : properties) property->readFrom(stream);
    if (stream.failed()) throw FileError(path, "ends before its last record");
    if (std::fgetc(file) != EOF) throw FileError(path, "continues after its last record");
}

#endif
