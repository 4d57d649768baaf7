// SPDX-License-Identifier: MIT
#include "zem/Window/SrcBtn.h"

#include "zem/Help/HelpWindow.h"
#include "zem/Reports/RptArea.h"

SrcBtn::SrcBtn() : QuenzilBtn("srcBtn", "Browse", nullptr, nullptr) {}

SrcBtn::SrcBtn(const char* const* image, const char* const* image2)
    : QuenzilBtn("srcBtn", nullptr, image, image2)
{}

void SrcBtn::helpRequested() const
{
    HelpWindow::showHelpOn("toolbar");
}

const char* SrcBtn::className() const
{
    return "SrcBtn";
}

void SrcBtn::triggered()
{
    if (theReportContainer != nullptr) {
        theReportContainer->browseToggle();
    }
}
