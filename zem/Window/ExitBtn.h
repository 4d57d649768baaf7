// SPDX-License-Identifier: MIT
//
// The command that ends the program. In the menu and the tool bar.
#pragma once

#include "zem/Buttons/QuenzilBtn.h"

class qipQuitCommand;

class ExitBtn : public QuenzilBtn
{
public:
    // For the menu, and for the tool bar.
    ExitBtn();
    ExitBtn(const char* const* image, const char* const* image2);

    void helpRequested() const override;
    const char* className() const override;

    // Executes theQuitCommand.
    void triggered() override;
};

// What Exit and the window manager's Close execute; null in a program without one.
extern qipQuitCommand* theQuitCommand;
