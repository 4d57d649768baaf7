// SPDX-License-Identifier: MIT
//
// A window around one cell, to test the cell alone.
#pragma once

#include "qip/Base/qipApplication.h"
#include "qip/Base/qipWindow.h"

class CellWindow : public qipWindow
{
public:
    explicit CellWindow(qipVCell& cell) : qipWindow("testWindow"), _cell(cell) {}

    Widget createWorkArea(Widget) override
    {
        _clientArea = _main;
        _cell.install(this);
        return _cell.baseWidget();
    }

    // Creates the widgets and shows them.
    void open()
    {
        initialize();
        manage();
        XtRealizeWidget(theApplication->baseWidget());
    }

private:
    qipVCell& _cell;
};
