// SPDX-License-Identifier: MIT
#include "qip/Components/qipToolBar.h"

#include "qip/Support/ListIterator.h"

#include <Xm/Form.h>
#include <Xm/Xm.h>

namespace {

constexpr int Margin = 10; // pixels above and below the groups

void attachLeft(qipVCell* group, qipVCell* neighbour)
{
    if (neighbour != nullptr) {
        XtVaSetValues(group->baseWidget(), XmNleftAttachment, XmATTACH_WIDGET, XmNleftWidget,
                      neighbour->baseWidget(), nullptr);
    } else {
        XtVaSetValues(group->baseWidget(), XmNleftAttachment, XmATTACH_FORM, nullptr);
    }
}

// A group is made with its left side at the form; held at both sides it would fill the bar.
void attachRight(qipVCell* group, qipVCell* neighbour)
{
    XtVaSetValues(group->baseWidget(), XmNleftAttachment, XmATTACH_NONE, nullptr);
    if (neighbour != nullptr) {
        XtVaSetValues(group->baseWidget(), XmNrightAttachment, XmATTACH_WIDGET, XmNrightWidget,
                      neighbour->baseWidget(), nullptr);
    } else {
        XtVaSetValues(group->baseWidget(), XmNrightAttachment, XmATTACH_FORM, nullptr);
    }
}

// Takes one entry of `group` out of `groups` and gives its place to the one behind it.
void take(List<qipVCell*>& groups, qipVCell* group, void (*attach)(qipVCell*, qipVCell*))
{
    qipVCell* before = nullptr;
    ListIterator<qipVCell*> it(groups);
    for (qipVCell* each = it.next(); each != nullptr; each = it.next()) {
        if (each == group) {
            qipVCell* behind = it.next();
            groups.remove(group);
            if (behind != nullptr && behind != group) {
                attach(behind, before);
            }
            return;
        }
        before = each;
    }
}

} // namespace

qipToolBar::qipToolBar(const char* name) : qipVCell(name) {}

qipToolBar::~qipToolBar() = default;

void qipToolBar::install(qipVCell* parent)
{
    _base = XtVaCreateManagedWidget(_name, xmFormWidgetClass, parent->clientArea(), XmNmarginHeight,
                                    Margin, XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment,
                                    XmATTACH_FORM, XmNresizePolicy, XmRESIZE_NONE, nullptr);
    _clientArea = _base;
    installDestroyHandler();
}

const char* qipToolBar::className() const
{
    return "qipToolBar";
}

void qipToolBar::addGroup(qipVCell* group)
{
    if (group == nullptr) {
        return;
    }
    if (group->baseWidget() == nullptr) {
        group->install(this);
    }
    qipVCell* last = _normalGroups.last();
    if (last != group) {
        attachLeft(group, last);
    }
    _normalGroups.append(group);
}

void qipToolBar::addHelpGroup(qipVCell* group)
{
    if (group == nullptr) {
        return;
    }
    if (group->baseWidget() == nullptr) {
        group->install(this);
    }
    qipVCell* last = _helpGroups.last();
    if (last != group) {
        attachRight(group, last);
    }
    _helpGroups.append(group);
}

void qipToolBar::removeGroup(qipVCell* group)
{
    take(_normalGroups, group, attachLeft);
}

void qipToolBar::removeHelpGroup(qipVCell* group)
{
    take(_helpGroups, group, attachRight);
}
