// SPDX-License-Identifier: MIT
//
// The window that shows help: one text file a topic, with a button that closes it. There is one; it
// is made at the first request, hidden when it is closed, and never deleted.
//
// Every request for help in the program ends in showHelpOn().
#pragma once

#include "qip/Base/qipWindow.h"
#include "qip/Components/qipMenuBar.h"
#include "qip/Components/qipToolBar.h"
#include "qip/Components/qipToolGroup.h"
#include "zem/Buttons/CloseBtn.h"
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
    Widget constructToolbar();
    Widget constructTextArea(Widget parent);

    qipMenuBar _menubar; // without panes, and so never installed
    qipToolBar _toolbar;
    FileViewer _viewer;
    qipToolGroup _closeGroup;
    CloseBtn _closeBtn;

    static HelpWindow* _theHelpWindow;
};
