// SPDX-License-Identifier: MIT
//
// The horizontal scroll bar of a scrolled window.
#pragma once

#include "qip/Components/qipScrollBar.h"

class qipHorizScrollBar : public qipScrollBar
{
public:
    qipHorizScrollBar(const char* name, qipScrolledWindow* client);
    const char* className() const override;

protected:
    void scrollClient(int v) override;
};
