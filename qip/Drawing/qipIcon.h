// SPDX-License-Identifier: MIT
//
// A small picture, compiled into the program as XPM text, as a pixmap for one widget. Colours with
// the symbolic name "background" take the widget's own background.
#pragma once

#include <X11/Intrinsic.h>
#include <X11/xpm.h>

class qipVCell;

class qipIcon
{
public:
    // Borrows the XPM lines `data` for its whole life.
    explicit qipIcon(const char* const* data);
    qipIcon(const qipIcon&) = delete;
    qipIcon& operator=(const qipIcon&) = delete;
    // Frees the pixmaps; the widget that they were made for may be gone already.
    virtual ~qipIcon();

    // Makes pixmap and mask for the base widget of `cell`, in place of earlier ones; nothing
    // without a widget. A picture that cannot be made leaves image() 0.
    virtual void install(qipVCell* cell);

    // Draws the picture at (x, y), without its last column and row: what is drawn of a 32 x 32 icon
    // is 31 x 31. Pinned by qipIconTest.DrawsWithoutLastColumnAndRow.
    virtual void render(Drawable drawable, int x, int y);

    Pixmap image() const { return _image; }                // 0 while there is none
    Pixmap mask() const { return _mask; }                  // 0 when no pixel is transparent
    unsigned width() const { return _attributes.width; }   // pixels
    unsigned height() const { return _attributes.height; } // pixels

private:
    void fillAttributes();
    void release();

    const char* const* _data;
    Widget _base;      // borrowed; may be gone, so that only install() looks at it
    Display* _display; // on which pixmaps and `_gc` are
    Pixmap _image;
    Pixmap _mask;
    XpmAttributes _attributes;
    XpmColorSymbol _background; // what `_attributes` points at
    static GC _gc;              // shared by all icons, made once
};
