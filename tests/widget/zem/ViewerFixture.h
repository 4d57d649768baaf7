// SPDX-License-Identifier: MIT
//
// A window in which a test shows one text canvas and reads back what is drawn.
#pragma once

#include "tests/support/gtest_x.h"

#include "qip/Components/qipCanvas.h"
#include "tests/support/CellWindow.h"
#include "tests/support/Pixels.h"
#include "tests/support/TempDir.h"
#include "tests/support/XtFixture.h"

#include <memory>
#include <string>

class ViewerFixture : public XtFixture
{
protected:
    ~ViewerFixture() override;

    // Shows `canvas` in a window of its own and waits until it is drawn.
    void show(qipCanvas& canvas);

    // How many pixels of a rectangle of the drawing area have the colour.
    int count(const qipCanvas& canvas, int x, int y, int width, int height, Pixel color) const;

    // The text at a row and column of the drawing area, read by comparing its pixels with those of
    // each character in the font "Fixed". A blank where no character fits.
    std::string text(const qipCanvas& canvas, int row, int column, int length, Pixel color) const;

    // The pixel of a named colour.
    Pixel color(const char* name) const;

    TempDir _files;
    std::unique_ptr<CellWindow> _window;
};
