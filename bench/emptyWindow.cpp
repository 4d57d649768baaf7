// SPDX-License-Identifier: MIT
//
// The least that a Motif program can show, as a yardstick: one window of the viewer's size with
// nothing in it.
#include <Xm/MainW.h>

int main(int argc, char** argv)
{
    XtAppContext context;
    Widget shell = XtVaAppInitialize(&context, "Empty", nullptr, 0, &argc, argv, nullptr, XmNwidth,
                                     640, XmNheight, 353, XtVaTypedArg, XmNbackground, XmRString,
                                     "SeaGreen4", 10, nullptr);
    XtVaCreateManagedWidget("main", xmMainWindowWidgetClass, shell, XtVaTypedArg, XmNbackground,
                            XmRString, "SeaGreen4", 10, nullptr);
    XtRealizeWidget(shell);
    XtAppMainLoop(context);
    return 0;
}
