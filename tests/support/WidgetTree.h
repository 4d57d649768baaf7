// SPDX-License-Identifier: MIT
//
// A widget tree as text, one line a widget, children and popups indented below it:
//
//     NAME CLASS [unmanaged] [top=WHAT bottom=WHAT left=WHAT right=WHAT]
//
// with the attachments of a form's children: form, none, or the name of the widget attached to.
#pragma once

#include <X11/Intrinsic.h>

#include <string>

std::string widgetTree(Widget root);

// The widget called `name` below `root`; null when there is none.
Widget findWidget(Widget root, const std::string& name);

// What a label or button shows.
std::string labelText(Widget label);
