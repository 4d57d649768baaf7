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

// The width that a label's text asks for, at least 1.
int naturalWidth(Widget label)
{
    XtVaSetValues(label, XmNrecomputeSize, True, nullptr);
    XtWidgetGeometry natural = {};
    XtQueryGeometry(label, nullptr, &natural);
    return std::max<int>(natural.width, 1);
}

// A text that is too long for its label shows its beginning.
void setWidth(Widget label, int width)
{
    XtVaSetValues(label, XmNalignment, XmALIGNMENT_BEGINNING, XmNrecomputeSize, False, XmNwidth,
                  static_cast<Dimension>(width), nullptr);
}

} // namespace

ZEMStsBar::ZEMStsBar(const char* name) : StatusBar(name), _coverageSummary(nullptr) {}

ZEMStsBar::~ZEMStsBar()
{
    if (_base != nullptr) {
        // The widgets may live on.
        XtRemoveEventHandler(_base, StructureNotifyMask, False, resized_cbk, this);
    }
}

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

// Gives message and summary their natural widths while there is room for both. Where there is less
// the message gets what the summary leaves, and where that is nothing the summary is clipped, too:
// the frames would overlap otherwise, the message's above.
void ZEMStsBar::fitMessage()
{
    if (_msgArea == nullptr || _coverageSummary == nullptr) {
        return;
    }
    int message = naturalWidth(_msgArea);
    int summary = naturalWidth(_coverageSummary);
    if (XtIsRealized(_base)) {
        Widget frame = XtParent(_msgArea);
        const int borders = widthOf(frame) - widthOf(_msgArea) +
                            widthOf(XtParent(_coverageSummary)) - widthOf(_coverageSummary);
        const int texts = widthOf(_base) - borders;
        const int gap = std::max(std::min(Gap, texts - 2), 0);
        // Narrower than two borders there is no place for the message at all.
        XtSetMappedWhenManaged(frame, texts >= 2);
        summary = std::max(std::min(summary, texts - gap - 1), 1);
        message = std::max(std::min(message, texts - gap - summary), 1);
    }
    setWidth(_coverageSummary, summary);
    setWidth(_msgArea, message);
}
