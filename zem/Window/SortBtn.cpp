// SPDX-License-Identifier: MIT
#include "zem/Window/SortBtn.h"

#include "zem/Help/HelpWindow.h"
#include "zem/Reports/RptArea.h"
#include "zem/Window/CommandDialog.h"

#include <Xm/SelectioB.h>

bool SortBtn::_clicked = false;

SortBtn::SortBtn() : DialogBtn("sortBtn", "Sort", nullptr, nullptr, _clicked) {}

SortBtn::SortBtn(const char* const* image, const char* const* image2)
    : DialogBtn("sortBtn", nullptr, image, image2, _clicked)
{}

const char* SortBtn::className() const
{
    return "SortBtn";
}

void SortBtn::triggered()
{
    if (openDialog()) {
        CommandDialog::popUp(_dialogBox);
    }
}

Widget SortBtn::createDialog(Widget parent)
{
    XmString title = XmStringCreateLocalized(const_cast<char*>("Select sort criteria"));
    XmString label = XmStringCreateLocalized(const_cast<char*>("Enter sort keys: "));
    Arg args[3];
    XtSetArg(args[0], XmNautoUnmanage, False);
    XtSetArg(args[1], XmNdialogTitle, title);
    XtSetArg(args[2], XmNselectionLabelString, label);
    static char name[] = "Select sorting criteria";
    Widget dialog = XmCreatePromptDialog(parent, name, args, XtNumber(args));
    XmStringFree(title);
    XmStringFree(label);
    if (dialog != nullptr) {
        XtAddCallback(dialog, XmNhelpCallback, help_cbk, this);
    }
    return dialog;
}

void SortBtn::accepted(const char* text)
{
    if (text != nullptr && text[0] != '\0') {
        sortKeys(text);
    }
}

void SortBtn::sortKeys(const char* text)
{
    theReportContainer->sortBy(text);
    theReportContainer->sortAndView();
    endDialog();
}

void SortBtn::help_cbk(Widget, XtPointer, XtPointer)
{
    HelpWindow::showHelpOn("toolbar");
}

void SortBtn::cancelled()
{
    endDialog();
}

void SortBtn::endDialog()
{
    if (_dialogBox != nullptr) {
        CommandDialog::popDown(_dialogBox);
        XtDestroyWidget(_dialogBox);
        _dialogBox = nullptr;
    }
    dialogIsDown();
}
