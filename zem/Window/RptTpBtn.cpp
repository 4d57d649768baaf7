// SPDX-License-Identifier: MIT
#include "zem/Window/RptTpBtn.h"

#include "qip/Base/qipApplication.h"
#include "zem/Help/HelpWindow.h"
#include "zem/Reports/RptArea.h"
#include "zem/Status/ZEMStsBar.h"
#include "zem/Window/CommandDialog.h"

#include <Xm/SelectioB.h>

#include <cstring>

namespace {

const char* const Types[] = {"Directory", "File", "Function", "Class"};
constexpr int NTypes = 4;

void setTypes(Widget dialog)
{
    XmString items[NTypes];
    for (int i = 0; i < NTypes; ++i) {
        items[i] = XmStringCreateLocalized(const_cast<char*>(Types[i]));
    }
    XtVaSetValues(dialog, XmNlistItems, items, XmNlistItemCount, NTypes, XmNlistVisibleItemCount,
                  NTypes, XmNmustMatch, True, nullptr);
    for (XmString item : items) {
        XmStringFree(item);
    }
}

} // namespace

bool RptTpBtn::_clicked = false;

RptTpBtn::RptTpBtn() : QuenzilBtn("rptTpBtn", "Reports", nullptr, nullptr), _dialogBox(nullptr) {}

RptTpBtn::RptTpBtn(const char* const* image, const char* const* image2)
    : QuenzilBtn("rptTpBtn", nullptr, image, image2), _dialogBox(nullptr)
{}

void RptTpBtn::helpRequested() const
{
    HelpWindow::showHelpOn("toolbar");
}

const char* RptTpBtn::className() const
{
    return "RptTpBtn";
}

void RptTpBtn::triggered()
{
    if (_clicked || theReportContainer == nullptr) {
        return;
    }
    _clicked = true;
    static char name[] = "rptType";
    _dialogBox = XmCreateSelectionDialog(theApplication->baseWidget(), name, nullptr, 0);
    if (_dialogBox == nullptr) {
        return;
    }
    XtUnmanageChild(XmSelectionBoxGetChild(_dialogBox, XmDIALOG_HELP_BUTTON));
    XtUnmanageChild(XmSelectionBoxGetChild(_dialogBox, XmDIALOG_APPLY_BUTTON));
    CommandDialog::setText(_dialogBox, XmNdialogTitle, "Select report type");
    CommandDialog::setText(_dialogBox, XmNlistLabelString, "Select report type:");
    setTypes(_dialogBox);
    XtAddCallback(_dialogBox, XmNokCallback, ok_cbk, this);
    XtAddCallback(_dialogBox, XmNcancelCallback, cancel_cbk, this);
    XtAddCallback(_dialogBox, XmNnoMatchCallback, noMatch_cbk, this);
    CommandDialog::cancelOnClose(_dialogBox, close_cbk, this);
    XtManageChild(_dialogBox);
    CommandDialog::popUp(_dialogBox);
}

// The dialog has gone down by itself here and in the two that follow.
void RptTpBtn::ok_cbk(Widget, XtPointer button, XtPointer callData)
{
    const auto* call = static_cast<XmSelectionBoxCallbackStruct*>(callData);
    char* text = CommandDialog::textOf(call->value);
    if (text != nullptr) {
        static_cast<RptTpBtn*>(button)->reportType(text);
        XtFree(text);
    }
    _clicked = false;
}

void RptTpBtn::cancel_cbk(Widget, XtPointer, XtPointer)
{
    _clicked = false;
}

void RptTpBtn::noMatch_cbk(Widget, XtPointer, XtPointer)
{
    if (theStatusBar != nullptr) {
        theStatusBar->displayMessage(" Invalid selection!");
    }
    _clicked = false;
}

void RptTpBtn::close_cbk(Widget, XtPointer button, XtPointer)
{
    XtUnmanageChild(static_cast<RptTpBtn*>(button)->_dialogBox);
    _clicked = false;
}

void RptTpBtn::reportType(const char* text)
{
    RptType type = RptByFile;
    if (std::strcmp(text, "Directory") == 0) {
        type = RptByDirectory;
    } else if (std::strcmp(text, "Function") == 0) {
        type = RptByFunction;
    } else if (std::strcmp(text, "Class") == 0) {
        type = RptByClass;
    }
    theReportContainer->reportType(type);
    theReportContainer->report();
}
