// SPDX-License-Identifier: MIT
//
// A Motif scrolled window that shows a part, the view, of a canvas. Both are measured in cells. It
// keeps its two scroll bars in step with them; what a cell is and how it is drawn is a subclass's.
//
// A view that fits is always inside the canvas.
#pragma once

#include "qip/Base/qipVCell.h"
#include "qip/Base/qipView.h"

class qipHorizScrollBar;
class qipVertScrollBar;

class qipScrolledWindow : public qipVCell
{
public:
    // View and canvas are empty; a subclass sets both before install().
    explicit qipScrolledWindow(const char* name);
    qipScrolledWindow(const qipScrolledWindow&) = delete;
    qipScrolledWindow& operator=(const qipScrolledWindow&) = delete;
    ~qipScrolledWindow() override;

    // Creates the scrolled window and its bars, named after the cell with "_hsb" and "_vsb"
    // appended. REQUIRES: view and canvas have a width and a height.
    void install(qipVCell* parent) override;
    const char* className() const override;

    // Shows `v`, pulled into the canvas, and moves the scroll bars. Does not draw.
    virtual void setView(qipView v);
    void viewPosition(int x, int y);
    void viewSize(int dx, int dy);

    // The canvas's size; below 1 is 1. The view is pulled into it.
    void resizeCanvas(int width, int height);

    // To a column or row, and by so many.
    virtual void horizScroll(int x);
    virtual void vertScroll(int y);
    void horizIScroll(int dx);
    void vertIScroll(int dy);

    // Draws the view. Nothing here.
    virtual void render();

    const qipView& view() const { return _view; }
    int canvasWidth() const { return _canvasWidth; }
    int canvasHeight() const { return _canvasHeight; }

protected:
    qipVertScrollBar* _vsb;  // owned, null before install()
    qipHorizScrollBar* _hsb; // owned, null before install()
    qipView _view;
    int _canvasWidth;
    int _canvasHeight;
    int _centerWhenOversize; // a canvas smaller than the view is centred in it
};
