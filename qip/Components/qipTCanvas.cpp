// SPDX-License-Identifier: MIT
#include "qip/Components/qipTCanvas.h"

#include "qip/Base/qipApplication.h"
#include "qip/Drawing/makeColorPixel.h"
#include "qip/Support/qipAssert.h"

namespace {

// In the order of liking; the last is any font at all.
const char* const FallbackFonts[] = {"fixed", "6x13", "9x15", "*"};

} // namespace

qipTCanvas::qipTCanvas(const char* name)
    : qipCanvas(name), _font(0), _fontInfo(nullptr), _textColor(0), _Xpxls(0), _Ypxls(0),
      _baseline(0)
{}

qipTCanvas::~qipTCanvas()
{
    if (_fontInfo != nullptr) {
        XFreeFont(theApplication->display(), _fontInfo);
    }
}

int qipTCanvas::setFont(const char* name)
{
    if (name == nullptr || name[0] == '\0') {
        return -1;
    }
    qipAssertAs(theApplication != nullptr, "theApplication != 0");
    XFontStruct* info = XLoadQueryFont(theApplication->display(), name);
    if (info == nullptr) {
        return -1;
    }
    if (_fontInfo != nullptr) {
        XFreeFont(theApplication->display(), _fontInfo);
    }
    _fontInfo = info;
    _font = info->fid;
    _Xpxls = info->max_bounds.width;
    _Ypxls = info->ascent + info->descent;
    _baseline = info->ascent;
    _hPixels = _Xpxls;
    _vPixels = 7 * _Ypxls / 5;
    return 0;
}

void qipTCanvas::requireFont(const char* name)
{
    if (setFont(name) == 0) {
        return;
    }
    for (const char* fallback : FallbackFonts) {
        if (setFont(fallback) == 0) {
            return;
        }
    }
    XtAppError(theApplication->appContext(), "The display has no font to draw text with");
}

int qipTCanvas::setTextColor(const char* name)
{
    if (_clientArea == nullptr) {
        return -1;
    }
    _textColor = makeColorPixel(_clientArea, name, 0);
    return 0;
}

void qipTCanvas::install(qipVCell* parent)
{
    if (_fontInfo == nullptr) {
        requireFont("Fixed");
    }
    qipCanvas::install(parent);
}

const char* qipTCanvas::className() const
{
    return "qipTCanvas";
}

int qipTCanvas::repWidth(unsigned long n, int base)
{
    int digits = 1;
    while (n >= static_cast<unsigned long>(base)) {
        n /= static_cast<unsigned long>(base);
        ++digits;
    }
    return digits;
}
