// Properties of any kind through their base.
#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/properties/Ppty.h>

#include "claim.h"

#include <memory>
#include <vector>

using namespace quarn;

int main() {
    std::vector<std::unique_ptr<Ppty>> scene;
    scene.emplace_back(new PptyInt("frames", 60));
    scene.emplace_back(new PptyString("title", "The fountain"));

    std::FILE* const file = std::tmpfile();
    claim(file != nullptr, "a temporary file");
    FileStreamRaw stream(file);
    for (auto const& property : scene) property->writeTo(stream);
    claim(stream.finish(), "all records are written");
    std::rewind(file);

    for (auto const& property : scene) {
        std::unique_ptr<Ppty> const loaded(property->clone());
        loaded->readFrom(stream);
        claim(loaded->getName() == property->getName() && loaded->toStr() == property->toStr(),
              "saved and loaded");
    }
    claim(scene[0]->setValue(ItemVariant(61)) && scene[0]->toStr() == " 61 ", "set from a variant");
    std::fclose(file);
}
