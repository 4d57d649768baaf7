// SPDX-License-Identifier: MIT
//
// A framed group of buttons in a tool bar, side by side.
#pragma once

#include "qip/Base/qipVCell.h"
#include "qip/Support/List.h"

class qipToolGroup : public qipVCell
{
public:
    explicit qipToolGroup(const char* name);
    qipToolGroup(const qipToolGroup&) = delete;
    qipToolGroup& operator=(const qipToolGroup&) = delete;
    ~qipToolGroup() override;

    // Adds a button, borrowed; null is ignored. A button that comes after install() is not shown.
    void addTool(qipVCell* button);

    // Creates the frame, in it the row "NAME_work", and in that the buttons.
    void install(qipVCell* parent) override;
    const char* className() const override;

private:
    List<qipVCell*> _buttons;
};
