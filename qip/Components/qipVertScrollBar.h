// SPDX-License-Identifier: MIT
//
// The vertical scroll bar of a scrolled window.
#pragma once

#include "qip/Components/qipScrollBar.h"

class qipVertScrollBar : public qipScrollBar
{
public:
    qipVertScrollBar(const char* name, qipScrolledWindow* client);
    const char* className() const override;

protected:
    void scrollClient(int v) override;
};
