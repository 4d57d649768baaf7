// SPDX-License-Identifier: MIT
//
// The command that gives help on what the user points at next. In the tool bar.
#pragma once

#include "zem/Buttons/QuenzilBtn.h"

class HelpBtn : public QuenzilBtn
{
public:
    // Help is picked within the window `context`, which is borrowed.
    HelpBtn(qipVCell* context, const char* const* image, const char* const* image2);

    void helpRequested() const override;
    const char* className() const override;

    // Waits for a click in the context and asks the first component for help that gives any, from
    // the widget clicked on upwards.
    void triggered() override;

private:
    Cursor _cursor; // 0 before the first use
    qipVCell* _context;
};
