// Simulation: water out of a turning nozzle, falling on oriented boxes and on the sea.
//     Simulation fountain(Settings::of(scene), accelerate);
//     for (int frame = 0; frame < n; ++frame) fountain.step();
// The same settings give the same particles to the last bit, since each simulation restarts the random sequence.
#ifndef FOUNTAIN_SIMULATION_H
#define FOUNTAIN_SIMULATION_H

#include "Scene.h"

#include <MRCommon/basic/Matrix4.h>
#include <MRCommon/basic/Quaternion.h>
#include <MRCommon/basic/Vector3.h>
#include <MRCommon/system/ByteId.h>

#include <functional>
#include <string>
#include <vector>

using Vector = quarn::Vector3<double>;

/// A box with its rotation and its place in the world.
struct Box {
    quarn::Vector3<float> halfSize;
    quarn::Matrix4<float>
        placement; ///< row vectors: rows 0 to 2 are the box's axes in the world, row 3 its centre
    quarn::Quaternion<float> turn;

    Vector axis(int i) const { return {placement(i, 0), placement(i, 1), placement(i, 2)}; }
    Vector centre() const { return axis(3); }
};

/// The simulation's part of a scene, in metres, seconds and radians.
struct Settings {
    int particles, frames, subSteps;
    double timeStep, spread, tilt, turn, speed, gravity;
    Vector nozzle;
    quarn::ByteId firstId;
    std::vector<Box> boxes; ///< empty if the scene turns collisions off

    /// Throws std::invalid_argument, which names the first property that is missing or wrong.
    static Settings of(Properties const& scene);

    /// Returns how many particles have left the nozzle by then.
    std::size_t particlesAt(double seconds) const;
};

struct Particle {
    quarn::ByteId id;
    Vector position, velocity;
};

/// Adds to the acceleration of a particle at a time.
using Accelerate = std::function<void(double time, Particle const& particle, Vector& acceleration)>;

class Simulation {
public:
    Simulation(Settings settings, Accelerate accelerate);

    /// Advances by one frame. Throws std::runtime_error if a particle leaves the world, which a plug-in can cause.
    void step();

    std::vector<Particle> const& particles() const { return particles_; }

private:
    void emit(double until);
    Particle fromNozzle(double time);
    void move(Particle& particle, double seconds) const;
    void bounce(Particle& particle) const;

    Settings settings_;
    Accelerate accelerate_;
    std::vector<Particle> particles_;
    quarn::ByteId nextId_;
    double time_ = 0;
};

#endif
