// SPDX-License-Identifier: MIT
#include "tests/support/Pixels.h"

#include <X11/Xutil.h>
#include <png.h>

#include <cstdio>
#include <filesystem>
#include <vector>

Pixels::Pixels(Display* display, Drawable drawable) : _image(nullptr)
{
    Window root = 0;
    int x = 0;
    int y = 0;
    unsigned width = 0;
    unsigned height = 0;
    unsigned border = 0;
    unsigned depth = 0;
    if (XGetGeometry(display, drawable, &root, &x, &y, &width, &height, &border, &depth) != 0) {
        _image = XGetImage(display, drawable, 0, 0, width, height, AllPlanes, ZPixmap);
    }
}

Pixels::~Pixels()
{
    if (_image != nullptr) {
        XDestroyImage(_image);
    }
}

unsigned long Pixels::at(int x, int y) const
{
    return XGetPixel(_image, x, y);
}

int Pixels::runRight(int x, int y, unsigned long pixel) const
{
    int n = 0;
    while (x + n < width() && at(x + n, y) == pixel) {
        ++n;
    }
    return n;
}

int Pixels::runDown(int x, int y, unsigned long pixel) const
{
    int n = 0;
    while (y + n < height() && at(x, y + n) == pixel) {
        ++n;
    }
    return n;
}

int Pixels::find(int x, int y, unsigned long pixel) const
{
    for (; x < width(); ++x) {
        if (at(x, y) == pixel) {
            return x;
        }
    }
    return -1;
}

int Pixels::count(int x, int y, int width, int height, unsigned long pixel) const
{
    int n = 0;
    for (int j = y; j < y + height; ++j) {
        for (int i = x; i < x + width; ++i) {
            n += at(i, j) == pixel;
        }
    }
    return n;
}

bool Pixels::save(const std::string& path) const
{
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    // True colour, 8 bits a channel: what the tests' display has.
    std::vector<unsigned char> bytes;
    for (int y = 0; y < height(); ++y) {
        for (int x = 0; x < width(); ++x) {
            const unsigned long pixel = at(x, y);
            bytes.push_back(static_cast<unsigned char>(pixel >> 16));
            bytes.push_back(static_cast<unsigned char>(pixel >> 8));
            bytes.push_back(static_cast<unsigned char>(pixel));
        }
    }
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width());
    image.height = static_cast<png_uint_32>(height());
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_file(&image, path.c_str(), 0, bytes.data(), 0, nullptr) != 0;
}

void saveScreenshot(Display* display, Window window, const std::string& name)
{
    XSync(display, False);
    Pixels(display, window).save(std::string(ZEM_BINARY_DIR) + "/screenshots/" + name + ".png");
}
