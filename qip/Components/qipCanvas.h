// SPDX-License-Identifier: MIT
//
// A scrolled window that one draws in. An expose or a resize makes it draw its view: the visible
// cells go into a pixmap through the subclass's refresh(), a frame is drawn around them, and the
// pixmap is copied to the window, so that nothing flickers. The cost of a picture depends on the
// size of the view, never on that of the canvas.
//
// The mouse wheel and the page, arrow, home and end keys scroll. While keys come to a canvas, the
// outermost line of its frame is dark.
#pragma once

#include "qip/Components/qipScrolledWindow.h"

class qipCanvas : public qipScrolledWindow
{
public:
    explicit qipCanvas(const char* name);
    ~qipCanvas() override;

    // REQUIRES: view, canvas and the pixels of a cell are set.
    void install(qipVCell* parent) override;
    const char* className() const override;

    // Draws the view, or `v`. Nothing before the window is there and for a view without cells.
    void render() override;
    virtual void render(qipView v);

    int columnPixels() const { return _hPixels; }
    int rowPixels() const { return _vPixels; }

    // The height in pixels of the base widget in which `rows` rows are whole, with the frame around
    // them and the scroll bar below. REQUIRES: the canvas is installed.
    int heightFor(int rows) const;

protected:
    // Called by render() to draw the cells of `view` into `drawable`, its first cell at (0, 0).
    // Columns may lie past the canvas's width; rows do not lie past its height. The background is
    // filled already. `_gc` is there.
    virtual void refresh(Drawable drawable, qipView view) = 0;

    // Called for a key that is pressed while the pointer or the focus is on the canvas, with the
    // modifiers that are held (ShiftMask ...).
    virtual void keyPressed(KeySym key, unsigned modifiers);

    // Copies the picture to the window.
    void refreshDisplay();

    GC _gc;              // made when it is first needed
    Pixmap _currentView; // the picture while it is being drawn
    Pixmap _newView;
    int _hPixels; // width of a column
    int _vPixels; // height of a row
    Pixel _bg;
    Pixel _fg;
    Pixel _topShadow;
    Pixel _botShadow;

private:
    bool makeContext();
    void drawCells(const qipView& v);
    void drawFrame(Drawable drawable) const;
    void scrollBy(int columns, int rows);

    static void expose_cbk(Widget widget, XtPointer canvas, XtPointer callData);
    static void resize_cbk(Widget widget, XtPointer data, XtPointer callData);
    static void input_cbk(Widget widget, XtPointer data, XEvent* event, Boolean* goOn);
    static void focus_cbk(Widget widget, XtPointer data, XEvent* event, Boolean* goOn);

    Display* _gcDisplay; // on which `_gc` was made
    bool _hasFocus;      // keys come here
};
