// SPDX-License-Identifier: MIT
#include "zem/Window/HMenuBtn.h"

#include "zem/Help/HelpWindow.h"

HMenuBtn::HMenuBtn(const char* topic, const char* label)
    : QuenzilBtn(topic, label, nullptr, nullptr)
{}

const char* HMenuBtn::className() const
{
    return "HMenuBtn";
}

void HMenuBtn::triggered()
{
    HelpWindow::showHelpOn(name());
}
