#include "Simulation.h"

#include <MRCommon/math/DQuat.h>
#include <MRCommon/math/Geometry.h>
#include <MRCommon/math/Quat.h>
#include <MRCommon/math/Random.h>
#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/properties/PptyArrayString.h>
#include <MRCommon/properties/RangeVectPpty.h>
#include <MRCommon/properties/RgdBasicPpty.h>

#include <cmath>

using namespace quarn;

namespace {

constexpr double radiansOfDegree = 0.017453292519943295;
constexpr double emissionShare = 0.75; // of the frames, from the first
constexpr double worldSize = 1e12;     // metres from the origin, far beyond any picture
constexpr double boxBounce = 0.35, seaBounce = 0.25, seaDrag = 0.6;

Box boxOf(Properties const& scene, std::string const& name) {
    Box box{};
    box.halfSize = valueOf<Vector3<float>>(scene, name + "Size") * 0.5f;
    Vector const centre = valueOf<Vector3<double>>(scene, name + "Centre");
    double const half = valueOf<float>(scene, name + "Turn") * radiansOfDegree / 2;
    Quat const turn(0, 0, static_cast<float>(std::sin(half)), static_cast<float>(std::cos(half)));
    turn.QuatToMatrix(&box.placement); // elements x, y, z, w give the axes of the box as rows
    for (int i = 0; i < 3; ++i) {
        box.placement(i, 3) = 0;
        box.placement(3, i) = static_cast<float>(centre[i]);
    }
    box.placement(3, 3) = 1;
    box.turn = Quaternion<float>(turn.X(), turn.Y(), turn.Z(), turn.W());
    return box;
}

/// Malformed text becomes the zero identifier, so that one is refused.
ByteId firstIdOf(Properties const& scene) {
    ByteId const id(valueOf<QN_String>(scene, "firstId"));
    if (id.isZero())
        throw std::invalid_argument("firstId: no identifier in hexadecimal digits, or all of them are 0");
    return id;
}

bool isInWorld(Vector const& point) {
    return std::abs(point.x) < worldSize && std::abs(point.y) < worldSize && std::abs(point.z) < worldSize;
}

} // namespace

Settings Settings::of(Properties const& scene) {
    Settings s{};
    s.particles = valueOf<int>(scene, "particles");
    s.frames = valueOf<int>(scene, "frames");
    s.subSteps = valueOf<int>(scene, "subSteps");
    s.timeStep = valueOf<double>(scene, "timeStep");
    s.spread = valueOf<double>(scene, "spread");
    s.tilt = valueOf<float>(scene, "tilt");
    s.turn = valueOf<float>(scene, "turn") * radiansOfDegree;
    s.speed = valueOf<float>(scene, "speed");
    s.gravity = valueOf<float>(scene, "gravity");
    s.nozzle = valueOf<Vector3<double>>(scene, "nozzle");
    s.firstId = firstIdOf(scene);
    if (valueOf<bool>(scene, "collide"))
        for (QN_String const& name : valueOf<Array<QN_String>>(scene, "boxes"))
            s.boxes.push_back(boxOf(scene, name.c_str()));
    return s;
}

std::size_t Settings::particlesAt(double seconds) const {
    double const emission = emissionShare * frames * timeStep;
    return static_cast<std::size_t>(particles * std::min(seconds / emission, 1.0));
}

Simulation::Simulation(Settings settings, Accelerate accelerate)
    : settings_(std::move(settings)), accelerate_(std::move(accelerate)), nextId_(settings_.firstId) {
    particles_.reserve(static_cast<std::size_t>(settings_.particles));
    resetRandomSequence();
}

void Simulation::step() {
    double const seconds = settings_.timeStep / settings_.subSteps;
    for (int i = 0; i < settings_.subSteps; ++i) {
        time_ += seconds;
        emit(time_);
        for (Particle& particle : particles_) move(particle, seconds);
    }
}

void Simulation::emit(double until) {
    std::size_t const wanted = settings_.particlesAt(until);
    while (particles_.size() < wanted) particles_.push_back(fromNozzle(until));
}

Particle Simulation::fromNozzle(double time) {
    Particle particle{nextId_, settings_.nozzle, {}};
    nextId_.incIdFromLast8BytesAsIdx64();
    double const tilt = settings_.tilt + settings_.spread * DameRandom11();
    double const aside = settings_.spread * DameRandom11();
    DQuat const turned(Vector(0, 0, 1), settings_.turn * time);
    Vector const direction = turned * Vector(std::sin(tilt), std::sin(aside), std::cos(tilt));
    particle.velocity = direction * (settings_.speed * (0.92 + 0.08 * DameRandom()));
    return particle;
}

void Simulation::move(Particle& particle, double seconds) const {
    Vector acceleration(0, 0, settings_.gravity);
    accelerate_(time_, particle, acceleration);
    particle.velocity += acceleration * seconds;
    particle.position += particle.velocity * seconds;
    if (!isInWorld(particle.position)) // not-a-number included
        throw std::runtime_error("a particle leaves the world after " + std::to_string(time_) + " s");
    bounce(particle);
}

void Simulation::bounce(Particle& particle) const {
    Vector& velocity = particle.velocity;
    for (Box const& box : settings_.boxes) {
        Vector3<float> const point(static_cast<float>(particle.position.x),
                                   static_cast<float>(particle.position.y),
                                   static_cast<float>(particle.position.z));
        if (!IsInBox(point, -box.halfSize, box.halfSize, box.placement, box.turn)) continue;
        // The particle leaves through the nearest face and is reflected there.
        double depth = -1;
        Vector normal;
        for (int i = 0; i < 3; ++i) {
            double const along = (particle.position - box.centre()).dot(box.axis(i));
            double const below = box.halfSize[i] - std::abs(along);
            if (depth >= 0 && below >= depth) continue;
            depth = below;
            normal = box.axis(i) * (along < 0 ? -1.0 : 1.0);
        }
        particle.position += normal * depth;
        double const inwards = velocity.dot(normal);
        if (inwards < 0) velocity -= normal * ((1 + boxBounce) * inwards);
    }
    if (particle.position.z >= 0) return;
    particle.position.z = 0;
    velocity = {velocity.x * seaDrag, velocity.y * seaDrag, -seaBounce * velocity.z};
}
