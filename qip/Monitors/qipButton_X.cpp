// SPDX-License-Identifier: MIT
#include "qip/Monitors/qipButton_X.h"

#include "qip/Support/qipAssert.h"

#include <Xm/PushB.h>
#include <Xm/Xm.h>

#include <new>

namespace {

constexpr char LabelTag[] = "FNT_BUTTON_LBL";

} // namespace

qipButton_X::qipButton_X(const char* name, qipButton* client)
    : qipVCell(name), qipButton_impl(client), _button(nullptr)
{}

qipButton_X::~qipButton_X()
{
    if (_button != nullptr) {
        XtRemoveCallback(_button, XmNactivateCallback, pressed_cbk, this);
        // The pixmaps go with the icons; a widget that lives on must not draw them.
        XtVaSetValues(_button, XmNlabelType, XmSTRING, XmNlabelPixmap, XmUNSPECIFIED_PIXMAP,
                      XmNlabelInsensitivePixmap, XmUNSPECIFIED_PIXMAP, nullptr);
    }
}

void qipButton_X::setLabel(const char* text)
{
    if (text == nullptr) {
        return;
    }
    _label.set(text);
    qipAssert(_label != 0);
}

void qipButton_X::setImage(const char* const* image, const char* const* insensitiveImage)
{
    if (image != nullptr) {
        _image.reset(new (std::nothrow) qipIcon(image));
    }
    if (insensitiveImage != nullptr) {
        _insensitiveImage.reset(new (std::nothrow) qipIcon(insensitiveImage));
    }
}

void qipButton_X::install(qipVCell* parent)
{
    _base = XtVaCreateManagedWidget(_name, xmPushButtonWidgetClass, parent->clientArea(), nullptr);
    _clientArea = _base;
    if (_label != nullptr && _image == nullptr) {
        setText(_base, _label);
    }
    equip(_base);
    installDestroyHandler();
}

void qipButton_X::equip(Widget button)
{
    _button = button;
    if (_image != nullptr) {
        _image->install(this);
        if (_image->image() != 0) {
            XtVaSetValues(button, XmNlabelType, XmPIXMAP, XmNlabelPixmap, _image->image(), nullptr);
        }
    }
    if (_insensitiveImage != nullptr) {
        _insensitiveImage->install(this);
        if (_insensitiveImage->image() != 0) {
            XtVaSetValues(button, XmNlabelInsensitivePixmap, _insensitiveImage->image(), nullptr);
        }
    }
    XtAddCallback(button, XmNactivateCallback, pressed_cbk, this);
    XtSetSensitive(_base, _status == qipGadgetActive);
}

void qipButton_X::setText(Widget widget, const char* text)
{
    XmString string = XmStringCreate(const_cast<char*>(text), const_cast<char*>(LabelTag));
    if (string != nullptr) {
        XtVaSetValues(widget, XmNlabelString, string, nullptr);
        XmStringFree(string);
    }
}

const char* qipButton_X::className() const
{
    return "qipButton_X";
}

int qipButton_X::activate()
{
    qipButton_impl::activate();
    if (_base == nullptr) {
        return -1;
    }
    XtSetSensitive(_base, True);
    return 0;
}

int qipButton_X::deactivate()
{
    qipButton_impl::deactivate();
    if (_base == nullptr) {
        return -1;
    }
    XtSetSensitive(_base, False);
    return 0;
}

void qipButton_X::initialState(qipGadgetStatus status)
{
    qipButton_impl::initialState(status);
    if (_base != nullptr) {
        XtSetSensitive(_base, status == qipGadgetActive);
    }
}

void qipButton_X::destroyed()
{
    _button = nullptr;
    qipVCell::destroyed();
}

void qipButton_X::pressed_cbk(Widget, XtPointer button, XtPointer)
{
    static_cast<qipButton_X*>(button)->triggerSensor();
}
