// fountain: the example host: a small particle simulation around the library.
//     fountain <scene> <folder>             simulates the scene into the folder: records, frames, contact sheet
//     fountain --verify <scene> <frame>     checks the sequence of a frame file against a new run of the scene
//     fountain --records <scene> <folder>   only saves the scene: property file, records of both stream kinds
//     fountain --set <scene> <name>=<value> changes a property file; the plug-ins of the scene may be missing
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

#include <cstdio>
#include <filesystem>

using namespace quarn;
namespace fs = std::filesystem;

namespace {

constexpr unsigned int currentVersion = 5088; // of the workspace data that this application writes
constexpr unsigned int oldVersion = 5087;     // the last one whose enumerations have no label

constexpr char const* usage =
    "usage: fountain [--records] SCENE FOLDER\n"
    "       fountain --verify SCENE FRAME\n"
    "       fountain --set SCENE NAME=VALUE\n"
    "\n"
    "Simulates the scene into the folder: the saved scene, its records, frames, contact sheet.\n"
    "A scene is a text, or the property file (.props) that an earlier run saved.\n"
    "  --records   only save the scene: property file, records of both stream kinds\n"
    "  --verify    check the sequence of a frame file against a new run of the scene\n"
    "  --set       change a value in a property file, without opening the plug-ins\n"
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
    for (std::size_t i = 0; i < stage.scene.size(); ++i)
        for (LoadedPlugIn const& plugIn : stage.plugIns)
            if (stage.scene.className(i) == plugIn.settingsClass())
                forces.push_back({&plugIn, stage.scene.property(i)});
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

/// Loads the saved scene, whose records must be those that were saved.
void checkRoundTrip(std::string const& path, Properties const& scene) {
    auto const records = [](Properties const& properties) {
        return bytesOf([&](std::FILE* memory) { return writeRecords<FileStreamRaw>(memory, properties); });
    };
    if (records(readScene(path, [](Ppty const&) {})) != records(scene))
        throw FileError(path, "does not reload to the values that were saved");
}

void printTable(Properties const& scene) {
    print("%-12s %-16s %-52s %s\n", "name", "class", "value", "text of the library, toStr()");
    for (std::size_t i = 0; i < scene.size(); ++i) {
        Ppty const& property = *scene.property(i);
        print("%-12s %-16s %-52s \"%s\"\n", property.getName().c_str(), scene.className(i).c_str(),
              valueText(property).c_str(), libraryText(property).c_str());
    }
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
        if (!stream.finish()) throw FileError("a temporary file", "cannot be written: " + systemReason());
        std::rewind(file.get());
        PptyEnum loaded;
        loaded.readFrom(stream);
        if (stream.failed()) throw FileError("a temporary file", "ends before its record does");
        print("read under workspace version %u: %s\n", version, libraryText(loaded).c_str());
    }
}

void save(Properties const& scene, std::string const& sceneFile, std::string const& folder) {
    makeFolder(folder);
    std::string const saved = folder + "/" + fs::path(sceneFile).stem().string() + ".props";
    saveScene(saved, scene);
    checkRoundTrip(saved, scene);
    long const rawBytes = writeWhole(
        folder + "/scene.raw", [&](std::FILE* file) { return writeRecords<FileStreamRaw>(file, scene); });
    long const endianBytes = writeWhole(folder + "/scene.endian", [&](std::FILE* file) {
        return writeRecords<FileStreamEndian>(file, scene);
    });
    printTable(scene);
    for (std::size_t i = 0; i < scene.size(); ++i)
        if (auto const* const choice = dynamic_cast<PptyEnum const*>(scene.property(i))) showLayouts(*choice);
    print("%zu properties, %ld bytes raw, %ld bytes byte-order-aware\n", scene.size(), rawBytes, endianBytes);
    print("saved scene: %s, reloaded without a difference\n", saved.c_str());
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
    save(stage.scene, sceneFile, folder);
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

/// Changes the value in a request such as "gravity=-5".
void change(Request const& request) {
    std::size_t const equals = request.target.find('=');
    changeScene(request.sceneFile, request.target.substr(0, equals), request.target.substr(equals + 1));
}

/// Runs one mode and unloads the plug-ins. Throws FileError if the registry still has one of their classes after that.
void run(Request const& request) {
    if (request.mode == "--set") return change(request);
    WorkSpaceVersion const version(currentVersion);
    std::vector<std::string> settingsClasses;
    {
        Stage const stage = readStage(request);
        for (LoadedPlugIn const& plugIn : stage.plugIns) settingsClasses.push_back(plugIn.settingsClass());
        if (request.mode == "--verify")
            verify(stage, request.sceneFile, request.target);
        else if (request.mode == "--records")
            save(stage.scene, request.sceneFile, request.target);
        else
            simulate(stage, request.sceneFile, request.target);
    }
    for (std::string const& name : settingsClasses) {
        if (QN_MetaClassBase::find(name.c_str()) != nullptr)
            throw FileError(request.sceneFile, "the plug-in of " + name + " stays in memory");
        print("%s is unloaded\n", name.c_str());
    }
}

/// Returns what the two words of a mode are. Throws WrongUsage if there is no such mode.
char const* wordsOf(std::string const& mode) {
    if (mode.empty() || mode == "--records") return "a scene and an output folder are needed";
    if (mode == "--verify") return "a scene and one of its frames are needed";
    if (mode == "--set") return "a property file and NAME=VALUE are needed";
    throw WrongUsage(mode + ": unknown option");
}

Request requestIn(std::vector<std::string> words) {
    Request request;
    request.program = words.front();
    words.erase(words.begin());
    if (!words.empty() && words.front().rfind("--", 0) == 0) {
        request.mode = words.front();
        words.erase(words.begin());
    }
    char const* const needed = wordsOf(request.mode);
    if (words.size() != 2 || words[0].empty() || words[1].empty()) throw WrongUsage(needed);
    if (request.mode == "--set" && words[1].find('=') == std::string::npos) throw WrongUsage(needed);
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
