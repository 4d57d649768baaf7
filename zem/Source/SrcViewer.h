// SPDX-License-Identifier: MIT
//
// The text canvas that shows a source file with its coverage: a header line, and for each line of
// the file its number, its counts or marks (see SrcPrefix), and its text. Untested lines are red.
// Header and prefix stay in place when the text is scrolled sideways.
//
// Owned by the report area, which installs it as a pane at the first browse, calls display() at
// each, and shows and hides it with manage() and unmanage().
#pragma once

#include "qip/Components/qipTCanvas.h"
#include "zem/Lines/SrcBrowser.h"
#include "zem/Rows/RptInfo.h"

#include <string>

class SrcPrefix;
class ZEMFileRecord;

class SrcViewer : public qipTCanvas
{
public:
    explicit SrcViewer(const char* name);

    // 100 columns and 4 rows to begin with.
    void install(qipVCell* parent) override;
    const char* className() const override;

    // Shows the topic "reports".
    void helpRequested() const override;

    // Loads the source file that `file` names and its coverage and shows it, laid out by `info`, of
    // which it keeps a copy, from `line` on, counted from 1. Does nothing for a null file, one
    // without a name, and a line below 1. A file that cannot be opened is named in the status bar,
    // and what was shown before stays. The name is taken as it stands: a relative one is looked up
    // from the current directory. `file` is not used afterwards.
    void display(const ZEMFileRecord* file, const RptInfo& info, int line);

protected:
    void refresh(Drawable window, qipView view) override;

private:
    // Where a row's parts are, in pixels, while a picture is drawn.
    struct Picture
    {
        Drawable window;
        qipView view;
        int baseline; // from the top of a row
    };

    void allocateViewerColors();
    void drawHeader(const Picture& picture, const SrcPrefix& columns);
    void drawSeparator(const Picture& picture, int column);
    void drawLine(const Picture& picture, const SrcPrefix& columns, int row);

    Pixel _uncovColor;
    Pixel _uncovBg; // allocated, so that a theme can count on it; nothing is drawn in it
    Pixel _darkShadowColor;
    Pixel _lightShadowColor;
    Pixel _headerBg;
    RptInfo _rptInfo;
    SrcBrowser _browser;
    std::string _shownName; // of the file, made visible
    int _hitDetailWidth;    // characters of the widest text of counts, at least 4
    int _maxBlocksOnLine;   // at least 4
    int _maxLineLen;        // bytes of the longest line
};
