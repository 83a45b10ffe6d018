// Sheet: the contact sheet of a run: frames at even distances, in rows.
//     Sheet sheet(scene, settings);
//     sheet.look(frame, simulation.particles());     // after each frame
//     sheet.save("out/sheet.png");
#ifndef FOUNTAIN_SHEET_H
#define FOUNTAIN_SHEET_H

#include "Painter.h"

class Sheet {
public:
    /// Draws the background, with its progress on the terminal.
    Sheet(Properties const& scene, Settings const& settings);

    /// Draws the frame if it is one of those on the sheet.
    void look(int frame, std::vector<Particle> const& particles);

    /// Throws FileError if the disk does not take the file.
    void save(std::string const& path) const { picture_.savePng(path); }

    ///@{
    /// Returns the bytes that a sheet of this width takes: in memory while it is drawn and saved, and in its file.
    static unsigned long long memory(long long width);
    static unsigned long long fileSize(long long width);
    ///@}

private:
    int tileWidth_, tileHeight_;
    Painter painter_;
    int frames_;
    Picture picture_;
    int drawn_ = 0;
};

#endif
