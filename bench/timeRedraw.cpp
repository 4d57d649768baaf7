// SPDX-License-Identifier: MIT
//
// Times one redraw of the report canvas at 100 columns by 40 rows, for tables of several sizes.
// Prints a line for each: rows, milliseconds (mean of many redraws, each waited for).
#include "qip/Base/qipApplication.h"
#include "qip/Base/qipWindow.h"
#include "zem/Reports/RptViewer.h"
#include "zem/Rows/ZEMFileView.h"
#include "zem/Rows/ZEMRptTable.h"

#include <X11/StringDefs.h>

#include <chrono>
#include <cstdio>
#include <string>

namespace {

constexpr int Columns = 100;
constexpr int Rows = 40;
constexpr int Redraws = 200;

class ReportWindow : public qipWindow
{
public:
    explicit ReportWindow(RptViewer& viewer) : qipWindow("report"), _viewer(viewer) {}
    Widget createWorkArea(Widget) override
    {
        _clientArea = _main;
        _viewer.install(this);
        return _viewer.baseWidget();
    }

private:
    RptViewer& _viewer;
};

void fill(ZEMRptTable& table, int nRows)
{
    table._view = new ZEMView*[static_cast<size_t>(nRows)];
    for (int i = 0; i < nRows; ++i) {
        auto* row = new ZEMFileView;
        row->filename(("src/module/file" + std::to_string(i) + ".cpp").c_str());
        row->setLabel();
        row->_totBlk = 100;
        row->_covBlk = i % 101;
        table._view[table._nItems++] = row;
    }
}

void handleEvents(XtAppContext context, Display* display)
{
    XSync(display, False);
    while (XtAppPending(context) != 0) {
        XtAppProcessEvent(context, XtIMAll);
    }
}

} // namespace

int main(int argc, char** argv)
{
    qipApplication application("zem");
    application.initialize(argc, argv);
    auto* viewer = new RptViewer("rptViewer"); // the window outlives main's objects at exit
    auto* window = new ReportWindow(*viewer);
    window->initialize();
    window->manage();
    XtRealizeWidget(application.baseWidget());
    XtVaSetValues(window->baseWidget(), XtNwidth, Columns * viewer->columnPixels() + 40, XtNheight,
                  Rows * viewer->rowPixels() + 40, nullptr);
    Display* display = application.display();
    handleEvents(application.appContext(), display);
    for (const int nRows : {100, 10000, 1000000}) {
        ZEMRptTable table;
        fill(table, nRows);
        viewer->installView(&table);
        handleEvents(application.appContext(), display);
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < Redraws; ++i) {
            viewer->vertScroll(i % 50);
            static_cast<qipScrolledWindow*>(viewer)->render();
            XSync(display, False);
        }
        const std::chrono::duration<double, std::milli> taken =
            std::chrono::steady_clock::now() - start;
        std::printf("%d %.2f\n", nRows, taken.count() / Redraws);
        viewer->forgetView();
        table.deleteRows();
    }
    std::fflush(stdout);
    std::_Exit(0);
}
