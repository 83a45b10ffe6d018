// fountain: the example host. Reads a scene, keeps it in records of both stream kinds, and shows it.
//     fountain harbour.scene out
// Writes out/scene.raw and out/scene.endian. A scene that cannot be used is told in one line on the standard
// error stream, with exit status 2, and nothing is written.
#include "RecordFile.h"
#include "Scene.h"
#include "SceneValue.h"
#include "WorkSpaceHost.h"

#include <MRCommon/basic/StreamEncoding.h>
#include <MRCommon/properties/PptyEnum.h>

#include <cstdio>
#include <filesystem>
#include <iostream>

using namespace quarn;

namespace {

constexpr unsigned int currentVersion = 5088; // of the workspace data that this application writes
constexpr unsigned int oldVersion = 5087;     // the last whose enumerations had no label of their own

Properties freshLike(Properties const& scene) {
    Properties fresh;
    for (Property const& property : scene)
        fresh.push_back(makeProperty(property->getClassName().c_str(), property->getName().c_str()));
    return fresh;
}

std::string bytesOf(std::string const& path) {
    OpenFile const file = openToRead(path);
    std::string bytes;
    for (int c; (c = std::fgetc(file.get())) != EOF;) bytes += static_cast<char>(c);
    return bytes;
}

/// Loads the raw file into fresh properties and writes those again: not a byte may differ.
void checkRoundTrip(std::string const& path, Properties const& scene) {
    Properties const loaded = freshLike(scene);
    readRecords<FileStreamRaw>(path, loaded);
    std::string const again = path + ".again";
    writeRecords<FileStreamRaw>(again, loaded);
    bool const same = bytesOf(path) == bytesOf(again);
    std::remove(again.c_str());
    if (!same) throw FileError(path, "what was loaded differs from what was saved");
}

void printTable(Properties const& scene) {
    std::printf("%-12s %-16s %s\n", "name", "class", "value");
    for (Property const& property : scene)
        std::printf("%-12s %-16s %s\n", property->getName().c_str(), property->getClassName().c_str(),
                    oneLine(*property).c_str());
}

/// Writes an enumeration's record as applications up to version 5087 did: index and table, the label left
/// out.
void writeOldLayout(FileStreamRaw& stream, PptyEnum const& property) {
    encoding::writeStr(stream, property.getName());
    encoding::writeI32(stream, *property.getVariantValue().as<int>());
    encoding::writeStrArray(stream, property.itemLabels);
    encoding::writeU32(stream, property.itemValues.size());
    encoding::writeBlock(stream, property.itemValues);
}

/// Shows one enumeration read from a record of the old layout and from one of today's.
void showLayouts(PptyEnum const& property) {
    for (unsigned int const version : {oldVersion, currentVersion}) {
        WorkSpaceHost const host(version);
        OpenFile const file(std::tmpfile());
        FileStreamRaw stream(file.get());
        if (version == oldVersion)
            writeOldLayout(stream, property);
        else
            property.writeTo(stream);
        std::rewind(file.get());
        PptyEnum loaded;
        loaded.readFrom(stream);
        std::printf("read under workspace version %u: %s\n", version, oneLine(loaded).c_str());
    }
}

void run(std::string const& sceneFile, std::string const& folder) {
    WorkSpaceHost const host(currentVersion);
    Properties const scene = readScene(sceneFile);

    std::filesystem::create_directories(folder);
    long const rawBytes = writeRecords<FileStreamRaw>(folder + "/scene.raw", scene);
    long const endianBytes = writeRecords<FileStreamEndian>(folder + "/scene.endian", scene);
    checkRoundTrip(folder + "/scene.raw", scene);

    printTable(scene);
    for (Property const& property : scene)
        if (auto const* const choice = dynamic_cast<PptyEnum const*>(property.get())) showLayouts(*choice);
    std::printf("%zu properties, %ld bytes raw, %ld bytes byte-order-aware, reloaded without a difference\n",
                scene.size(), rawBytes, endianBytes);
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 3) {
        std::cerr << "usage: fountain <scene file> <output folder>\n";
        return 2;
    }
    try {
        run(arguments[1], arguments[2]);
    } catch (std::exception const& error) {
        std::cerr << error.what() << "\n";
        return 2;
    }
    return 0;
}
