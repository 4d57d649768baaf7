// SPDX-License-Identifier: MIT
#include "qip/Components/qipCanvas.h"

#include "qip/Components/qipHorizScrollBar.h"
#include "qip/Components/qipVertScrollBar.h"
#include "qip/Support/qipAssert.h"

#include <Xm/DrawingA.h>
#include <Xm/ScrolledW.h>
#include <Xm/Xm.h>
#include <Xm/XmStrDefs.h>

#include <algorithm>

namespace {

constexpr int WheelRows = 3;
constexpr int WheelColumns = 4;
constexpr int FrameWidth = 2; // pixels
constexpr int CopyOffset = FrameWidth;
constexpr int LongestSide = 32767;

// Where a picture starts in the window: a canvas centred in a larger view starts further in.
int copyOffset(int origin, int cellPixels)
{
    return origin < 0 ? -origin * cellPixels : CopyOffset;
}

unsigned side(long long pixels)
{
    return static_cast<unsigned>(std::max<long long>(std::min<long long>(pixels, LongestSide), 0));
}

} // namespace

qipCanvas::qipCanvas(const char* name)
    : qipScrolledWindow(name), _gc(nullptr), _currentView(0), _newView(0), _hPixels(0), _vPixels(0),
      _bg(0), _fg(0), _topShadow(0), _botShadow(0), _gcDisplay(nullptr), _hasFocus(false)
{}

qipCanvas::~qipCanvas()
{
    if (_base != nullptr && _clientArea != nullptr) {
        // The widgets may live on.
        XtRemoveCallback(_clientArea, XmNexposeCallback, expose_cbk, this);
        XtRemoveCallback(_clientArea, XmNresizeCallback, resize_cbk, this);
        XtRemoveEventHandler(_clientArea, XtAllEvents, False, input_cbk, this);
        XtRemoveEventHandler(_clientArea, XtAllEvents, False, focus_cbk, this);
    }
    if (_gc != nullptr) {
        XFreeGC(_gcDisplay, _gc);
    }
}

void qipCanvas::install(qipVCell* parent)
{
    qipScrolledWindow::install(parent);
    const auto width = static_cast<Dimension>(side(1LL * _view._dx * _hPixels));
    const auto height = static_cast<Dimension>(side(1LL * _view._dy * _vPixels));
    _clientArea = XtVaCreateManagedWidget(_name, xmDrawingAreaWidgetClass, _base, XmNmarginWidth, 2,
                                          XmNmarginHeight, 2, XmNresizePolicy, XmRESIZE_NONE,
                                          XmNwidth, width, XmNheight, height, nullptr);
    qipAssert(_clientArea != 0);
    XtVaGetValues(_clientArea, XmNbackground, &_bg, XmNforeground, &_fg, XmNtopShadowColor,
                  &_topShadow, XmNbottomShadowColor, &_botShadow, nullptr);
    XmScrolledWindowSetAreas(_base, _hsb->baseWidget(), _vsb->baseWidget(), _clientArea);
    XtAddCallback(_clientArea, XmNexposeCallback, expose_cbk, this);
    XtAddCallback(_clientArea, XmNresizeCallback, resize_cbk, this);
    XtAddEventHandler(_clientArea, ButtonPressMask | KeyPressMask, False, input_cbk, this);
    XtAddEventHandler(_clientArea, FocusChangeMask, False, focus_cbk, this);
}

int qipCanvas::heightFor(int rows) const
{
    Dimension bar = 0;
    Dimension spacing = 0;
    Dimension shadow = 0;
    XtVaGetValues(_hsb->baseWidget(), XmNheight, &bar, nullptr);
    XtVaGetValues(_base, XmNspacing, &spacing, XmNshadowThickness, &shadow, nullptr);
    return rows * _vPixels + 2 * FrameWidth + bar + spacing + 2 * shadow;
}

const char* qipCanvas::className() const
{
    return "qipCanvas";
}

void qipCanvas::expose_cbk(Widget, XtPointer canvas, XtPointer callData)
{
    const auto* call = static_cast<XmDrawingAreaCallbackStruct*>(callData);
    if (call != nullptr && call->event != nullptr && call->event->xexpose.count >= 1) {
        return;
    }
    static_cast<qipCanvas*>(canvas)->render();
}

void qipCanvas::resize_cbk(Widget widget, XtPointer data, XtPointer)
{
    auto* canvas = static_cast<qipCanvas*>(data);
    if (canvas->_hPixels <= 0 || canvas->_vPixels <= 0) {
        return;
    }
    Dimension width = 0;
    Dimension height = 0;
    XtVaGetValues(widget, XmNwidth, &width, XmNheight, &height, nullptr);
    canvas->viewSize(width / canvas->_hPixels, height / canvas->_vPixels);
    // A window that shrinks is not exposed, and its frame would stay where it was.
    canvas->render();
}

void qipCanvas::input_cbk(Widget widget, XtPointer data, XEvent* event, Boolean*)
{
    auto* canvas = static_cast<qipCanvas*>(data);
    if (event->type == KeyPress) {
        Modifiers modifiers = 0;
        KeySym key = NoSymbol;
        XmTranslateKey(event->xkey.display, static_cast<KeyCode>(event->xkey.keycode),
                       event->xkey.state, &modifiers, &key);
        // A key that is not ours is everybody's.
        canvas->keyPressed(key, event->xkey.state);
        return;
    }
    switch (event->xbutton.button) {
    case Button1:
        XmProcessTraversal(widget, XmTRAVERSE_CURRENT);
        break;
    case Button4:
        canvas->scrollBy(0, -WheelRows);
        break;
    case Button5:
        canvas->scrollBy(0, WheelRows);
        break;
    case 6:
        canvas->scrollBy(-WheelColumns, 0);
        break;
    case 7:
        canvas->scrollBy(WheelColumns, 0);
        break;
    default:
        break;
    }
}

// A grab, by a menu that comes down, takes the keys for a while only.
void qipCanvas::focus_cbk(Widget widget, XtPointer data, XEvent* event, Boolean*)
{
    auto* canvas = static_cast<qipCanvas*>(data);
    if (event->xfocus.mode != NotifyNormal || event->xfocus.detail == NotifyPointer) {
        return;
    }
    canvas->_hasFocus = event->type == FocusIn;
    if (canvas->_gc != nullptr && XtWindow(widget) != 0) {
        canvas->drawFrame(XtWindow(widget));
    }
}

void qipCanvas::keyPressed(KeySym key, unsigned)
{
    const int page = std::max(_view._dy - 1, 1);
    switch (key) {
    case osfXK_PageUp:
        scrollBy(0, -page);
        break;
    case osfXK_PageDown:
        scrollBy(0, page);
        break;
    case osfXK_Up:
        scrollBy(0, -1);
        break;
    case osfXK_Down:
        scrollBy(0, 1);
        break;
    case osfXK_Left:
        scrollBy(-1, 0);
        break;
    case osfXK_Right:
        scrollBy(1, 0);
        break;
    case osfXK_BeginLine:
        scrollBy(0, -_canvasHeight);
        break;
    case osfXK_EndLine:
        scrollBy(0, _canvasHeight);
        break;
    default:
        break;
    }
}

// Draws only when the view has moved.
void qipCanvas::scrollBy(int columns, int rows)
{
    const qipView before = _view;
    if (columns != 0) {
        horizIScroll(columns);
    }
    if (rows != 0) {
        vertIScroll(rows);
    }
    if (_view._x != before._x || _view._y != before._y) {
        render();
    }
}

void qipCanvas::render()
{
    render(_view);
}

bool qipCanvas::makeContext()
{
    if (_gc == nullptr) {
        // Without this every copy from a pixmap would be answered by an event.
        XGCValues values = {};
        values.graphics_exposures = False;
        _gcDisplay = XtDisplay(_clientArea);
        _gc = XCreateGC(_gcDisplay, XtWindow(_clientArea), GCGraphicsExposures, &values);
        if (_gc == nullptr) {
            XtAppWarning(XtWidgetToApplicationContext(_clientArea),
                         " **** qipCanvas::render() : failed to obtain GC ");
        }
    }
    return _gc != nullptr;
}

void qipCanvas::render(qipView v)
{
    if (v._dx <= 0 || v._dy <= 0 || _hPixels <= 0 || _vPixels <= 0 || _clientArea == nullptr ||
        XtWindow(_clientArea) == 0 || !makeContext()) {
        return;
    }
    Dimension width = 0;
    Dimension height = 0;
    int depth = 0;
    XtVaGetValues(_clientArea, XmNwidth, &width, XmNheight, &height, XmNdepth, &depth, nullptr);
    Display* display = XtDisplay(_clientArea);
    _currentView =
        XCreatePixmap(display, XtWindow(_clientArea), width, height, static_cast<unsigned>(depth));
    XSetForeground(display, _gc, _bg);
    XFillRectangle(display, _currentView, _gc, 0, 0, width, height);
    drawCells(v);
    drawFrame(_currentView);
    refreshDisplay();
    XFreePixmap(display, _currentView);
    _currentView = 0;
}

// Draws the part of `v` that lies on the canvas. Its right end is not clipped to the canvas, only
// its lower one: a subclass may draw in columns past the last.
void qipCanvas::drawCells(const qipView& v)
{
    const int x0 = std::max(v._x, 0);
    const int y0 = std::max(v._y, 0);
    const int x1 = v._x + v._dx;
    const int y1 = v._dy > _canvasHeight ? _canvasHeight : v._y + v._dy;
    const unsigned width = side(1LL * (x1 - x0) * _hPixels);
    const unsigned height = side(1LL * (y1 - y0) * _vPixels);
    if (width == 0 || height == 0) {
        return;
    }
    Display* display = XtDisplay(_clientArea);
    int depth = 0;
    XtVaGetValues(_clientArea, XmNdepth, &depth, nullptr);
    const Pixmap cells =
        XCreatePixmap(display, XtWindow(_clientArea), width, height, static_cast<unsigned>(depth));
    XSetForeground(display, _gc, _bg);
    XFillRectangle(display, cells, _gc, 0, 0, width, height);
    refresh(cells, qipView(x0, y0, x1 - x0, y1 - y0));
    XCopyArea(display, cells, _currentView, _gc, 0, 0, width, height, copyOffset(v._x, _hPixels),
              copyOffset(v._y, _vPixels));
    XFreePixmap(display, cells);
}

// A raised frame, two pixels wide, along the edges of the picture.
void qipCanvas::drawFrame(Drawable drawable) const
{
    Display* display = XtDisplay(_clientArea);
    Dimension width = 0;
    Dimension height = 0;
    XtVaGetValues(_clientArea, XmNwidth, &width, XmNheight, &height, nullptr);
    const int right = width - 1;
    const int bottom = height - 1;
    XSetForeground(display, _gc, _topShadow);
    XDrawLine(display, drawable, _gc, 0, 0, right, 0);
    XDrawLine(display, drawable, _gc, 1, 1, right - 1, 1);
    XDrawLine(display, drawable, _gc, 0, 0, 0, bottom);
    XDrawLine(display, drawable, _gc, 1, 1, 1, bottom - 1);
    XSetForeground(display, _gc, _botShadow);
    XDrawLine(display, drawable, _gc, 0, bottom, right, bottom);
    XDrawLine(display, drawable, _gc, 1, bottom - 1, right - 1, bottom - 1);
    XDrawLine(display, drawable, _gc, right, 0, right, bottom);
    XDrawLine(display, drawable, _gc, right - 1, 1, right - 1, bottom - 1);
    if (_hasFocus && width > 0 && height > 0) {
        XSetForeground(display, _gc, _fg);
        XDrawRectangle(display, drawable, _gc, 0, 0, static_cast<unsigned>(right),
                       static_cast<unsigned>(bottom));
    }
}

void qipCanvas::refreshDisplay()
{
    XCopyArea(XtDisplay(_clientArea), _currentView, XtWindow(_clientArea), _gc, 0, 0,
              side((1LL + _view._dx) * _hPixels), side((1LL + _view._dy) * _vPixels), 0, 0);
}
