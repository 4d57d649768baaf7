// SPDX-License-Identifier: MIT
#include "qip/Monitors/qipTButton.h"

#include "qip/Monitors/qipButton.h"
#include "qip/Monitors/qipTButton_X.h"
#include "qip/Support/qipAssert.h"

#include <Xm/RowColumn.h>
#include <Xm/Xm.h>

namespace {

bool isMenu(Widget widget)
{
    unsigned char type = XmWORK_AREA;
    if (XmIsRowColumn(widget)) {
        XtVaGetValues(widget, XmNrowColumnType, &type, nullptr);
    }
    return type == XmMENU_PULLDOWN;
}

} // namespace

qipTButton::qipTButton(const char* name) : qipVCell(name), _btn(nullptr), _engn(nullptr) {}

qipTButton::~qipTButton()
{
    delete _engn;
    delete _btn;
}

void qipTButton::install(qipVCell* parent)
{
    qipAssert(_engn != 0);
    if (isMenu(parent->clientArea())) {
        _engn->qipButton_X::install(parent);
    } else {
        _engn->install(parent);
    }
    _base = _engn->baseWidget();
    _clientArea = _engn->clientArea();
    installDestroyHandler();
    installHelpHandler();
}

const char* qipTButton::className() const
{
    return "qipTButton";
}

int qipTButton::activate()
{
    return _btn->activate();
}

int qipTButton::deactivate()
{
    return _btn->deactivate();
}

void qipTButton::triggered() {}
