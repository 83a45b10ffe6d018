// A scene that is saved, and loaded by somebody who does not know what is in it.
#include <MRCommon/properties/PropertyFile.h>

#include <MRCommon/properties/BasicPpty.h>

#include "claim.h"

#include <filesystem>

using namespace quarn;

int main() {
    std::string const path =
        (std::filesystem::temp_directory_path() / "mrcommon-example-PropertyFile.props").string();
    PropertyList scene;
    scene.add(std::make_unique<PptyFloat>("gravity", -9.81f));
    scene.add(std::make_unique<PptyString>("author", "Ana M."));
    claim(saveProperties(path, scene).ok(), "the scene is saved");

    PropertyList loaded;
    FileStatus const status = loadProperties(path, loaded);
    claim(status.ok() && loaded.size() == 2, "and loaded again");
    claim(loaded.className(0) == "PptyFloat", "the file tells the classes");
    claim(*loaded.find("gravity")->getVariantValue().as<float>() == -9.81f, "the values came back");

    std::filesystem::resize_file(path, 60);
    FileStatus const damaged = loadProperties(path, loaded);
    claim(damaged.code == FileStatus::Damaged, "a file that was cut is refused");
    claim(damaged.message == path + ": checksum at byte 56: it differs from that of the file's bytes",
          "in one line that says why");
    claim(loaded.size() == 2, "and the list stays as it was");
    std::filesystem::remove(path);
}
