// SPDX-License-Identifier: MIT
#include "qip/Components/qipMenuBar.h"

#include "qip/Components/qipMenuPane.h"
#include "qip/Support/ListIterator.h"
#include "qip/Support/qipAssert.h"

#include <Xm/RowColumn.h>
#include <Xm/Xm.h>

qipMenuBar::qipMenuBar(const char* name) : qipVCell(name) {}

qipMenuBar::~qipMenuBar() = default;

int qipMenuBar::addPane(qipMenuPane* pane)
{
    return _menuPanes.append(pane);
}

void qipMenuBar::install(qipVCell* parent)
{
    qipAssert(parent != 0);
    _base = XmCreateMenuBar(parent->clientArea(), const_cast<char*>(_name.get()), nullptr, 0);
    _clientArea = _base;
    ListIterator<qipMenuPane*> panes(_menuPanes);
    while (qipMenuPane* pane = panes.next()) {
        pane->install(this);
    }
    XtManageChild(_base);
    XtVaSetValues(parent->clientArea(), XmNmenuBar, _base, nullptr);
    installDestroyHandler();
}

const char* qipMenuBar::className() const
{
    return "qipMenuBar";
}
