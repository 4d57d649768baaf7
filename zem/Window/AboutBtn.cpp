// SPDX-License-Identifier: MIT
#include "zem/Window/AboutBtn.h"

#include "qip/Base/qipApplication.h"
#include "zem/Help/HelpWindow.h"

#include <cstdio>

namespace {

// "About zem..."; the button keeps a copy.
struct Label
{
    explicit Label(const char* application)
    {
        std::snprintf(text, sizeof text, "About %s...", application);
    }

    char text[128];
};

} // namespace

AboutBtn::AboutBtn() : QuenzilBtn("aboutBtn", Label(theApplication->name()).text, nullptr, nullptr)
{}

const char* AboutBtn::className() const
{
    return "AboutBtn";
}

void AboutBtn::triggered()
{
    HelpWindow::showHelpOn("about");
}
