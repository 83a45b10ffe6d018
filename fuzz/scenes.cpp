// Scenes: a scene that is accepted keeps its values when its own texts are read again, and as a property file.
//     all of it    a scene file
#include "examples/fountain/Scene.h"
#include "examples/fountain/SceneValue.h"
#include "Input.h"
#include "support/TempDir.h"

#include <MRCommon/text/StringTools.h>

using namespace quarn;

namespace {

Properties sceneAt(std::string const& path) {
    std::size_t seen = 0;
    Properties scene = readScene(path, [&](Ppty const&) { ++seen; });
    require(seen == scene.size(), "every property is seen");
    return scene;
}

Properties sceneIn(std::string const& text) {
    std::string const path = scratch().path("scene");
    store(path, text);
    return sceneAt(path);
}

/// The value as a scene file has it; empty where the text for people differs in more than punctuation.
std::string sceneText(Ppty const& property) {
    std::string text = valueText(property);
    switch (property.getType()) {
    case Ppty::TYPE_ENUM: return {};
    case Ppty::TYPE_ARRAY_STRING:
    case Ppty::TYPE_STRING:
    case Ppty::TYPE_FILE:
    case Ppty::TYPE_DIRECTORY: return text;
    default: break;
    }
    for (char const* mark : {" in ", " .. ", "(", ")", ","}) text = StringTools::replace_all(text, mark, " ");
    return text;
}

void requireSameAgain(Properties const& scene) {
    std::string text;
    for (std::size_t i = 0; i < scene.size(); ++i) {
        Ppty const& property = *scene.property(i);
        std::string const value = sceneText(property);
        if (!value.empty())
            text += scene.className(i) + '\t' + property.getName().c_str() + ' ' + value + '\n';
    }
    Properties const again = sceneIn(text);
    for (std::size_t i = 0; i < again.size(); ++i) {
        Ppty const& property = *again.property(i);
        require(property.getName() == "plugIn" ||
                    valueText(property) == valueText(*scene.find(property.getName())),
                "a value is read again from its own text");
    }
}

void requireSavedAlike(Properties const& scene) {
    std::string const path = scratch().path("scene.props");
    saveScene(path, scene);
    Properties const again = sceneAt(path);
    require(again.size() == scene.size(), "every property is saved");
    for (std::size_t i = 0; i < scene.size(); ++i)
        require(scene.className(i) == again.className(i) &&
                    scene.property(i)->getName() == again.property(i)->getName() &&
                    valueText(*scene.property(i)) == valueText(*again.property(i)) &&
                    libraryText(*scene.property(i)) == libraryText(*again.property(i)),
                "a value is saved and loaded");
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Properties scene;
    try {
        scene = sceneIn(std::string(Input(data, size).rest()));
    } catch (FileError const& error) {
        std::string_view const fault = error.what();
        require(fault.find(scratch().path("scene:")) == 0, "a fault has a place");
        require(fault.find('\n') == fault.npos, "a fault is one line");
        return 0;
    } catch (std::runtime_error const&) {
        require(size > 1 << 20, "only a scene that is too large is refused as a whole");
        return 0;
    }
    requireSameAgain(scene);
    requireSavedAlike(scene);
    return 0;
}
