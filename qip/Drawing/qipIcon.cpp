// SPDX-License-Identifier: MIT
#include "qip/Drawing/qipIcon.h"

#include "qip/Base/qipVCell.h"

#include <Xm/Xm.h>

namespace {

// Out of 65535 for each colour channel.
constexpr unsigned Closeness = 40000;

// The fields of the attribute record that libXpm is to look at.
constexpr unsigned long Flags = XpmSize | XpmColorSymbols | XpmExactColors | XpmCloseness;
static_assert(Flags == 6216, "size, colour symbols, exact colours and closeness, nothing else");

} // namespace

GC qipIcon::_gc = nullptr;

qipIcon::qipIcon(const char* const* data)
    : _data(data), _base(nullptr), _display(nullptr), _image(0),
      _mask(0), _attributes{}, _background{}
{}

qipIcon::~qipIcon()
{
    release();
}

void qipIcon::release()
{
    if (_image != 0) {
        XFreePixmap(_display, _image);
        _image = 0;
    }
    if (_mask != 0) {
        XFreePixmap(_display, _mask);
        _mask = 0;
    }
}

void qipIcon::install(qipVCell* cell)
{
    release();
    _base = cell->baseWidget();
    if (_base == nullptr) {
        return;
    }
    _display = XtDisplayOfObject(_base);
    const Window root = RootWindowOfScreen(XtScreenOfObject(_base));
    if (_gc == nullptr) {
        _gc = XCreateGC(_display, root, 0, nullptr);
        if (_gc == nullptr) {
            // The text names another class; users look for it as it is.
            XtAppWarning(XtWidgetToApplicationContext(_base),
                         " **** qipCanvas::render() : failed to obtain GC ");
            return;
        }
    }
    fillAttributes();
    if (XpmCreatePixmapFromData(_display, root, const_cast<char**>(_data), &_image, &_mask,
                                &_attributes) < 0) {
        _image = 0;
        _mask = 0;
    }
}

void qipIcon::fillAttributes()
{
    int depth = 0;
    Colormap colors = 0;
    Pixel background = 0;
    XtVaGetValues(_base, XmNdepth, &depth, XmNcolormap, &colors, XmNbackground, &background,
                  nullptr);

    static char backgroundName[] = "background";
    _background.name = backgroundName;
    _background.value = nullptr;
    _background.pixel = background;

    _attributes = XpmAttributes();
    _attributes.valuemask = Flags;
    _attributes.colorsymbols = &_background;
    _attributes.numsymbols = 1;
    _attributes.closeness = Closeness;
    _attributes.exactColors = False;
    // Not flagged in the mask: the root window's own depth, colour map and visual are used.
    _attributes.depth = static_cast<unsigned>(depth);
    _attributes.colormap = colors;
    _attributes.visual = DefaultVisualOfScreen(XtScreenOfObject(_base));
}

void qipIcon::render(Drawable drawable, int x, int y)
{
    if (_base == nullptr || _image == 0 || _attributes.width < 2 || _attributes.height < 2) {
        return;
    }
    XSetClipMask(_display, _gc, _mask != 0 ? _mask : None);
    if (_mask != 0) {
        XSetClipOrigin(_display, _gc, x, y);
    }
    XCopyArea(_display, _image, drawable, _gc, 0, 0, _attributes.width - 1, _attributes.height - 1,
              x, y);
}
