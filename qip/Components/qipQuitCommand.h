// SPDX-License-Identifier: MIT
//
// Ends the program with status 0.
#pragma once

#include "qip/Components/qipConfirmCommand.h"

class qipQuitCommand : public qipConfirmCommand
{
public:
    qipQuitCommand(const char* name, int confirm);
    ~qipQuitCommand() override;

    // Does not return.
    int doit() override;
    const char* className() const override;
};
