// SPDX-License-Identifier: MIT
#include "zem/Window/LoadBtn.h"

#include "qip/Base/qipApplication.h"
#include "zem/Help/HelpWindow.h"
#include "zem/Reports/RptArea.h"
#include "zem/Window/CommandDialog.h"

#include <Xm/FileSB.h>

bool LoadBtn::_clicked = false;

LoadBtn::LoadBtn() : QuenzilBtn("selectBtn", "Load", nullptr, nullptr), _dialogBox(nullptr) {}

LoadBtn::LoadBtn(const char* const* image, const char* const* image2)
    : QuenzilBtn("selectBtn", nullptr, image, image2), _dialogBox(nullptr)
{}

void LoadBtn::helpRequested() const
{
    HelpWindow::showHelpOn("toolbar");
}

const char* LoadBtn::className() const
{
    return "LoadBtn";
}

void LoadBtn::triggered()
{
    if (_clicked || theReportContainer == nullptr) {
        return;
    }
    _clicked = true;
    static char name[] = "fileSelection";
    _dialogBox = XmCreateFileSelectionDialog(theApplication->baseWidget(), name, nullptr, 0);
    if (_dialogBox == nullptr) {
        return;
    }
    XtUnmanageChild(XmFileSelectionBoxGetChild(_dialogBox, XmDIALOG_HELP_BUTTON));
    CommandDialog::setText(_dialogBox, XmNdialogTitle, "Select ZEM log file");
    CommandDialog::setText(_dialogBox, XmNpattern, "*.log");
    XtAddCallback(_dialogBox, XmNokCallback, ok_cbk, this);
    XtAddCallback(_dialogBox, XmNcancelCallback, cancel_cbk, this);
    CommandDialog::cancelOnClose(_dialogBox, cancel_cbk, this);
    XtManageChild(_dialogBox);
}

void LoadBtn::ok_cbk(Widget, XtPointer button, XtPointer callData)
{
    const auto* call = static_cast<XmFileSelectionBoxCallbackStruct*>(callData);
    char* text = CommandDialog::textOf(call->value);
    if (text == nullptr) {
        return;
    }
    if (text[0] != '\0') {
        static_cast<LoadBtn*>(button)->processSelectedFile(text);
    }
    XtFree(text);
}

void LoadBtn::processSelectedFile(const char* name)
{
    if (_dialogBox != nullptr) {
        CommandDialog::popDown(_dialogBox);
    }
    theReportContainer->processFile(name);
    theReportContainer->report();
    _clicked = false;
}

void LoadBtn::cancel_cbk(Widget, XtPointer button, XtPointer)
{
    CommandDialog::popDown(static_cast<LoadBtn*>(button)->_dialogBox);
    _clicked = false;
}
