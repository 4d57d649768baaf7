// SPDX-License-Identifier: MIT
#include "zem/Window/CommandDialog.h"

#include <Xm/Protocols.h>

void CommandDialog::cancelOnClose(Widget dialog, XtCallbackProc cancel, XtPointer data)
{
    Widget shell = XtParent(dialog);
    XtVaSetValues(shell, XmNdeleteResponse, XmDO_NOTHING, nullptr);
    const Atom deleteWindow = XInternAtom(XtDisplay(shell), "WM_DELETE_WINDOW", False);
    XmAddWMProtocolCallback(shell, deleteWindow, cancel, data);
}

void CommandDialog::popUp(Widget dialog)
{
    XtPopup(XtParent(dialog), XtGrabNone);
}

void CommandDialog::popDown(Widget dialog)
{
    XtPopdown(XtParent(dialog));
}

void CommandDialog::setText(Widget dialog, const char* resource, const char* text)
{
    XmString string = XmStringCreateLocalized(const_cast<char*>(text));
    XtVaSetValues(dialog, resource, string, nullptr);
    XmStringFree(string);
}

char* CommandDialog::textOf(XmString string)
{
    char* text = nullptr;
    return XmStringGetLtoR(string, const_cast<char*>(XmFONTLIST_DEFAULT_TAG), &text) ? text
                                                                                     : nullptr;
}
