// SPDX-License-Identifier: MIT
#include "zem/Window/AboutBtn.h"

#include "qip/Base/qipApplication.h"
#include "zem/Help/HelpWindow.h"

#include <string>

AboutBtn::AboutBtn()
    : QuenzilBtn("aboutBtn", ("About " + std::string(theApplication->name()) + "...").c_str(),
                 nullptr, nullptr)
{}

const char* AboutBtn::className() const
{
    return "AboutBtn";
}

void AboutBtn::triggered()
{
    HelpWindow::showHelpOn("about");
}
