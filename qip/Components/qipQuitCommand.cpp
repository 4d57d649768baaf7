// SPDX-License-Identifier: MIT
#include "qip/Components/qipQuitCommand.h"

#include <cstdlib>

qipQuitCommand::qipQuitCommand(const char* name, int confirm) : qipConfirmCommand(name, 0, confirm)
{
    setQuestion("Do you really want to quit?");
}

qipQuitCommand::~qipQuitCommand() = default;

int qipQuitCommand::doit()
{
    std::exit(0);
}

const char* qipQuitCommand::className() const
{
    return "qipQuitCommand";
}
