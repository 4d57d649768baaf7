// SPDX-License-Identifier: MIT
#include "zem/Window/SortBtn.h"

#include "qip/Base/qipApplication.h"
#include "zem/Help/HelpWindow.h"
#include "zem/Reports/RptArea.h"
#include "zem/Window/CommandDialog.h"

#include <Xm/SelectioB.h>

bool SortBtn::_clicked = false;

SortBtn::SortBtn() : QuenzilBtn("sortBtn", "Sort", nullptr, nullptr), _dialogBox(nullptr) {}

SortBtn::SortBtn(const char* const* image, const char* const* image2)
    : QuenzilBtn("sortBtn", nullptr, image, image2), _dialogBox(nullptr)
{}

void SortBtn::helpRequested() const
{
    HelpWindow::showHelpOn("toolbar");
}

const char* SortBtn::className() const
{
    return "SortBtn";
}

void SortBtn::triggered()
{
    if (_clicked || theReportContainer == nullptr) {
        return;
    }
    _clicked = true;
    XmString title = XmStringCreateLocalized(const_cast<char*>("Select sort criteria"));
    XmString label = XmStringCreateLocalized(const_cast<char*>("Enter sort keys: "));
    Arg args[3];
    XtSetArg(args[0], XmNautoUnmanage, False);
    XtSetArg(args[1], XmNdialogTitle, title);
    XtSetArg(args[2], XmNselectionLabelString, label);
    static char name[] = "Select sorting criteria";
    _dialogBox = XmCreatePromptDialog(theApplication->baseWidget(), name, args, XtNumber(args));
    XmStringFree(title);
    XmStringFree(label);
    if (_dialogBox == nullptr) {
        return;
    }
    XtAddCallback(_dialogBox, XmNokCallback, ok_cbk, this);
    XtAddCallback(_dialogBox, XmNhelpCallback, help_cbk, this);
    XtAddCallback(_dialogBox, XmNcancelCallback, cancel_cbk, this);
    CommandDialog::cancelOnClose(_dialogBox, cancel_cbk, this);
    XtManageChild(_dialogBox);
    CommandDialog::popUp(_dialogBox);
}

void SortBtn::ok_cbk(Widget, XtPointer button, XtPointer callData)
{
    const auto* call = static_cast<XmSelectionBoxCallbackStruct*>(callData);
    char* text = CommandDialog::textOf(call->value);
    if (text == nullptr) {
        return;
    }
    if (text[0] != '\0') {
        static_cast<SortBtn*>(button)->sortKeys(text);
        _clicked = false;
    }
    XtFree(text);
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

void SortBtn::cancel_cbk(Widget, XtPointer button, XtPointer)
{
    static_cast<SortBtn*>(button)->endDialog();
}

void SortBtn::endDialog()
{
    if (_dialogBox != nullptr) {
        CommandDialog::popDown(_dialogBox);
        XtDestroyWidget(_dialogBox);
        _dialogBox = nullptr;
    }
    _clicked = false;
}
