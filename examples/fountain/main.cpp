// fountain: the example host: a small particle simulation around the library.
//     fountain <scene> <folder>             simulates the scene into the folder: records, frames, contact sheet
//     fountain --verify <scene> <frame>     checks the sequence of a frame file against a new run of the scene
//     fountain --records <scene> <folder>   only reads the scene and saves it in records of both stream kinds
// An error is reported in one line on the standard error stream. The exit status is 0 for success, 1 for a failure and
// 2 for wrong usage.
#include "Budget.h"
#include "Frames.h"
#include "LoadedPlugIn.h"
#include "Output.h"
#include "Progress.h"
#include "RecordFile.h"
#include "Scene.h"
#include "SceneValue.h"
#include "Sheet.h"
#include "Simulation.h"

#include "WorkSpaceVersion.h"

#include <MRCommon/properties/PptyEnum.h>
#include <MRCommon/streams/StreamEncoding.h>
#include <MRCommon/system/Paths.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <limits>

using namespace quarn;
namespace fs = std::filesystem;

namespace {

constexpr unsigned int currentVersion = 5088; // of the workspace data that this application writes
constexpr unsigned int oldVersion = 5087;     // the last one whose enumerations have no label

constexpr char const* usage =
    "usage: fountain [--records] SCENE FOLDER\n"
    "       fountain --verify SCENE FRAME\n"
    "\n"
    "Simulates the scene into the folder: records of the scene, frames, contact sheet.\n"
    "  --records   only save the scene in records of both stream kinds\n"
    "  --verify    check the sequence of a frame file against a new run of the scene\n"
    "  --help      print this text\n";

#ifdef __APPLE__
constexpr char const* libraryEnding = ".dylib";
#else
constexpr char const* libraryEnding = ".so";
#endif

struct WrongUsage : std::runtime_error {
    using runtime_error::runtime_error;
};

struct Request {
    std::string program, mode, sceneFile, target; ///< the mode is empty for a simulation
};

/// A scene with the plug-ins that it names. They outlive its properties, some of which are theirs.
struct Stage {
    std::vector<LoadedPlugIn> plugIns;
    Properties scene;
};

std::string folderOf(std::string const& path) {
    fs::path const folder = fs::path(path).parent_path();
    return folder.empty() ? "." : folder.string();
}

/// Returns the library of a plug-in, which is in the folder of the program unless its name has a folder.
std::string plugInFile(std::string const& name, std::string const& program) {
    if (name.find('/') != std::string::npos) return name;
    return folderOf(program) + "/lib" + name + libraryEnding;
}

Stage readStage(Request const& request) {
    Stage stage;
    stage.scene = readScene(request.sceneFile, [&](Ppty const& property) {
        if (property.getName() != "plugIn") return;
        stage.plugIns.emplace_back(plugInFile(property.toStr().c_str(), request.program));
    });
    return stage;
}

/// Combines the forces of all plug-ins, one for each property of their settings classes.
Accelerate accelerationOf(Stage const& stage) {
    struct Force {
        LoadedPlugIn const* plugIn;
        Ppty const* settings;
    };
    std::vector<Force> forces;
    for (Property const& property : stage.scene)
        for (LoadedPlugIn const& plugIn : stage.plugIns)
            if (property->getClassName() == plugIn.settingsClass().c_str())
                forces.push_back({&plugIn, property.get()});
    return [forces](double time, Particle const& particle, Vector& acceleration) {
        for (Force const& force : forces)
            force.plugIn->accelerate(*force.settings, time, particle.position, particle.velocity,
                                     acceleration);
    };
}

void makeFolder(std::string const& folder) {
    if (makeSurePathExists(folder.c_str())) return;
    std::error_code reason;
    fs::create_directories(folder, reason); // says why
    throw FileError(folder, "cannot be created: " + reason.message());
}

/// Loads the file's records into new properties, which must be saved as the same bytes.
void checkRoundTrip(std::FILE* file, std::string const& path, Properties const& scene) {
    Properties loaded;
    for (Property const& property : scene)
        loaded.push_back(makeProperty(property->getClassName().c_str(), property->getName().c_str()));
    std::rewind(file);
    readRecords<FileStreamRaw>(file, path, loaded);
    std::rewind(file);
    if (contentOf(file, std::numeric_limits<std::size_t>::max()) !=
        bytesOf([&](std::FILE* memory) { writeRecords<FileStreamRaw>(memory, loaded); }))
        throw FileError(path, "does not reload to the values that were saved");
}

void printTable(Properties const& scene) {
    print("%-12s %-16s %-52s %s\n", "name", "class", "value", "text of the library, toStr()");
    for (Property const& property : scene)
        print("%-12s %-16s %-52s \"%s\"\n", property->getName().c_str(), property->getClassName().c_str(),
              valueText(*property).c_str(), libraryText(*property).c_str());
}

/// Writes an enumeration's record as applications up to version 5087 did: index and table without a label.
void writeOldLayout(FileStreamRaw& stream, PptyEnum const& property) {
    encoding::writeStr(stream, property.getName());
    encoding::writeI32(stream, *property.getVariantValue().as<int>());
    encoding::writeStrArray(stream, property.itemLabels);
    encoding::writeU32(stream, property.itemValues.size());
    encoding::writeBlock(stream, property.itemValues);
}

/// Shows one enumeration read from a record of the old layout and from one of the current layout.
void showLayouts(PptyEnum const& property) {
    for (unsigned int const version : {oldVersion, currentVersion}) {
        WorkSpaceVersion const scope(version);
        OpenFile const file(std::tmpfile());
        if (file == nullptr) throw FileError("a temporary file", systemReason());
        FileStreamRaw stream(file.get());
        if (version == oldVersion)
            writeOldLayout(stream, property);
        else
            property.writeTo(stream);
        std::rewind(file.get());
        PptyEnum loaded;
        loaded.readFrom(stream);
        if (stream.failed()) throw FileError("a temporary file", "ends before its record does");
        print("read under workspace version %u: %s\n", version, libraryText(loaded).c_str());
    }
}

void saveRecords(Properties const& scene, std::string const& folder) {
    makeFolder(folder);
    std::string const raw = folder + "/scene.raw";
    long const rawBytes = writeWhole(raw, [&](std::FILE* file) {
        writeRecords<FileStreamRaw>(file, scene);
        checkRoundTrip(file, raw, scene);
    });
    long const endianBytes = writeWhole(
        folder + "/scene.endian", [&](std::FILE* file) { writeRecords<FileStreamEndian>(file, scene); });
    printTable(scene);
    for (Property const& property : scene)
        if (auto const* const choice = dynamic_cast<PptyEnum const*>(property.get())) showLayouts(*choice);
    print("%zu properties, %ld bytes raw, %ld bytes byte-order-aware, reloaded without a difference\n",
          scene.size(), rawBytes, endianBytes);
}

/// Returns the bytes of earlier frames that the frames of this run replace.
ByteCount replacedBytes(FrameNames const& names, int frames) {
    ByteCount bytes = 0;
    for (int frame = 1; frame <= frames; ++frame) {
        std::error_code missing;
        std::uintmax_t const size = fs::file_size(names.path(frame), missing);
        if (!missing) bytes += size;
    }
    return bytes;
}

void simulate(Stage const& stage, std::string const& sceneFile, std::string const& folder) {
    Settings const settings = Settings::of(stage.scene);
    std::string const cache = folder + "/" + valueOf<QN_String>(stage.scene, "cache").c_str();
    FrameNames const names(sceneFile, cache);
    auto const sheetWidth = valueOf<long long>(stage.scene, "pictureSize");
    checkDisk(diskOf(settings, sheetWidth), replacedBytes(names, settings.frames), folder,
              static_cast<ByteCount>(valueOf<long long>(stage.scene, "diskLimit")));
    checkMemory(memoryOf(settings, sheetWidth));

    Simulation simulation(settings, accelerationOf(stage));
    Sheet sheet(stage.scene, settings);
    FrameRecord record;
    saveRecords(stage.scene, folder);
    makeFolder(cache);
    long long bytes = 0;
    {
        Progress progress("simulating", settings.frames);
        for (int frame = 1; frame <= settings.frames; ++frame) {
            simulation.step();
            bytes += record.write(names.path(frame), simulation.particles());
            sheet.look(frame, simulation.particles());
            progress.reached(frame);
        }
    }
    sheet.save(folder + "/sheet.png");
    print("%d frames of up to %zu particles, %lld bytes, first %s\n", settings.frames,
          simulation.particles().size(), bytes, names.path(1).c_str());
    print("contact sheet: %s/sheet.png\n", folder.c_str());
}

/// Requires that the file is one of the scene's frames, whether it exists or not.
void checkIsFrame(std::string const& file, FrameNames const& names, int frames) {
    for (int frame = 1; frame <= frames; ++frame)
        if (fs::path(names.path(frame)).filename() == fs::path(file).filename()) return;
    throw FileError(file, "is not one of the scene's frames, " + names.path(1) + " to " + names.path(frames));
}

/// Compares each frame that the scene has with a second run of it. Throws FileError after all faults are printed.
void verify(Stage const& stage, std::string const& sceneFile, std::string const& anyFrame) {
    Settings const settings = Settings::of(stage.scene);
    FrameNames const names(sceneFile, folderOf(anyFrame));
    checkIsFrame(anyFrame, names, settings.frames);
    checkMemory(memoryOf(settings, 0));
    Simulation simulation(settings, accelerationOf(stage));
    FrameRecord record;
    std::vector<std::string> faults;
    {
        Progress progress("verifying", settings.frames);
        for (int frame = 1; frame <= settings.frames; ++frame) {
            simulation.step();
            std::string const difference = record.difference(names.path(frame), simulation.particles());
            if (!difference.empty()) faults.push_back(names.path(frame) + ": " + difference);
            progress.reached(frame);
        }
    }
    int const last = names.lastOnDisk(settings.frames);
    for (int frame = settings.frames + 1; frame <= last; ++frame)
        faults.push_back(names.path(frame) + ": follows the last frame of the scene");
    for (std::string const& fault : faults) std::fprintf(stderr, "fountain: %s\n", fault.c_str());
    if (!faults.empty())
        throw FileError(sceneFile, std::to_string(faults.size()) + " faults in its " +
                                       std::to_string(settings.frames) + " frames");
    print("frames 1 to %d, reloaded and equal to a new run\n", settings.frames);
}

/// Runs one mode and unloads the plug-ins. Throws FileError if the registry still has one of their classes after that.
void run(Request const& request) {
    WorkSpaceVersion const version(currentVersion);
    std::vector<std::string> settingsClasses;
    {
        Stage const stage = readStage(request);
        for (LoadedPlugIn const& plugIn : stage.plugIns) settingsClasses.push_back(plugIn.settingsClass());
        if (request.mode == "--verify")
            verify(stage, request.sceneFile, request.target);
        else if (request.mode == "--records")
            saveRecords(stage.scene, request.target);
        else
            simulate(stage, request.sceneFile, request.target);
    }
    for (std::string const& name : settingsClasses) {
        if (QN_MetaClassBase::find(name.c_str()) != nullptr)
            throw FileError(request.sceneFile, "the plug-in of " + name + " stays in memory");
        print("%s is unloaded\n", name.c_str());
    }
}

Request requestIn(std::vector<std::string> words) {
    Request request;
    request.program = words.front();
    words.erase(words.begin());
    if (!words.empty() && words.front().rfind("--", 0) == 0) {
        request.mode = words.front();
        words.erase(words.begin());
        if (request.mode != "--verify" && request.mode != "--records")
            throw WrongUsage(request.mode + ": unknown option");
    }
    if (words.size() != 2 || words[0].empty() || words[1].empty())
        throw WrongUsage(request.mode == "--verify" ? "a scene and one of its frames are needed"
                                                    : "a scene and an output folder are needed");
    request.sceneFile = words[0];
    request.target = words[1];
    return request;
}

/// Runs the request. What went wrong is thrown as FileError.
void runNamingTheScene(Request const& request) {
    try {
        run(request);
    } catch (FileError const&) {
        throw;
    } catch (std::bad_alloc const&) {
        throw FileError(request.sceneFile, "the memory of this machine is exhausted");
    } catch (std::exception const& error) {
        throw FileError(request.sceneFile, error.what());
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::vector<std::string> const words(arguments, arguments + argumentCount);
    try {
        if (words.size() == 2 && words[1] == "--help")
            print("%s", usage);
        else
            runNamingTheScene(requestIn(words));
        finishOutput();
    } catch (WrongUsage const& error) {
        std::fprintf(stderr, "fountain: %s (see fountain --help)\n", error.what());
        return 2;
    } catch (std::exception const& error) {
        std::fflush(stdout);
        std::fprintf(stderr, "fountain: %s\n", error.what());
        return 1;
    }
    return 0;
}
