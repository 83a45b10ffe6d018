#include "Sheet.h"

#include "Progress.h"

namespace {

constexpr int columns = 4, rows = 3, tiles = columns * rows;

int tileWidthOf(long long sheetWidth) { return static_cast<int>(sheetWidth) / columns; }
int tileHeightOf(long long sheetWidth) { return tileWidthOf(sheetWidth) * 3 / 4; }

unsigned long long pixelsOf(long long sheetWidth) {
    return static_cast<unsigned long long>(tileWidthOf(sheetWidth)) *
           static_cast<unsigned long long>(tileHeightOf(sheetWidth)) * tiles;
}

Painter painterOf(Properties const& scene, Settings const& settings, int width, int height) {
    Progress progress("drawing", height);
    return Painter(Look::of(scene), settings.boxes, width, height,
                   [&](int rowsDone) { progress.reached(rowsDone); });
}

} // namespace

Sheet::Sheet(Properties const& scene, Settings const& settings)
    : tileWidth_(tileWidthOf(valueOf<long long>(scene, "pictureSize"))),
      tileHeight_(tileHeightOf(valueOf<long long>(scene, "pictureSize"))),
      painter_(painterOf(scene, settings, tileWidth_, tileHeight_)), frames_(settings.frames),
      picture_(tileWidth_ * columns, tileHeight_ * rows) {}

void Sheet::look(int frame, std::vector<Particle> const& particles) {
    if (drawn_ == tiles || frame * tiles < (drawn_ + 1) * frames_) return;
    picture_.place(painter_.paint(particles, frame), drawn_ % columns * tileWidth_,
                   drawn_ / columns * tileHeight_);
    ++drawn_;
}

unsigned long long Sheet::memory(long long width) {
    constexpr std::size_t file = 5 * 3; // five copies while the file is put together
    constexpr std::size_t tile = 2 * sizeof(Light) + sizeof(double); // background, copy of it, distances
    return pixelsOf(width) * (sizeof(Light) + file + tile / tiles + 1);
}

unsigned long long Sheet::fileSize(long long width) {
    constexpr unsigned long long headers =
        65536; // rounded up; those of the blocks take less than 1 in 10,000
    unsigned long long const raw = pixelsOf(width) * 3;
    return raw + raw / 10000 + headers;
}
