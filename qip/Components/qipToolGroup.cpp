// SPDX-License-Identifier: MIT
#include "qip/Components/qipToolGroup.h"

#include "qip/Support/ListIterator.h"

#include <Xm/Frame.h>
#include <Xm/RowColumn.h>
#include <Xm/Xm.h>

#include <string>

qipToolGroup::qipToolGroup(const char* name) : qipVCell(name) {}

qipToolGroup::~qipToolGroup() = default;

void qipToolGroup::addTool(qipVCell* button)
{
    if (button != nullptr) {
        _buttons.append(button);
    }
}

void qipToolGroup::install(qipVCell* parent)
{
    _base = XtVaCreateManagedWidget(_name, xmFrameWidgetClass, parent->clientArea(), XmNshadowType,
                                    XmSHADOW_OUT, XmNleftAttachment, XmATTACH_FORM,
                                    XmNtopAttachment, XmATTACH_FORM, nullptr);
    const std::string workName = std::string(_name) + "_work";
    _clientArea =
        XtVaCreateManagedWidget(workName.c_str(), xmRowColumnWidgetClass, _base, XmNorientation,
                                XmHORIZONTAL, XmNpacking, XmPACK_TIGHT, nullptr);
    installDestroyHandler();
    ListIterator<qipVCell*> buttons(_buttons);
    while (qipVCell* button = buttons.next()) {
        button->install(this);
    }
}

const char* qipToolGroup::className() const
{
    return "qipToolGroup";
}
