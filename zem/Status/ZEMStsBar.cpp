// SPDX-License-Identifier: MIT
#include "zem/Status/ZEMStsBar.h"

#include "zem/Help/HelpWindow.h"
#include "zem/Rows/RptText.h"

#include <Xm/Form.h>
#include <Xm/Frame.h>
#include <Xm/Label.h>
#include <Xm/Xm.h>

#include <algorithm>
#include <new>

ZEMStsBar* theStatusBar = nullptr;

namespace {

constexpr char SummaryTag[] = "FNT_STATUSBAR_LBL";
constexpr int Gap = 4; // pixels between the two frames at least

Dimension widthOf(Widget widget)
{
    Dimension width = 0;
    XtVaGetValues(widget, XmNwidth, &width, nullptr);
    return width;
}

} // namespace

ZEMStsBar::ZEMStsBar(const char* name) : StatusBar(name), _coverageSummary(nullptr) {}

ZEMStsBar::~ZEMStsBar() = default;

void ZEMStsBar::install(qipVCell* parent)
{
    _base = XtVaCreateManagedWidget("statusbar_work", xmFormWidgetClass, parent->clientArea(),
                                    XmNfractionBase, 20, XmNresizePolicy, XmRESIZE_NONE, nullptr);
    Widget statFrame = XtVaCreateManagedWidget(
        "statFrame", xmFrameWidgetClass, _base, XmNshadowType, XmSHADOW_ETCHED_IN,
        XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_NONE, XmNtopAttachment,
        XmATTACH_FORM, XmNbottomAttachment, XmATTACH_FORM, nullptr);
    XmString empty = XmStringCreateLocalized(const_cast<char*>(""));
    _msgArea = XtVaCreateManagedWidget("msgLbl", xmLabelWidgetClass, statFrame, XmNlabelString,
                                       empty, XmNalignment, XmALIGNMENT_BEGINNING, nullptr);
    XmStringFree(empty);
    Widget covFrame = XtVaCreateManagedWidget(
        "covFrame", xmFrameWidgetClass, _base, XmNshadowType, XmSHADOW_ETCHED_IN, XmNleftAttachment,
        XmATTACH_NONE, XmNrightAttachment, XmATTACH_FORM, XmNtopAttachment, XmATTACH_FORM,
        XmNbottomAttachment, XmATTACH_FORM, nullptr);
    _coverageSummary =
        XtVaCreateManagedWidget("coverageSummary", xmLabelWidgetClass, covFrame, nullptr);
    coverageSummary(0, 0);
    _clientArea = _base;
    installHelpHandler();
    installDestroyHandler();
    XtAddEventHandler(_base, StructureNotifyMask, False, resized_cbk, this);
}

void ZEMStsBar::helpRequested() const
{
    HelpWindow::showHelpOn("overview");
}

const char* ZEMStsBar::className() const
{
    return "ZEMStsBar";
}

void ZEMStsBar::destroyed()
{
    _coverageSummary = nullptr;
    StatusBar::destroyed();
}

void ZEMStsBar::coverageSummary(long untested, long total)
{
    if (_coverageSummary != nullptr) {
        try {
            setLabelText(_coverageSummary, RptText::summary(untested, total).c_str(), SummaryTag);
        } catch (const std::bad_alloc&) {
            setLabelText(_coverageSummary, "", SummaryTag); // none is better than an old one
        }
        fitMessage();
    }
}

void ZEMStsBar::reportInfo(const char* text)
{
    setPermanent(text);
    refresh();
}

void ZEMStsBar::showMessage(const char* text)
{
    StatusBar::showMessage(text);
    fitMessage();
}

void ZEMStsBar::resized_cbk(Widget, XtPointer bar, XEvent* event, Boolean*)
{
    if (event->type == ConfigureNotify) {
        static_cast<ZEMStsBar*>(bar)->fitMessage();
    }
}

// Gives the message its natural width or what the summary leaves, whichever is less. The frames
// would overlap otherwise, the message's above.
void ZEMStsBar::fitMessage()
{
    if (_msgArea == nullptr || _coverageSummary == nullptr) {
        return;
    }
    XtVaSetValues(_msgArea, XmNrecomputeSize, True, nullptr);
    XtWidgetGeometry natural = {};
    XtQueryGeometry(_msgArea, nullptr, &natural);
    const int frame = widthOf(XtParent(_msgArea)) - widthOf(_msgArea);
    const int room = widthOf(_base) - widthOf(XtParent(_coverageSummary)) - Gap - frame;
    int width = std::max<int>(natural.width, 1);
    if (XtIsRealized(_base)) {
        width = std::max(std::min(width, room), 1);
    }
    XtVaSetValues(_msgArea, XmNrecomputeSize, False, XmNwidth, static_cast<Dimension>(width),
                  nullptr);
}
