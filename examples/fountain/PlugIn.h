// PlugIn: the two functions with C names that a plug-in of the fountain defines.
//     extern "C" char const* fountainSettingsClass();      // the property class by which a scene sets it up
//     extern "C" void fountainAccelerate(...);             // the acceleration that it adds to a particle
// A plug-in registers its property class while it is loaded. It hides all other symbols, since a symbol that another
// library uses would keep the plug-in in memory after it is unloaded.
#ifndef FOUNTAIN_PLUGIN_H
#define FOUNTAIN_PLUGIN_H

#include <MRCommon/basic/Vector3.h>
#include <MRCommon/properties/Ppty.h>

/// Adds to `acceleration` (metres a second squared) of a particle at `position` with `velocity` (metres, metres a
/// second), `time` seconds after the start. `settings` is a property of the plug-in's class.
extern "C" __attribute__((visibility("default"))) void
fountainAccelerate(quarn::Ppty const& settings, double time, quarn::Vector3<double> const& position,
                   quarn::Vector3<double> const& velocity, quarn::Vector3<double>& acceleration);

/// Returns the name under which the plug-in registers its property class.
extern "C" __attribute__((visibility("default"))) char const* fountainSettingsClass();

#endif
