// SPDX-License-Identifier: MIT
#include "zem/Source/SrcViewer.h"

#include "qip/Drawing/makeColorPixel.h"
#include "qip/Support/qipVisibleText.h"
#include "zem/Data/ZEMFileRecord.h"
#include "zem/Help/HelpWindow.h"
#include "zem/Lines/SrcCoverage.h"
#include "zem/Lines/SrcLine.h"
#include "zem/Lines/SrcPrefix.h"
#include "zem/Status/ZEMStsBar.h"
#include "zem/Text/drawTextRun.h"

#include <Xm/Xm.h>

#include <algorithm>
#include <new>
#include <string>

namespace {

constexpr int FirstColumns = 100;
constexpr int FirstRows = 4;
constexpr int ColumnMargin = 8;
// So far the origin and the extent of a view can be added without overflow.
constexpr long long MostColumns = 1 << 30;
// Where in its column the two lines of a separator stand, in pixels.
constexpr int LightLineX = 2;
constexpr int DarkLineX = 3;

// A window is less than 32768 pixels wide, and no font's characters less than 4.
constexpr int MostColumnsShown = 8192;

constexpr char NoMemory[] = "Out of memory!";

void showMessage(const char* text)
{
    if (theStatusBar != nullptr) {
        theStatusBar->displayMessage(text);
    }
}

void showFailure(const char* filename, bool tooLarge)
{
    try {
        std::string message = std::string("Could not open ") + filename + "!";
        if (tooLarge) {
            message += " Too large."; // short, so that it is seen beside the path
        }
        showMessage(message.c_str());
    } catch (const std::bad_alloc&) {
        showMessage(NoMemory);
    }
}

// Returns false without memory.
bool makeVisible(const char* name, std::string& result)
{
    try {
        result = qipVisibleText(name).string();
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

} // namespace

SrcViewer::SrcViewer(const char* name)
    : qipTCanvas(name), _uncovColor(0), _uncovBg(0), _darkShadowColor(0), _lightShadowColor(0),
      _headerBg(0), _hitDetailWidth(SrcCoverage::LeastWidth),
      _maxBlocksOnLine(SrcCoverage::LeastWidth), _maxLineLen(0)
{}

void SrcViewer::install(qipVCell* parent)
{
    requireFont("Fixed");
    resizeCanvas(FirstColumns, FirstRows);
    viewSize(FirstColumns, FirstRows);
    qipCanvas::install(parent);
    (void)setTextColor("Black"); // fails only without a client area, and there is one now
    allocateViewerColors();
}

const char* SrcViewer::className() const
{
    return "SrcViewer";
}

void SrcViewer::helpRequested() const
{
    HelpWindow::showHelpOn("reports");
}

void SrcViewer::allocateViewerColors()
{
    _uncovBg = makeColorPixel(_clientArea, "Gray80", 0);
    _uncovColor = makeColorPixel(_clientArea, "Red3", 0);
    _headerBg = _bg;
    XtVaGetValues(_base, XmNbottomShadowColor, &_darkShadowColor, XmNtopShadowColor,
                  &_lightShadowColor, nullptr);
}

void SrcViewer::display(const ZEMFileRecord* file, const RptInfo& info, int line)
{
    if (file == nullptr || file->_filename == nullptr || file->_filename[0] == '\0' || line <= 0) {
        return;
    }
    // Opened aside, so that a failure leaves everything as it was.
    SrcBrowser opened;
    if (opened.open(file->_filename) != 0) {
        showFailure(file->_filename, opened.tooLarge());
        return;
    }
    SrcCoverage coverage(opened);
    std::string shownName;
    if (coverage.load(*file) != 0 || !makeVisible(file->_filename, shownName)) {
        showMessage(NoMemory);
        return;
    }
    _browser.exchange(opened);
    _shownName.swap(shownName);
    _rptInfo = info;
    viewPosition(0, 0);
    _maxLineLen = static_cast<int>(_browser.maxLineSz());

    _hitDetailWidth = coverage.hitDetailWidth();
    _maxBlocksOnLine = coverage.maxBlocksOnLine();

    const long long columns = 0LL + _maxBlocksOnLine + _maxLineLen + ColumnMargin;
    resizeCanvas(static_cast<int>(std::min(columns, MostColumns)),
                 static_cast<int>(_browser.nLines()));
    viewPosition(0, line - 1);
    render();
}

void SrcViewer::refresh(Drawable window, qipView view)
{
    if (_browser.filename() == nullptr) {
        return;
    }
    const Picture picture = {window, view, (_vPixels - _Ypxls) / 2 + _baseline};
    const SrcPrefix columns(_rptInfo, _hitDetailWidth, _maxBlocksOnLine);
    XSetFont(XtDisplay(_clientArea), _gc, _font);
    drawHeader(picture, columns);
    for (int row = 0; row < view._dy; ++row) {
        drawLine(picture, columns, row);
    }
    drawSeparator(picture, columns.numberSeparator());
    drawSeparator(picture, columns.blockSeparator());
}

void SrcViewer::drawHeader(const Picture& picture, const SrcPrefix& columns)
{
    Display* display = XtDisplay(_clientArea);
    const int width = picture.view._dx * _hPixels;
    XSetForeground(display, _gc, _headerBg);
    XFillRectangle(display, picture.window, _gc, 0, 0, static_cast<unsigned>(width),
                   static_cast<unsigned>(_vPixels));

    char text[MostColumnsShown];
    const int room = std::clamp(picture.view._dx + 1, 0, MostColumnsShown);
    const int length = columns.header(_shownName.c_str(), text, room);
    XSetForeground(display, _gc, _textColor);
    drawTextRun(display, picture.window, _gc, 0, picture.baseline, text, length, 0, room);

    XSetForeground(display, _gc, _darkShadowColor);
    XDrawLine(display, picture.window, _gc, 0, _vPixels - 1, width - 1, _vPixels - 1);
    XSetForeground(display, _gc, _lightShadowColor);
    XDrawLine(display, picture.window, _gc, 0, _vPixels - 2, width - 1, _vPixels - 2);
}

// The separator behind `column`; none for -1.
void SrcViewer::drawSeparator(const Picture& picture, int column)
{
    const long long x = 1LL * column * _hPixels;
    if (column < 0 || x + DarkLineX > LargestCoordinate) {
        return;
    }
    Display* display = XtDisplay(_clientArea);
    const int bottom = picture.view._dy * _vPixels - 1;
    const int left = static_cast<int>(x);
    XSetForeground(display, _gc, _darkShadowColor);
    XDrawLine(display, picture.window, _gc, left + DarkLineX, 0, left + DarkLineX, bottom);
    XSetForeground(display, _gc, _lightShadowColor);
    XDrawLine(display, picture.window, _gc, left + LightLineX, 0, left + LightLineX, bottom);
}

// Row 0 is the first below the header.
void SrcViewer::drawLine(const Picture& picture, const SrcPrefix& columns, int row)
{
    const long n = 0L + picture.view._y + row;
    const SrcLine* line = _browser.line(n);
    if (line == nullptr) {
        return;
    }
    Display* display = XtDisplay(_clientArea);
    const int y = (row + 1) * _vPixels + picture.baseline;
    const int room = std::clamp(picture.view._dx + 1, 0, MostColumnsShown);
    XSetForeground(display, _gc, line->untested() ? _uncovColor : _textColor);

    char prefix[MostColumnsShown];
    const int prefixLength = columns.prefix(n, line, prefix, room);
    drawTextRun(display, picture.window, _gc, 0, y, prefix, prefixLength, 0, room);

    int length = 0;
    const char* text = _browser.getLine(n, length);
    const long long x = 1LL * columns.textColumn() * _hPixels;
    drawTextRun(display, picture.window, _gc,
                static_cast<int>(std::min<long long>(x, LargestCoordinate + 1)), y, text, length,
                picture.view._x, room);
}
