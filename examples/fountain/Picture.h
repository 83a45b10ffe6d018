// Picture: light summed up in pixels, and saved as a PNG file.
//     Picture picture(640, 480);
//     picture.at(3, 4) += {0.2, 0.4, 0.9};
//     picture.savePng("sheet.png");
#ifndef FOUNTAIN_PICTURE_H
#define FOUNTAIN_PICTURE_H

#include <MRCommon/basic/Vector3.h>

#include <string>
#include <vector>

using Light = quarn::Vector3<double>; ///< red, green, blue; 0 is dark, without an upper limit

class Picture {
public:
    Picture(int width, int height);

    int width() const { return width_; }
    int height() const { return height_; }
    Light& at(int x, int y) { return pixels_[index(x, y)]; } ///< (0, 0) is the upper left
    Light const& at(int x, int y) const { return pixels_[index(x, y)]; }

    /// Copies another picture to (left, top). Precondition: all of it fits.
    void place(Picture const& other, int left, int top);

    /// Writes 8-bit RGB; light is compressed into the range, not clipped. Throws FileError if the disk does not take
    /// the file.
    void savePng(std::string const& path) const;

private:
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x);
    }

    int width_, height_;
    std::vector<Light> pixels_;
};

#endif
