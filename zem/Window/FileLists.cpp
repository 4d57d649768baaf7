// SPDX-License-Identifier: MIT
#include "zem/Window/FileLists.h"

#include "qip/Support/qipAssert.h"

#include <X11/IntrinsicP.h>
#include <Xm/FileSB.h>

namespace {

struct Place
{
    Position x;
    Position y;
    Dimension width;
    Dimension height;
};

Place placeOf(Widget widget)
{
    Place place = {};
    XtVaGetValues(widget, XmNx, &place.x, XmNy, &place.y, XmNwidth, &place.width, XmNheight,
                  &place.height, nullptr);
    return place;
}

// As a geometry manager does, which is not asked: the dialog would refuse.
void put(Widget widget, const Place& place)
{
    XtConfigureWidget(widget, place.x, place.y, place.width, place.height, 0);
}

// The heading of a list, as wide as the list.
void putAbove(const Place& list, Widget label)
{
    Place place = placeOf(label);
    place.x = list.x;
    place.width = list.width;
    put(label, place);
}

// A list with its scroll bars.
Widget scrolledList(Widget dialog, unsigned char which)
{
    return XtParent(XmFileSelectionBoxGetChild(dialog, which));
}

} // namespace

void FileLists::keepEven(Widget dialog)
{
    qipAssert(!XtIsManaged(dialog));
    XtVaSetValues(dialog, XmNresizePolicy, XmRESIZE_NONE, nullptr);
    Widget folders = scrolledList(dialog, XmDIALOG_DIR_LIST);
    Widget files = scrolledList(dialog, XmDIALOG_LIST);
    XtAddEventHandler(folders, StructureNotifyMask, False, changed, dialog);
    XtAddEventHandler(files, StructureNotifyMask, False, changed, dialog);
}

// The dialog has shown a list, or given it another place.
void FileLists::changed(Widget, XtPointer dialog, XEvent* event, Boolean*)
{
    if (event->type == MapNotify || event->type == ConfigureNotify) {
        share(static_cast<Widget>(dialog));
    }
}

void FileLists::share(Widget dialog)
{
    Widget folders = scrolledList(dialog, XmDIALOG_DIR_LIST);
    Widget files = scrolledList(dialog, XmDIALOG_LIST);
    Place left = placeOf(folders);
    Place right = placeOf(files);
    const int gap = right.x - left.x - left.width;
    const int end = right.x + right.width;
    const int each = (end - left.x - gap) / 2;
    if (left.width == each || each <= 0) {
        return;
    }
    left.width = static_cast<Dimension>(each);
    right.x = static_cast<Position>(left.x + each + gap);
    right.width = static_cast<Dimension>(end - right.x);
    put(folders, left);
    put(files, right);
    putAbove(left, XmFileSelectionBoxGetChild(dialog, XmDIALOG_DIR_LIST_LABEL));
    putAbove(right, XmFileSelectionBoxGetChild(dialog, XmDIALOG_LIST_LABEL));
}
