// SPDX-License-Identifier: MIT
#include "qip/Components/qipToolGroup.h"

#include "qip/Support/ListIterator.h"

#include <Xm/Frame.h>
#include <Xm/RowColumn.h>
#include <Xm/Xm.h>

#include <cstdio>

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
    char workName[256];
    std::snprintf(workName, sizeof workName, "%s_work", _name.get());
    _clientArea = XtVaCreateManagedWidget(workName, xmRowColumnWidgetClass, _base, XmNorientation,
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
