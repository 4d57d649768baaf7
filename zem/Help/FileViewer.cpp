// SPDX-License-Identifier: MIT
#include "zem/Help/FileViewer.h"

#include "zem/Text/drawTextRun.h"

namespace {

constexpr int FirstColumns = 100;
constexpr int FirstRows = 30;

} // namespace

FileViewer::FileViewer(const char* name) : qipTCanvas(name) {}

void FileViewer::install(qipVCell* parent)
{
    requireFont("Fixed");
    resizeCanvas(FirstColumns, FirstRows);
    viewSize(FirstColumns, FirstRows);
    qipCanvas::install(parent);
    (void)setTextColor("Black"); // fails only without a client area, and there is one now
}

const char* FileViewer::className() const
{
    return "FileViewer";
}

void FileViewer::display(const char* path, int line)
{
    if (_browser.open(path) != 0) {
        _browser.clear();
    }
    resizeCanvas(static_cast<int>(_browser.maxLineSz()), static_cast<int>(_browser.nLines()));
    viewPosition(0, line - 1);
    render();
}

void FileViewer::refresh(Drawable window, qipView view)
{
    Display* display = XtDisplay(_clientArea);
    XSetFont(display, _gc, _font);
    XSetForeground(display, _gc, _textColor);
    const int baseline = (_vPixels - _Ypxls) / 2 + _baseline;
    for (int row = 0; row < view._dy; ++row) {
        int length = 0;
        const char* text = _browser.getLine(0L + view._y + row, length);
        drawTextRun(display, window, _gc, 0, row * _vPixels + baseline, text, length, view._x,
                    view._dx + 1);
    }
}
