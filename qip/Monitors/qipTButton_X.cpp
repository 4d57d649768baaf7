// SPDX-License-Identifier: MIT
#include "qip/Monitors/qipTButton_X.h"

#include <Xm/Form.h>
#include <Xm/Label.h>
#include <Xm/PushB.h>
#include <Xm/Xm.h>

qipTButton_X::qipTButton_X(const char* name, qipButton* client)
    : qipButton_X(name, client), _labelWidget(nullptr)
{}

qipTButton_X::~qipTButton_X() = default;

void qipTButton_X::install(qipVCell* parent)
{
    _base = XtVaCreateManagedWidget(_name, xmFormWidgetClass, parent->clientArea(), nullptr);
    _clientArea = _base;
    Widget button = XtVaCreateManagedWidget(
        "_button", xmPushButtonWidgetClass, _base, XmNtopAttachment, XmATTACH_FORM,
        XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, nullptr);
    // Without a text it would show its own name.
    _labelWidget =
        XtVaCreateWidget("_label", xmLabelWidgetClass, _base, XmNtopAttachment, XmATTACH_WIDGET,
                         XmNtopWidget, button, XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment,
                         XmATTACH_FORM, XmNbottomAttachment, XmATTACH_FORM, nullptr);
    updateLabel(_label);
    equip(button);
    installDestroyHandler();
}

void qipTButton_X::updateLabel(const char* text)
{
    if (text != nullptr && _labelWidget != nullptr) {
        setText(_labelWidget, text);
        XtManageChild(_labelWidget);
    }
}

const char* qipTButton_X::className() const
{
    return "qipTButton_X";
}

void qipTButton_X::destroyed()
{
    _labelWidget = nullptr;
    qipButton_X::destroyed();
}
