// SPDX-License-Identifier: MIT
#include "qip/Components/qipHelpMenuPane.h"

#include <Xm/Xm.h>

qipHelpMenuPane::qipHelpMenuPane(const char* name, char mnemonic, const char* label)
    : qipMenuPane(name, mnemonic, label)
{}

qipHelpMenuPane::~qipHelpMenuPane() = default;

void qipHelpMenuPane::install(qipVCell* parent)
{
    qipMenuPane::install(parent);
    XtVaSetValues(parent->clientArea(), XmNmenuHelpWidget, _pane, nullptr);
}

const char* qipHelpMenuPane::className() const
{
    return "qipHelpMenuPane";
}
