// SPDX-License-Identifier: MIT
#include "zem/Window/ExitBtn.h"

#include "qip/Components/qipQuitCommand.h"
#include "zem/Help/HelpWindow.h"

qipQuitCommand* theQuitCommand = nullptr;

ExitBtn::ExitBtn() : QuenzilBtn("exitBtn", "Exit", nullptr, nullptr) {}

ExitBtn::ExitBtn(const char* const* image, const char* const* image2)
    : QuenzilBtn("exitBtn", nullptr, image, image2)
{}

void ExitBtn::helpRequested() const
{
    HelpWindow::showHelpOn("toolbar");
}

const char* ExitBtn::className() const
{
    return "ExitBtn";
}

void ExitBtn::triggered()
{
    if (theQuitCommand != nullptr) {
        theQuitCommand->execute();
    }
}
