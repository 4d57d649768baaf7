// SPDX-License-Identifier: MIT
#include "zem/Window/LoadBtn.h"

#include "zem/Reports/RptArea.h"
#include "zem/Window/CommandDialog.h"
#include "zem/Window/FileLists.h"

#include <Xm/FileSB.h>

bool LoadBtn::_clicked = false;

LoadBtn::LoadBtn() : DialogBtn("selectBtn", "Load", nullptr, nullptr, _clicked) {}

LoadBtn::LoadBtn(const char* const* image, const char* const* image2)
    : DialogBtn("selectBtn", nullptr, image, image2, _clicked)
{}

const char* LoadBtn::className() const
{
    return "LoadBtn";
}

void LoadBtn::triggered()
{
    (void)openDialog();
}

Widget LoadBtn::createDialog(Widget parent)
{
    static char name[] = "fileSelection";
    Widget dialog = XmCreateFileSelectionDialog(parent, name, nullptr, 0);
    if (dialog != nullptr) {
        XtUnmanageChild(XmFileSelectionBoxGetChild(dialog, XmDIALOG_HELP_BUTTON));
        CommandDialog::setText(dialog, XmNdialogTitle, "Select ZEM log file");
        CommandDialog::setText(dialog, XmNpattern, "*.log");
        FileLists::keepEven(dialog);
    }
    return dialog;
}

void LoadBtn::accepted(const char* text)
{
    if (text != nullptr && text[0] != '\0') {
        processSelectedFile(text);
    }
}

void LoadBtn::processSelectedFile(const char* name)
{
    if (_dialogBox != nullptr) {
        CommandDialog::popDown(_dialogBox);
    }
    theReportContainer->processFile(name);
    theReportContainer->report();
    dialogIsDown();
}

void LoadBtn::cancelled()
{
    CommandDialog::popDown(_dialogBox);
    dialogIsDown();
}
