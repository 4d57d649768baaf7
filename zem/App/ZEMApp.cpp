// SPDX-License-Identifier: MIT
#include "zem/App/ZEMApp.h"

#include "qip/Base/qipWindow.h"
#include "qip/Support/ListIterator.h"
#include "zem/Options/RptCommandLine.h"
#include "zem/Options/RptOptions.h"
#include "zem/Reports/RptArea.h"
#include "zem/Share/programShare.h"
#include "zem/Window/ZEMWindow.h"

#include <Xm/Display.h>
#include <Xm/Xm.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <new>
#include <string>

ZEMApp* zemApp = nullptr;

const char* const compilation_date = "10/24/96";

namespace {

// The options, carried out on the report area.
class Options : public RptOptions
{
public:
    void reportType(RptType type) override { theReportContainer->reportType(type); }
    void manglingLevel(int level) override { theReportContainer->manglingLevel(level); }
    void addFilter(int kind, const char* name) override
    {
        theReportContainer->addFilter(kind, name);
    }
    void sortBy(const char* keys) override { theReportContainer->sortBy(keys); }
    void showHitCounts() override { theReportContainer->showHitCounts(1); }
    void usageHelp() override { theApplication->usageHelp(); }
};

} // namespace

const char* version_string()
{
    static char text[16];
    std::snprintf(text, sizeof text, "%d.%d", ZEM_VERSION_MAJOR, ZEM_VERSION_MINOR);
    return text;
}

ZEMApp::ZEMApp(const char* name) : qipApplication(name) {}

ZEMApp::~ZEMApp() = default;

const char* ZEMApp::className() const
{
    return "ZEMApp";
}

void ZEMApp::usageHelp()
{
    std::cerr << "ZEM Version " << version_string() << " (" << compilation_date << ")\n";
    RptOptions::writeOptionLines(std::cerr);
    std::cerr << std::flush;
}

int ZEMApp::appMain(int& argc, char** argv)
{
    // Xt finds the file of an installed program by itself; that of a build tree it does not know.
    try {
        const std::string defaults = programDefaults("zem");
        if (!defaults.empty()) {
            addDefaults(defaults.c_str());
        }
    } catch (const std::bad_alloc&) {
        // The fallbacks of the code serve.
    }
    // Texts of labels cannot be dragged elsewhere: their font tags name no character set.
    XtVaSetValues(XmGetXmDisplay(_display), XmNenableUnselectableDrag, False, nullptr);

    ZEMWindow window("zem");
    ListIterator<qipWindow*> windows(_windows);
    while (qipWindow* each = windows.next()) {
        each->initialize();
        each->manage();
    }
    if (window.baseWidget() == nullptr) {
        // Without memory for its place in the list it would never be seen.
        std::fputs(" *** zem: out of memory\n", stderr);
        std::_Exit(1);
    }
    XtRealizeWidget(_base);

    Options options;
    RptCommandLine::parse(options, &argc, argv);
    int nFiles = 0;
    for (int i = 1; i < argc; ++i) {
        if (argv[i][0] != '-') {
            theReportContainer->processFile(argv[i]);
            ++nFiles;
        }
    }
    if (nFiles > 0) {
        theReportContainer->report();
    }
    handleEvents();
    return 0;
}
