// SPDX-License-Identifier: MIT
#include "zem/Window/HelpBtn.h"

#include "qip/Base/qipApplication.h"
#include "qip/Support/qipAssert.h"
#include "zem/Help/HelpWindow.h"

#include <X11/cursorfont.h>
#include <Xm/Xm.h>

HelpBtn::HelpBtn(qipVCell* context, const char* const* image, const char* const* image2)
    : QuenzilBtn("helpBtn", nullptr, image, image2), _cursor(0), _context(context)
{}

void HelpBtn::helpRequested() const
{
    HelpWindow::showHelpOn("overview");
}

const char* HelpBtn::className() const
{
    return "HelpBtn";
}

void HelpBtn::triggered()
{
    if (_cursor == 0) {
        _cursor = XCreateFontCursor(theApplication->display(), XC_question_arrow);
        qipAssert(_cursor != 0);
    }
    XEvent event = {};
    Widget widget = XmTrackingEvent(_context->baseWidget(), _cursor, True, &event);
    while (widget != nullptr && XtHasCallbacks(widget, XmNhelpCallback) != XtCallbackHasSome) {
        widget = XtParent(widget);
    }
    if (widget != nullptr) {
        XmAnyCallbackStruct call = {XmCR_HELP, &event};
        XtCallCallbacks(widget, XmNhelpCallback, &call);
    }
}
