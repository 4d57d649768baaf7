// SPDX-License-Identifier: MIT
//
// The picture of a window or pixmap, to look at pixel by pixel.
#pragma once

#include <X11/Xlib.h>

#include <string>

class Pixels
{
public:
    // Takes the whole drawable, as it is now. The picture is empty when that cannot be: a window
    // has to be on the screen with all of itself, and the connection must survive errors.
    Pixels(Display* display, Drawable drawable);
    ~Pixels();
    Pixels(const Pixels&) = delete;
    Pixels& operator=(const Pixels&) = delete;

    int width() const { return _image == nullptr ? 0 : _image->width; }
    int height() const { return _image == nullptr ? 0 : _image->height; }
    unsigned long at(int x, int y) const;

    // How many pixels from (x, y) to the right or down have the colour `pixel`.
    int runRight(int x, int y, unsigned long pixel) const;
    int runDown(int x, int y, unsigned long pixel) const;
    // The first x from `x` on in row `y` that has the colour; -1 when there is none.
    int find(int x, int y, unsigned long pixel) const;
    // How many pixels of a rectangle have the colour.
    int count(int x, int y, int width, int height, unsigned long pixel) const;

    // Writes a PNG file; directories on the way are made. False when that fails.
    bool save(const std::string& path) const;

private:
    XImage* _image;
};

// Saves a picture of the window as screenshots/NAME.png in the build tree, for people to look at.
void saveScreenshot(Display* display, Window window, const std::string& name);
