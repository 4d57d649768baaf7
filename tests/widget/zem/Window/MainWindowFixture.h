// SPDX-License-Identifier: MIT
//
// The main window for a test, with report area and status bar of its own.
#pragma once

#include "tests/support/gtest_x.h"

#include "tests/support/DataFiles.h"
#include "tests/support/TempDir.h"
#include "tests/support/WidgetTree.h"
#include "tests/support/XtFixture.h"
#include "zem/App/ZEMApp.h"
#include "zem/Reports/RptArea.h"
#include "zem/Status/ZEMStsBar.h"
#include "zem/Window/ZEMWindow.h"

#include <Xm/Label.h>
#include <Xm/Xm.h>

#include <memory>
#include <string>

struct Box
{
    int x;
    int y;
    int width;
    int height;
};

// The whole main window, under a window manager.
class MainWindowFixture : public XtFixture
{
protected:
    std::unique_ptr<qipApplication> makeApplication() override
    {
        auto application = std::make_unique<ZEMApp>("zem");
        // As in the program, these stay to the end: the display goes before they could.
        theReportContainer = new RptArea("rptArea");
        theStatusBar = new ZEMStsBar("statusBar");
        return application;
    }

    void SetUp() override
    {
        XtFixture::SetUp();
        if (HasFatalFailure()) {
            return;
        }
        startWindowManager();
        _window = std::make_unique<ZEMWindow>("zem");
        _window->initialize();
        _window->manage();
        XtRealizeWidget(appShell());
        ASSERT_TRUE(waitFor([this] { return mapped(_window->baseWidget()); }));
        settle();
    }

    bool mapped(Widget widget) const
    {
        XWindowAttributes attributes;
        return XtIsRealized(widget) &&
               XGetWindowAttributes(display(), XtWindow(widget), &attributes) != 0 &&
               attributes.map_state == IsViewable;
    }

    Widget widget(const std::string& name) const { return findWidget(_window->baseWidget(), name); }

    // Relative to the window.
    Box box(const std::string& name) const
    {
        Widget it = widget(name);
        Dimension width = 0;
        Dimension height = 0;
        XtVaGetValues(it, XmNwidth, &width, XmNheight, &height, nullptr);
        int x = 0;
        int y = 0;
        Window child = 0;
        XTranslateCoordinates(display(), XtWindow(it), XtWindow(_window->baseWidget()), 0, 0, &x,
                              &y, &child);
        return {x, y, width, height};
    }

    std::string labelText(const std::string& name) const { return ::labelText(widget(name)); }

    void resize(int width, int height)
    {
        XtVaSetValues(_window->baseWidget(), XmNwidth, width, XmNheight, height, nullptr);
        ASSERT_TRUE(waitFor([&] {
            const Box workarea = box("aWindow");
            return workarea.width == width && workarea.height == height;
        }));
        settle();
    }

    void expectStatusBarInOrder()
    {
        const Box bar = box("statusbar_work");
        const Box message = box("statFrame");
        const Box summary = box("covFrame");
        EXPECT_LE(message.x + message.width, summary.x);
        EXPECT_EQ(summary.x + summary.width, bar.x + bar.width);
        EXPECT_EQ(message.x, bar.x);
    }

    void load()
    {
        const std::string map =
            mapFile({{"src/list.cpp", {{"List::append__FP3Foo", 1, 20, {{2, 4}, {5, 5}, {6, 9}}}}},
                     {"src/main.cpp", {{"main", 1, 9, {{2, 3}, {4, 8}}}}}})
                .write(_dir.path("p.map"));
        const std::string log =
            logFile({{"src/list.cpp", map, {4, 0, 2}}, {"src/main.cpp", map, {1, 1}}})
                .write(_dir.path("p.log"));
        ASSERT_EQ(theReportContainer->processFile(log.c_str()), 0);
    }

    TempDir _dir;
    std::unique_ptr<ZEMWindow> _window;
};
