#include "Painter.h"

#include <MRCommon/basic/Color4.h>
#include <MRCommon/properties/PptyEnum.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double farAway = 1e9;
constexpr double viewAngle = 0.62; // height of the picture over distance
Vector const lookedAt(0.1, 0.8, 2.3);
Vector const towardsSun(-0.816, 0.571, 0.087);  // low, beyond the wall
Vector const towardsLamp(0.169, -0.845, 0.507); // from the quay near the camera; both of length 1

Vector unit(Vector const& v) { return v * (1 / v.length()); }

Light mixed(Light const& a, Light const& b, double share) { return a * (1 - share) + b * share; }

Light sky(Vector const& ray) {
    double const height = std::max(ray.z, 0.0);
    double const sun = std::max(ray.dot(towardsSun), 0.0);
    Light const air =
        mixed({0.42, 0.17, 0.09}, {0.012, 0.026, 0.075}, std::pow(std::min(height * 3.6, 1.0), 0.7));
    return air + Light(0.9, 0.40, 0.12) * (0.30 * std::pow(sun, 14));
}

/// Returns fifteen pixels, three per row from top to bottom, the first in the highest bit.
unsigned int rowsOfDigit(int digit) {
    constexpr unsigned int rows[10] = {0x7B6F, 0x2C97, 0x73E7, 0x73CF, 0x5BC9,
                                       0x79CF, 0x79EF, 0x7249, 0x7BEF, 0x7BCF};
    return rows[digit];
}

void writeNumber(Picture& picture, int number, int left, int top, int scale) {
    for (char const c : std::to_string(number)) {
        for (int i = 0; i < 15 * scale * scale; ++i) {
            int const x = i % (3 * scale), y = i / (3 * scale);
            if (rowsOfDigit(c - '0') >> (14 - (y / scale * 3 + x / scale)) & 1)
                picture.at(left + x, top + y) += {0.5, 0.45, 0.4};
        }
        left += 4 * scale;
    }
}

} // namespace

Look Look::of(Properties const& scene) {
    auto const& camera = valueOf<quarn::Vector3<float>>(scene, "camera");
    if (camera.z < 0.1f || std::hypot(camera.x - lookedAt.x, camera.y - lookedAt.y) < 0.1)
        throw std::invalid_argument(
            "camera: must be at least 0.1 m above the sea, and as far from x, y = 0.1, 0.8");
    auto const& water = valueOf<quarn::Color4<float>>(scene, "water");
    auto const& foam = valueOf<quarn::Color4<double>>(scene, "foam");
    return {{camera.x, camera.y, camera.z},
            Light(water.r, water.g, water.b) * water.a,
            Light(foam.r, foam.g, foam.b) * foam.a,
            valueOf<int>(scene, "drawing"),
            valueOf<double>(scene, "timeStep")};
}

Painter::Painter(Look look, std::vector<Box> boxes, int width, int height,
                 std::function<void(int)> const& rowDone)
    : look_(look), boxes_(std::move(boxes)), forward_(unit(lookedAt - look.camera)),
      right_(unit(forward_.cross({0, 0, 1}))), up_(right_.cross(forward_)), focal_(height / viewAngle),
      background_(width, height) {
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            Hit const seen = hit(look_.camera, rayThrough(x + 0.5, y + 0.5), false);
            background_.at(x, y) = seen.light;
            distance_.push_back(seen.distance);
            sea_.push_back(seen.sea);
        }
        rowDone(y + 1);
    }
}

Vector Painter::rayThrough(double x, double y) const {
    return unit(forward_ * focal_ + right_ * (x - background_.width() / 2.0) -
                up_ * (y - background_.height() / 2.0));
}

/// Returns what a ray hits first. The sea reflects once.
Painter::Hit Painter::hit(Vector const& from, Vector const& ray, bool mirrored) const {
    Hit nearest{farAway, sky(ray), false};
    for (Box const& box : boxes_) hitBox(box, from, ray, nearest);
    double const toSea = ray.z < 0 ? -from.z / ray.z : farAway;
    if (mirrored || toSea >= nearest.distance) return nearest;
    Vector const point = from + ray * toSea;
    double const ripple =
        0.012 * std::sin(3.1 * point.x + 2.3 * std::sin(1.7 * point.y)) * std::exp(-0.03 * toSea);
    Light const mirror =
        hit(point + Vector(0, 0, 1e-6), unit({ray.x + ripple, ray.y, -ray.z + ripple}), true).light;
    double const grazing = std::pow(1 + ray.z, 3.0); // a flat view reflects more of the sky
    return {toSea, look_.water * 0.06 + mirror * (0.25 + 0.6 * grazing), true};
}

/// Intersects a ray with the three pairs of faces of a box. Replaces `nearest` if the box is hit before it.
void Painter::hitBox(Box const& box, Vector const& from, Vector const& ray, Hit& nearest) const {
    double enter = 1e-9, leave = nearest.distance;
    Vector normal(0, 0, 0);
    for (int i = 0; i < 3; ++i) {
        Vector const axis = box.axis(i);
        double const speed = ray.dot(axis), start = (from - box.centre()).dot(axis), half = box.halfSize[i];
        if (std::abs(speed) < 1e-12) {
            if (std::abs(start) > half) return;
            continue;
        }
        double const side = speed > 0 ? -1.0 : 1.0;
        double const in = (side * half - start) / speed, out = (-side * half - start) / speed;
        if (in > enter) {
            enter = in;
            normal = axis * side;
        }
        leave = std::min(leave, out);
    }
    if (enter >= leave || normal == Vector(0, 0, 0)) return;
    double const sun = std::max(normal.dot(towardsSun), 0.0), lamp = std::max(normal.dot(towardsLamp), 0.0);
    Light const stone(0.34, 0.31, 0.29);
    Light const arriving =
        Light(1.6, 0.7, 0.3) * sun + Light(0.26, 0.30, 0.36) * lamp + Light(0.05, 0.06, 0.10);
    nearest = {enter, {stone.x * arriving.x, stone.y * arriving.y, stone.z * arriving.z}, false};
}

Painter::Spot Painter::spotOf(Vector const& point) const {
    Vector const away = point - look_.camera;
    double const depth = away.dot(forward_);
    return {background_.width() / 2.0 + focal_ * away.dot(right_) / depth,
            background_.height() / 2.0 - focal_ * away.dot(up_) / depth, depth > 0.1 ? away.length() : -1};
}

/// Adds a soft dot of light unless something is in front of it, or its reflection in the sea.
void Painter::dot(Picture& picture, Vector const& point, Light const& light, bool inTheSea) const {
    Spot const spot = spotOf(inTheSea ? Vector(point.x, point.y, -point.z) : point);
    double const margin = focal_; // more than a dot covers; a spot further out may not fit an int
    if (spot.distance < 0 || spot.x < -margin || spot.x > picture.width() + margin || spot.y < -margin ||
        spot.y > picture.height() + margin)
        return;
    double const radius = std::max(0.035 * focal_ / spot.distance, 0.6);
    int const reach = static_cast<int>(std::ceil(2 * radius));
    int const middleX = static_cast<int>(spot.x), middleY = static_cast<int>(spot.y);
    for (int y = std::max(middleY - reach, 0); y <= std::min(middleY + reach, picture.height() - 1); ++y)
        for (int x = std::max(middleX - reach, 0); x <= std::min(middleX + reach, picture.width() - 1); ++x) {
            auto const pixel = static_cast<std::size_t>(y * picture.width() + x);
            if (inTheSea ? !sea_[pixel] : distance_[pixel] < spot.distance) continue;
            double const dx = (x + 0.5 - spot.x) / radius, dy = (y + 0.5 - spot.y) / radius;
            picture.at(x, y) += light * std::exp(-(dx * dx + dy * dy));
        }
}

Picture Painter::paint(std::vector<Particle> const& particles, int frame) const {
    Picture picture = background_;
    double const share = 0.30 / look_.dotsPerStreak;
    for (Particle const& particle : particles) {
        double const speed = particle.velocity.length();
        Light const light = mixed(look_.foam, look_.water * 1.6, std::min(speed / 11, 1.0));
        for (int i = 0; i < look_.dotsPerStreak; ++i) {
            Vector const point =
                particle.position - particle.velocity * (look_.exposure * i / look_.dotsPerStreak);
            if (point.z < 0) continue;
            dot(picture, point, light * share, false);
            dot(picture, point, light * (0.35 * share), true);
        }
    }
    writeNumber(picture, frame, 10, 10, 3);
    return picture;
}
