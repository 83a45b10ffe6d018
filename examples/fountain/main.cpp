// fountain: the example host: a small particle simulation around the library.
//     fountain <scene> <folder>             simulates the scene into the folder: records, frames, contact sheet
//     fountain --verify <scene> <frame>     reloads the whole sequence of a frame file and checks it against a new run
//     fountain --records <scene> <folder>   only reads the scene and keeps it in records of both stream kinds
// What is wrong with a scene or a file is told in one line on the standard error stream, with exit status 2.
#include "Frames.h"
#include "LoadedPlugIn.h"
#include "Painter.h"
#include "Progress.h"
#include "RecordFile.h"
#include "Scene.h"
#include "SceneValue.h"
#include "Simulation.h"
#include "WorkSpaceHost.h"

#include <MRCommon/frames/FileNameStitcher.h>
#include <MRCommon/properties/PptyEnum.h>
#include <MRCommon/streams/StreamEncoding.h>
#include <MRCommon/system/Paths.h>

#include <cstdio>
#include <iostream>

using namespace quarn;

namespace {

constexpr unsigned int currentVersion = 5088; // of the workspace data that this application writes
constexpr unsigned int oldVersion = 5087;     // the last whose enumerations had no label of their own
constexpr int sheetColumns = 4, sheetRows = 3;

#ifdef __APPLE__
constexpr char const* libraryEnding = ".dylib";
#else
constexpr char const* libraryEnding = ".so";
#endif

/// A scene with the plug-ins that it names; they outlive its properties, some of which are theirs.
struct Stage {
    std::vector<LoadedPlugIn> plugIns;
    Properties scene;
};

std::string folderOf(std::string const& path) {
    std::string folder = path;
    char const* file = nullptr;
    return GetFullPathName2(path.c_str(), 0, folder.data(), &file) == 0 ? "." : folder.c_str();
}

/// A plug-in named without a folder lies beside the program.
std::string plugInFile(std::string const& name, std::string const& program) {
    if (name.find('/') != std::string::npos) return name;
    return folderOf(program) + "/lib" + name + libraryEnding;
}

Stage readStage(std::string const& sceneFile, std::string const& program) {
    Stage stage;
    stage.scene = readScene(sceneFile, [&](Ppty const& property) {
        if (property.getName() != "plugIn") return;
        stage.plugIns.emplace_back(plugInFile(property.toStr().c_str(), program));
    });
    return stage;
}

/// All properties that set up plug-ins, each with the plug-in that it is for.
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
    if (!makeSurePathExists(folder.c_str())) throw FileError(folder, "cannot be made");
}

std::string bytesOf(std::string const& path) {
    OpenFile const file = openToRead(path);
    std::string bytes;
    for (int c; (c = std::fgetc(file.get())) != EOF;) bytes += static_cast<char>(c);
    return bytes;
}

/// Loads the raw file into fresh properties and writes those again: not a byte may differ.
void checkRoundTrip(std::string const& path, Properties const& scene) {
    Properties loaded;
    for (Property const& property : scene)
        loaded.push_back(makeProperty(property->getClassName().c_str(), property->getName().c_str()));
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

/// Writes an enumeration's record as applications up to version 5087 did: index and table, the label left out.
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
        if (file == nullptr) throw FileError("a temporary file", "cannot be made");
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

void keepRecords(Properties const& scene, std::string const& folder) {
    makeFolder(folder);
    long const rawBytes = writeRecords<FileStreamRaw>(folder + "/scene.raw", scene);
    long const endianBytes = writeRecords<FileStreamEndian>(folder + "/scene.endian", scene);
    checkRoundTrip(folder + "/scene.raw", scene);
    printTable(scene);
    for (Property const& property : scene)
        if (auto const* const choice = dynamic_cast<PptyEnum const*>(property.get())) showLayouts(*choice);
    std::printf("%zu properties, %ld bytes raw, %ld bytes byte-order-aware, reloaded without a difference\n",
                scene.size(), rawBytes, endianBytes);
}

/// The contact sheet of a run: frames at even distances, in rows.
class Sheet {
public:
    Sheet(Properties const& scene, Settings const& settings)
        : tileWidth_(static_cast<int>(valueOf<long long>(scene, "pictureSize")) / sheetColumns),
          painter_(Look::of(scene), settings.boxes, tileWidth_, tileWidth_ * 3 / 4), frames_(settings.frames),
          picture_(tileWidth_ * sheetColumns, tileWidth_ * 3 / 4 * sheetRows) {}

    void look(int frame, std::vector<Particle> const& particles) {
        constexpr int tiles = sheetColumns * sheetRows;
        if (taken_ == tiles || frame * tiles < (taken_ + 1) * frames_) return;
        picture_.place(painter_.paint(particles, frame), taken_ % sheetColumns * tileWidth_,
                       taken_ / sheetColumns * (tileWidth_ * 3 / 4));
        ++taken_;
    }

    void save(std::string const& path) const { picture_.savePng(path); }

private:
    int tileWidth_;
    Painter painter_;
    int frames_;
    Picture picture_;
    int taken_ = 0;
};

void simulate(Stage const& stage, std::string const& folder) {
    Settings const settings = Settings::of(stage.scene);
    Simulation simulation(settings, accelerationOf(stage));
    Sheet sheet(stage.scene, settings);
    FrameRecord record;
    keepRecords(stage.scene, folder);

    FileNameStitcher& names = FileNameStitcher::instance();
    names.setSceneName("harbour.scene");
    names.prefix = folder + "/" + valueOf<QN_String>(stage.scene, "cache").c_str() + "/$(SCENENAME)_";
    makeFolder(folderOf(names.prefix));

    long long bytes = 0;
    Progress progress("simulating", settings.frames);
    for (int frame = 1; frame <= settings.frames; ++frame) {
        simulation.step();
        bytes += record.write(names.doIt("fountain", frame, "rec"), simulation.particles());
        if (bytes > valueOf<long long>(stage.scene, "diskLimit"))
            throw FileError(folder, "the frames outgrow the scene's diskLimit");
        sheet.look(frame, simulation.particles());
        progress.reached(frame);
    }
    sheet.save(folder + "/sheet.png");
    std::printf("%d frames of up to %zu particles, %lld bytes, first %s\n", settings.frames,
                simulation.particles().size(), bytes, names.doIt("fountain", 1, "rec").c_str());
    std::printf("contact sheet: %s/sheet.png\n", folder.c_str());
}

/// Reloads every frame of the sequence into the same properties and compares each with a second run.
void verify(Stage const& stage, std::string const& anyFrame) {
    Settings const settings = Settings::of(stage.scene);
    FrameRange const range = FrameRange::around(anyFrame);
    Simulation simulation(settings, accelerationOf(stage));
    FrameRecord record;
    Progress progress("verifying", settings.frames);
    for (int frame = 1; frame <= static_cast<int>(range.last); ++frame) {
        simulation.step();
        std::string const path = range.path(static_cast<unsigned int>(frame));
        record.read(path);
        if (!record.holds(simulation.particles()))
            throw FileError(path, "differs from a new run of the scene");
        progress.reached(frame);
    }
    std::printf("frames %u to %u, reloaded and equal to a new run\n", range.first, range.last);
}

/// Runs one mode and lets the plug-ins go; afterwards the registry must not know their classes any more.
void run(std::string const& program, std::string const& mode, std::string const& sceneFile,
         std::string const& target) {
    WorkSpaceHost const host(currentVersion);
    std::vector<std::string> borrowed;
    {
        Stage const stage = readStage(sceneFile, program);
        for (LoadedPlugIn const& plugIn : stage.plugIns) borrowed.push_back(plugIn.settingsClass());
        if (mode == "--verify")
            verify(stage, target);
        else if (mode == "--records")
            keepRecords(stage.scene, target);
        else
            simulate(stage, target);
    }
    for (std::string const& name : borrowed) {
        bool const gone = QN_MetaClassBase::find(name.c_str()) == nullptr;
        std::printf("%s %s unloaded\n", name.c_str(), gone ? "is" : "could not be");
        if (!gone) throw FileError(program, "a plug-in stays in memory");
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::vector<std::string> const words(arguments + 1, arguments + argumentCount);
    bool const hasMode = words.size() == 3 && (words[0] == "--verify" || words[0] == "--records");
    if (words.size() != 2 && !hasMode) {
        std::cerr << "usage: fountain [--records] <scene file> <output folder>\n"
                     "       fountain --verify <scene file> <frame file>\n";
        return 2;
    }
    try {
        run(arguments[0], hasMode ? words.front() : "", words[words.size() - 2], words.back());
    } catch (std::exception const& error) {
        std::cerr << error.what() << "\n";
        return 2;
    }
    return 0;
}
