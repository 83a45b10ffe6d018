// LoadedPlugIn: a plug-in in memory, from its making to its end.
//     LoadedPlugIn wind("./libfountain_wind.so");          // its property class is registered now
// Whatever the plug-in made, its properties first of all, must be gone before it is.
#ifndef FOUNTAIN_LOADEDPLUGIN_H
#define FOUNTAIN_LOADEDPLUGIN_H

#include "PlugIn.h"

#include <memory>
#include <string>

class LoadedPlugIn {
public:
    /// std::invalid_argument when there is no such library, or one that offers something else.
    explicit LoadedPlugIn(std::string const& path);

    std::string settingsClass() const { return settingsClass_(); }

    void accelerate(quarn::Ppty const& settings, double time, quarn::Vector3<double> const& position,
                    quarn::Vector3<double> const& velocity, quarn::Vector3<double>& acceleration) const {
        accelerate_(settings, time, position, velocity, acceleration);
    }

private:
    struct Unload {
        void operator()(void* library) const;
    };

    std::unique_ptr<void, Unload> library_;
    decltype(&fountainSettingsClass) settingsClass_ = nullptr;
    decltype(&fountainAccelerate) accelerate_ = nullptr;
};

#endif
