// SPDX-License-Identifier: MIT
#include "qip/Components/qipVertScrollBar.h"

#include "qip/Components/qipScrolledWindow.h"

#include <Xm/Xm.h>

qipVertScrollBar::qipVertScrollBar(const char* name, qipScrolledWindow* client)
    : qipScrollBar(name, client, XmVERTICAL)
{}

const char* qipVertScrollBar::className() const
{
    return "qipVertScrollBar";
}

void qipVertScrollBar::scrollClient(int v)
{
    _client->vertScroll(v);
}
