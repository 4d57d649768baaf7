// SPDX-License-Identifier: MIT
//
// A window of its own virtual display in which a test installs one canvas, draws it and reads its
// pixels back. One test case a process: the toolkit does not start twice.
#pragma once

#include "tests/support/gtest_x.h"

#include "qip/Components/qipApplication.h"
#include "qip/Components/qipCanvas.h"
#include "qip/Components/qipWindow.h"
#include "tests/support/TempDir.h"

#include <X11/Xutil.h>

#include <functional>
#include <memory>
#include <string>
#include <sys/types.h>

class ViewerFixture : public testing::Test
{
protected:
    ~ViewerFixture() override;

    void SetUp() override;
    void TearDown() override;

    // Shows `canvas` in a window of its own and waits until it is drawn.
    void show(qipCanvas& canvas);

    // Handles events until `done` holds; a failure when that takes longer than ten seconds.
    void waitFor(const std::function<bool()>& done);

    // Handles what has arrived and has the server draw.
    void settle();

    // The colour of a pixel of the canvas's drawing area.
    Pixel pixel(const qipCanvas& canvas, int x, int y) const;

    // How many pixels of a rectangle have the colour.
    int count(const qipCanvas& canvas, int x, int y, int width, int height, Pixel color) const;

    // The text at a row and column of the drawing area, read by comparing its pixels with those of
    // each character in the canvas's font. A blank where no character fits.
    std::string text(const qipCanvas& canvas, int row, int column, int length, Pixel color) const;

    // The pixel of a named colour.
    Pixel color(const char* name) const;

    TempDir _files;
    std::unique_ptr<qipApplication> _app;
    std::unique_ptr<qipWindow> _window;

private:
    pid_t _server = 0;
};
