// SPDX-License-Identifier: MIT
#include "qip/Components/qipScrollBar.h"

#include "qip/Components/qipScrolledWindow.h"

#include <Xm/ScrollBar.h>
#include <Xm/Xm.h>

#include <algorithm>

qipScrollBar::qipScrollBar(const char* name, qipScrolledWindow* client, unsigned char orientation)
    : qipVCell(name), _client(client), _curValue(0), _maxValue(1), _pageLength(1),
      _orientation(orientation)
{}

qipScrollBar::~qipScrollBar()
{
    if (_base != nullptr) {
        XtRemoveCallback(_base, XmNvalueChangedCallback, valueChanged_cbk, this);
        XtRemoveCallback(_base, XmNdragCallback, valueChanged_cbk, this);
    }
}

void qipScrollBar::install(qipVCell*)
{
    _base = XtVaCreateManagedWidget(_name, xmScrollBarWidgetClass, _client->baseWidget(),
                                    XmNorientation, _orientation, XmNminimum, 0, XmNvalue,
                                    _curValue, XmNmaximum, _maxValue, XmNsliderSize, _pageLength,
                                    XmNpageIncrement, std::max(_pageLength - 1, 1), nullptr);
    installDestroyHandler();
    XtAddCallback(_base, XmNvalueChangedCallback, valueChanged_cbk, this);
    // Scrolls while the slider is dragged, not only when it is let go.
    XtAddCallback(_base, XmNdragCallback, valueChanged_cbk, this);
}

const char* qipScrollBar::className() const
{
    return "qipScrollBar";
}

void qipScrollBar::valueChanged_cbk(Widget, XtPointer bar, XtPointer callData)
{
    static_cast<qipScrollBar*>(bar)->scroll(
        static_cast<XmScrollBarCallbackStruct*>(callData)->value);
}

void qipScrollBar::scroll(int v)
{
    if (v != _curValue) {
        _curValue = v;
        scrollClient(v);
        _client->render();
    }
}

void qipScrollBar::currentValue(int v)
{
    if (_base != nullptr) {
        XtVaSetValues(_base, XmNvalue, v, nullptr);
    }
    _curValue = v;
}

void qipScrollBar::maxValue(int v)
{
    if (v == _maxValue) {
        return;
    }
    _maxValue = v;
    if (_base == nullptr) {
        return;
    }
    // A maximum below the value or the slider would draw a warning.
    _pageLength = std::max(std::min(_pageLength, v), 1);
    _curValue = std::max(std::min(_curValue, v - _pageLength), 0);
    setWidget();
}

void qipScrollBar::pageLength(int v)
{
    if (v != _pageLength) {
        _pageLength = v;
        if (_base != nullptr) {
            XtVaSetValues(_base, XmNpageIncrement, std::max(v - 1, 1), XmNsliderSize, v, nullptr);
        }
    }
}

void qipScrollBar::adjustValues(int value, int max, int page)
{
    _curValue = value;
    _maxValue = max;
    _pageLength = page;
    setWidget();
}

void qipScrollBar::setWidget()
{
    if (_base != nullptr) {
        XtVaSetValues(_base, XmNvalue, _curValue, XmNmaximum, _maxValue, XmNsliderSize, _pageLength,
                      XmNpageIncrement, std::max(_pageLength - 1, 1), nullptr);
    }
}
