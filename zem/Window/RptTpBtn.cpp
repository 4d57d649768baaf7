// SPDX-License-Identifier: MIT
#include "zem/Window/RptTpBtn.h"

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

RptTpBtn::RptTpBtn() : DialogBtn("rptTpBtn", "Reports", nullptr, nullptr, _clicked) {}

RptTpBtn::RptTpBtn(const char* const* image, const char* const* image2)
    : DialogBtn("rptTpBtn", nullptr, image, image2, _clicked)
{}

const char* RptTpBtn::className() const
{
    return "RptTpBtn";
}

void RptTpBtn::triggered()
{
    if (openDialog()) {
        CommandDialog::popUp(_dialogBox);
    }
}

Widget RptTpBtn::createDialog(Widget parent)
{
    static char name[] = "rptType";
    Widget dialog = XmCreateSelectionDialog(parent, name, nullptr, 0);
    if (dialog != nullptr) {
        XtUnmanageChild(XmSelectionBoxGetChild(dialog, XmDIALOG_HELP_BUTTON));
        XtUnmanageChild(XmSelectionBoxGetChild(dialog, XmDIALOG_APPLY_BUTTON));
        CommandDialog::setText(dialog, XmNdialogTitle, "Select report type");
        CommandDialog::setText(dialog, XmNlistLabelString, "Select report type:");
        setTypes(dialog);
        XtAddCallback(dialog, XmNnoMatchCallback, noMatch_cbk, this);
    }
    return dialog;
}

// The dialog has gone down by itself here and in the two that follow.
void RptTpBtn::accepted(const char* text)
{
    if (text != nullptr) {
        reportType(text);
    }
    dialogIsDown();
}

void RptTpBtn::cancelled()
{
    dialogIsDown();
}

void RptTpBtn::noMatch_cbk(Widget, XtPointer button, XtPointer)
{
    if (theStatusBar != nullptr) {
        theStatusBar->displayMessage(" Invalid selection!");
    }
    static_cast<RptTpBtn*>(button)->dialogIsDown();
}

void RptTpBtn::closed()
{
    XtUnmanageChild(_dialogBox);
    dialogIsDown();
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
