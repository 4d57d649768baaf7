// SPDX-License-Identifier: MIT
#include "qip/Components/qipHorizScrollBar.h"

#include "qip/Components/qipScrolledWindow.h"

#include <Xm/Xm.h>

qipHorizScrollBar::qipHorizScrollBar(const char* name, qipScrolledWindow* client)
    : qipScrollBar(name, client, XmHORIZONTAL)
{}

const char* qipHorizScrollBar::className() const
{
    return "qipHorizScrollBar";
}

void qipHorizScrollBar::scrollClient(int v)
{
    _client->horizScroll(v);
}
