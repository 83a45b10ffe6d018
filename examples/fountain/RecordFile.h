// RecordFile: properties in files of either stream kind, one record behind the other.
//     writeRecords<FileStreamRaw>("scene.raw", scene);
//     readRecords<FileStreamRaw>("scene.raw", sameKindsAgain);
// A file is written under a temporary name and renamed at the end: nobody ever finds half of one.
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

/// Opens a file for reading; FileError when that fails.
OpenFile openToRead(std::string const& path);

/// Lets `write` fill a file that takes its name when all went well, and vanishes otherwise. Returns its size
/// in bytes.
long writeWhole(std::string const& path, std::function<void(std::FILE*)> const& write);

/// Writes all records; returns the bytes. FileError when the disk does not take them.
template <class Stream> long writeRecords(std::string const& path, Properties const& properties);

/// Reads all records into properties of the same kinds in the same order. FileError when the file holds fewer
/// or more.
template <class Stream> void readRecords(std::string const& path, Properties const& properties);

// ---------------------------------------------------------------------------

template <class Stream> long writeRecords(std::string const& path, Properties const& properties) {
    return writeWhole(path, [&](std::FILE* file) {
        Stream stream(file);
        for (Property const& property : properties) property->writeTo(stream);
        if (stream.failed()) throw FileError(path, "cannot be written");
    });
}

template <class Stream> void readRecords(std::string const& path, Properties const& properties) {
    OpenFile const file = openToRead(path);
    Stream stream(file.get());
    for (Property const& property : properties) property->readFrom(stream);
    if (stream.failed()) throw FileError(path, "ends before its last record");
    if (std::fgetc(file.get()) != EOF) throw FileError(path, "goes on behind its last record");
}

#endif
