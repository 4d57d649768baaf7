// SPDX-License-Identifier: MIT
//
// The window that shows help: one text file a topic. There is one; it is made at the first request,
// hidden when it is closed, and never deleted.
//
// Every request for help in the program ends in showHelpOn().
#pragma once

#include "qip/Components/qipWindow.h"
#include "zem/Help/FileViewer.h"

class HelpWindow : public qipWindow
{
public:
    explicit HelpWindow(const char* title);

    // Shows or raises the help window with the text of `topic`, the file
    // HOME/APPLICATION/help/TOPIC.hlp (see find_vorandel_home). An empty or null topic, and a
    // program without help, show nothing; a topic without a file shows an empty window.
    static void showHelpOn(const char* topic);

    // Makes the window if there is none. Returns whether there is one afterwards.
    static bool initializeInstance();

    Widget createWorkArea(Widget parent) override;

    // Shows the window and gives it the keyboard focus.
    void manage() override;
    const char* className() const override;

    const FileViewer& viewer() const { return _viewer; }
    static HelpWindow* theWindow() { return _theHelpWindow; } // null before the first request

private:
    Widget constructBorder(Widget parent);
    Widget constructTextArea(Widget parent);

    FileViewer _viewer;

    static HelpWindow* _theHelpWindow;
};
