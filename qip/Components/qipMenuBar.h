// SPDX-License-Identifier: MIT
//
// The menu bar of a window. Panes are added first and realised in one install().
#pragma once

#include "qip/Base/qipVCell.h"
#include "qip/Support/List.h"

class qipMenuPane;

class qipMenuBar : public qipVCell
{
public:
    explicit qipMenuBar(const char* name);
    qipMenuBar(const qipMenuBar&) = delete;
    qipMenuBar& operator=(const qipMenuBar&) = delete;
    ~qipMenuBar() override;

    // Adds a pane, borrowed. Returns the number of panes.
    int addPane(qipMenuPane* pane);

    // Creates the menu bar of the main window that is the client area of `parent`.
    // REQUIRES: parent is not null.
    void install(qipVCell* parent) override;
    const char* className() const override;

private:
    List<qipMenuPane*> _menuPanes;
};
