// SPDX-License-Identifier: MIT
#include "tests/support/WidgetTree.h"

// IntrinsicP.h must come first.
#include <X11/IntrinsicP.h>

#include <X11/CoreP.h>
#include <Xm/Form.h>
#include <Xm/Xm.h>

#include <functional>

namespace {

void forEachChild(Widget widget, const std::function<void(Widget)>& visit)
{
    if (XtIsComposite(widget)) {
        WidgetList children = nullptr;
        Cardinal nChildren = 0;
        XtVaGetValues(widget, XmNchildren, &children, XmNnumChildren, &nChildren, nullptr);
        for (Cardinal i = 0; i < nChildren; ++i) {
            visit(children[i]);
        }
    }
    if (XtIsWidget(widget)) {
        for (Cardinal i = 0; i < widget->core.num_popups; ++i) {
            visit(widget->core.popup_list[i]);
        }
    }
}

std::string attachment(Widget widget, const char* side, const char* attachName,
                       const char* widgetName)
{
    unsigned char kind = XmATTACH_NONE;
    Widget other = nullptr;
    XtVaGetValues(widget, attachName, &kind, widgetName, &other, nullptr);
    std::string what = "other";
    if (kind == XmATTACH_NONE) {
        what = "none";
    } else if (kind == XmATTACH_FORM) {
        what = "form";
    } else if (kind == XmATTACH_WIDGET && other != nullptr) {
        what = XtName(other);
    }
    return std::string(" ") + side + "=" + what;
}

void describe(Widget widget, int depth, std::string& text)
{
    text += std::string(static_cast<size_t>(depth) * 2, ' ') + XtName(widget) + " " +
            XtClass(widget)->core_class.class_name;
    if (!XtIsShell(widget) && !XtIsManaged(widget)) {
        text += " unmanaged";
    }
    if (XtParent(widget) != nullptr && XmIsForm(XtParent(widget))) {
        text += attachment(widget, "top", XmNtopAttachment, XmNtopWidget);
        text += attachment(widget, "bottom", XmNbottomAttachment, XmNbottomWidget);
        text += attachment(widget, "left", XmNleftAttachment, XmNleftWidget);
        text += attachment(widget, "right", XmNrightAttachment, XmNrightWidget);
    }
    text += "\n";
    forEachChild(widget, [&](Widget child) { describe(child, depth + 1, text); });
}

} // namespace

std::string widgetTree(Widget root)
{
    std::string text;
    describe(root, 0, text);
    return text;
}

Widget findWidget(Widget root, const std::string& name)
{
    if (name == XtName(root)) {
        return root;
    }
    Widget found = nullptr;
    forEachChild(root, [&](Widget child) {
        if (found == nullptr) {
            found = findWidget(child, name);
        }
    });
    return found;
}

std::string labelText(Widget label)
{
    XmString string = nullptr;
    XtVaGetValues(label, XmNlabelString, &string, nullptr);
    char* text = static_cast<char*>(
        XmStringUnparse(string, nullptr, XmCHARSET_TEXT, XmCHARSET_TEXT, nullptr, 0, XmOUTPUT_ALL));
    const std::string result = text == nullptr ? "" : text;
    XtFree(text);
    XmStringFree(string);
    return result;
}
