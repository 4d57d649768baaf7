// SPDX-License-Identifier: MIT
#include "qip/Components/qipScrolledWindow.h"

#include "qip/Components/qipHorizScrollBar.h"
#include "qip/Components/qipVertScrollBar.h"
#include "qip/Support/ScrollGeometry.h"
#include "qip/Support/qipAssert.h"

#include <Xm/ScrolledW.h>
#include <Xm/Xm.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

namespace {

// Null when there is no memory.
std::unique_ptr<char[]> barName(const char* name, const char* suffix)
{
    const size_t nameSize = std::strlen(name);
    const size_t suffixSize = std::strlen(suffix) + 1;
    std::unique_ptr<char[]> text(new (std::nothrow) char[nameSize + suffixSize]);
    if (text) {
        std::memcpy(text.get(), name, nameSize);
        std::memcpy(text.get() + nameSize, suffix, suffixSize);
    }
    return text;
}

int sum(int a, int b)
{
    const long long s = static_cast<long long>(a) + b;
    return static_cast<int>(std::max<long long>(std::min<long long>(s, 0x7fffffff), -0x7fffffff));
}

} // namespace

qipScrolledWindow::qipScrolledWindow(const char* name)
    : qipVCell(name), _vsb(nullptr), _hsb(nullptr), _canvasWidth(0), _canvasHeight(0),
      _centerWhenOversize(0)
{}

qipScrolledWindow::~qipScrolledWindow()
{
    delete _vsb;
    delete _hsb;
}

void qipScrolledWindow::install(qipVCell* parent)
{
    _base = XtVaCreateManagedWidget(_name, xmScrolledWindowWidgetClass, parent->clientArea(),
                                    XmNscrollingPolicy, XmAPPLICATION_DEFINED, nullptr);
    qipAssertAs(_base != nullptr, "_base != 0");
    _clientArea = _base;

    const std::unique_ptr<char[]> hsb_name = barName(_name, "_hsb");
    qipAssertAs(hsb_name != nullptr, "hsb_name != 0");
    _hsb = new (std::nothrow) qipHorizScrollBar(hsb_name.get(), this);
    qipAssertAs(_hsb != nullptr, "_hsb != 0");
    const std::unique_ptr<char[]> vsb_name = barName(_name, "_vsb");
    qipAssertAs(vsb_name != nullptr, "vsb_name != 0");
    _vsb = new (std::nothrow) qipVertScrollBar(vsb_name.get(), this);
    qipAssertAs(_vsb != nullptr, "_vsb != 0");

    qipAssert(_view._dx != 0);
    qipAssert(_canvasWidth != 0);
    qipAssert(_view._dy != 0);
    qipAssert(_canvasHeight != 0);
    resizeCanvas(_canvasWidth, _canvasHeight);
    _hsb->install(this);
    _vsb->install(this);
    installDestroyHandler();
    installHelpHandler();
}

const char* qipScrolledWindow::className() const
{
    return "qipScrolledWindow";
}

void qipScrolledWindow::setView(qipView v)
{
    const bool center = _centerWhenOversize != 0;
    const ScrollGeometry::Axis x = ScrollGeometry::clamp(v._x, v._dx, _canvasWidth, center);
    const ScrollGeometry::Axis y = ScrollGeometry::clamp(v._y, v._dy, _canvasHeight, center);
    _view = qipView(x.origin, y.origin, v._dx, v._dy);
    if (_hsb != nullptr) {
        _hsb->adjustValues(x.value, std::max(_canvasWidth, 1), x.page);
    }
    if (_vsb != nullptr) {
        _vsb->adjustValues(y.value, std::max(_canvasHeight, 1), y.page);
    }
}

void qipScrolledWindow::viewPosition(int x, int y)
{
    setView(qipView(x, y, _view._dx, _view._dy));
}

void qipScrolledWindow::viewSize(int dx, int dy)
{
    setView(qipView(_view._x, _view._y, dx, dy));
}

void qipScrolledWindow::resizeCanvas(int width, int height)
{
    _canvasWidth = std::max(width, 1);
    _canvasHeight = std::max(height, 1);
    setView(_view);
}

void qipScrolledWindow::horizScroll(int x)
{
    viewPosition(x, _view._y);
}

void qipScrolledWindow::vertScroll(int y)
{
    viewPosition(_view._x, y);
}

void qipScrolledWindow::horizIScroll(int dx)
{
    horizScroll(sum(_view._x, dx));
}

void qipScrolledWindow::vertIScroll(int dy)
{
    vertScroll(sum(_view._y, dy));
}

void qipScrolledWindow::render() {}
