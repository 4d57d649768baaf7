// SPDX-License-Identifier: MIT
//
// A canvas whose cells are the characters of a fixed-width font.
#pragma once

#include "qip/Components/qipCanvas.h"

class qipTCanvas : public qipCanvas
{
public:
    explicit qipTCanvas(const char* name);
    ~qipTCanvas() override;

    // Loads the font and sets the pixels of a cell from it: a character's width, and the line
    // height with 40% spacing. Returns 0, or -1 for a null or empty name and a font that is not
    // there; what was set before stays then. REQUIRES: the application has its display.
    int setFont(const char* name);

    // Returns 0; or -1 before install() and for a null name, and the colour stays.
    int setTextColor(const char* name);

    // Takes the font "Fixed" when none is loaded; on a display without it the next best one.
    void install(qipVCell* parent) override;
    const char* className() const override;

    // The number of digits of `n`. REQUIRES: base is 2 or more.
    static int repWidth(unsigned long n, int base);

protected:
    // As setFont(), but falls back to other fonts and ends the program when the display has none:
    // nothing could be drawn or measured.
    void requireFont(const char* name);

    Font _font;
    XFontStruct* _fontInfo; // null before setFont()
    Pixel _textColor;
    int _Xpxls;    // width of a character
    int _Ypxls;    // height of a character
    int _baseline; // from the top of a character to its base line
};
