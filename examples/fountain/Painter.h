// Painter: the harbour at dusk: sky, sea, boxes, and the water of one frame in front of them.
//     Painter const painter(Look::of(scene), settings.boxes, 400, 300, [](int) {});
//     Picture const tile = painter.paint(simulation.particles(), 24);
#ifndef FOUNTAIN_PAINTER_H
#define FOUNTAIN_PAINTER_H

#include "Picture.h"
#include "Simulation.h"

#include <functional>
#include <vector>

/// The drawing's part of a scene.
struct Look {
    Vector camera;
    Light water, foam;
    int dotsPerStreak;
    double exposure; ///< seconds that a streak shows

    /// Throws std::invalid_argument, which names the first property that is missing or wrong.
    static Look of(Properties const& scene);
};

class Painter {
public:
    /// Paints the background, which is the same for all frames. Calls `rowDone` with the number of rows after each.
    Painter(Look look, std::vector<Box> boxes, int width, int height,
            std::function<void(int)> const& rowDone);

    /// Returns the background with the particles in front of it, and the number of the frame in a corner.
    Picture paint(std::vector<Particle> const& particles, int frame) const;

private:
    struct Hit {
        double distance;
        Light light;
        bool sea;
    };
    struct Spot {
        double x, y, distance;
    };

    Vector rayThrough(double x, double y) const;
    Hit hit(Vector const& from, Vector const& ray, bool mirrored) const;
    void hitBox(Box const& box, Vector const& from, Vector const& ray, Hit& nearest) const;
    Spot spotOf(Vector const& point) const;
    void dot(Picture& picture, Vector const& point, Light const& light, bool inTheSea) const;

    Look look_;
    std::vector<Box> boxes_;
    Vector forward_, right_, up_;
    double focal_;
    Picture background_;
    std::vector<double> distance_; ///< of what the background shows, pixel by pixel
    std::vector<bool> sea_;        ///< whether it is the sea
};

#endif
