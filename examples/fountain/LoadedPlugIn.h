// LoadedPlugIn: a plug-in in memory for as long as the object lives.
//     LoadedPlugIn wind("./libfountain_wind.so");          // its property class is registered now
// Everything that the plug-in created, such as its properties, must be destroyed before.
#ifndef FOUNTAIN_LOADEDPLUGIN_H
#define FOUNTAIN_LOADEDPLUGIN_H

#include "PlugIn.h"

#include <memory>
#include <string>

class LoadedPlugIn {
public:
    /// Throws std::invalid_argument if the library cannot be opened or lacks one of the two functions.
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
