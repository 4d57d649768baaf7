// SPDX-License-Identifier: MIT
#include "zem/Window/DialogBtn.h"

#include "qip/Base/qipApplication.h"
#include "zem/Help/HelpWindow.h"
#include "zem/Reports/RptArea.h"
#include "zem/Window/CommandDialog.h"

#include <Xm/SelectioB.h>

DialogBtn::DialogBtn(const char* name, const char* label, const char* const* image,
                     const char* const* image2, bool& isUp)
    : QuenzilBtn(name, label, image, image2), _dialogBox(nullptr), _isUp(isUp)
{}

void DialogBtn::helpRequested() const
{
    HelpWindow::showHelpOn("toolbar");
}

bool DialogBtn::openDialog()
{
    if (_isUp || theReportContainer == nullptr) {
        return false;
    }
    _isUp = true;
    _dialogBox = createDialog(theApplication->baseWidget());
    if (_dialogBox == nullptr) {
        return false;
    }
    XtAddCallback(_dialogBox, XmNokCallback, ok_cbk, this);
    XtAddCallback(_dialogBox, XmNcancelCallback, cancel_cbk, this);
    CommandDialog::cancelOnClose(_dialogBox, close_cbk, this);
    XtManageChild(_dialogBox);
    return true;
}

void DialogBtn::closed()
{
    cancelled();
}

// The dialog may be gone after the calls below.
void DialogBtn::ok_cbk(Widget, XtPointer button, XtPointer callData)
{
    // A file selection's call begins as that of any other selection.
    const auto* call = static_cast<XmSelectionBoxCallbackStruct*>(callData);
    char* text = CommandDialog::textOf(call->value);
    static_cast<DialogBtn*>(button)->accepted(text);
    XtFree(text);
}

void DialogBtn::cancel_cbk(Widget, XtPointer button, XtPointer)
{
    static_cast<DialogBtn*>(button)->cancelled();
}

void DialogBtn::close_cbk(Widget, XtPointer button, XtPointer)
{
    static_cast<DialogBtn*>(button)->closed();
}
