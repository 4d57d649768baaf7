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

// The place, from 1, of the last entry for `group`.
int lastPlaceOf(const qipVCell* group, const List<qipVCell*>& groups)
{
    int last = 0;
    int place = 0;
    ListIterator<qipVCell*> it(groups);
    while (const qipVCell* each = it.next()) {
        ++place;
        last = each == group ? place : last;
    }
    return last;
}

// Stands the groups side by side in the order of the list. A group that is listed more than once
// stands where its last entry is: attached at each entry it would hang on itself.
void arrange(const List<qipVCell*>& groups, void (*attach)(qipVCell*, qipVCell*))
{
    qipVCell* neighbour = nullptr;
    int place = 0;
    ListIterator<qipVCell*> it(groups);
    while (qipVCell* each = it.next()) {
        ++place;
        if (each->baseWidget() != nullptr && place == lastPlaceOf(each, groups)) {
            attach(each, neighbour);
            neighbour = each;
        }
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
    add(_normalGroups, group, attachLeft);
}

void qipToolBar::addHelpGroup(qipVCell* group)
{
    add(_helpGroups, group, attachRight);
}

void qipToolBar::removeGroup(qipVCell* group)
{
    if (_normalGroups.remove(group) == 0) {
        arrange(_normalGroups, attachLeft);
    }
}

void qipToolBar::removeHelpGroup(qipVCell* group)
{
    if (_helpGroups.remove(group) == 0) {
        arrange(_helpGroups, attachRight);
    }
}

void qipToolBar::add(List<qipVCell*>& groups, qipVCell* group, Attach attach)
{
    if (group == nullptr) {
        return;
    }
    if (group->baseWidget() == nullptr) {
        group->install(this);
    }
    groups.append(group);
    arrange(groups, attach);
}
