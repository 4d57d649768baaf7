// SPDX-License-Identifier: MIT
#include "zem/Reports/RptArea.h"

#include "qip/Base/qipWindow.h"
#include "qip/Support/qipVLRecFile.h"
#include "zem/Data/ZEMFileRecord.h"
#include "zem/Rows/NameLevel.h"
#include "zem/Rows/RptText.h"
#include "zem/Status/ZEMStsBar.h"

#include <Xm/PanedW.h>
#include <Xm/Xm.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <iostream>
#include <new>

RptArea* theReportContainer = nullptr;

namespace {

constexpr char NoMemory[] = "Out of memory: this report is out of date!";

constexpr int PaneSpacing = 10;     // pixels
constexpr int TallestPane = 10000;  // pixels; Motif's own 1000 leaves a gap on a tall screen
constexpr int FewestRows = 2;       // that a sash leaves of the report, with its scroll bar
constexpr int FewestSourceRows = 6; // of the source: its header, three lines and the scroll bar
constexpr int FirstSourceRows = 14;

void setPaneMinimum(const qipCanvas& canvas, int height)
{
    XtVaSetValues(canvas.baseWidget(), XmNpaneMinimum, static_cast<Dimension>(height),
                  XmNpaneMaximum, static_cast<Dimension>(TallestPane), nullptr);
}

int heightOf(Widget widget)
{
    Dimension height = 0;
    XtVaGetValues(widget, XmNheight, &height, nullptr);
    return height;
}

// Whether the window follows what its contents ask for.
void allowShellResize(Widget widget, Boolean allow)
{
    while (!XtIsShell(widget)) {
        widget = XtParent(widget);
    }
    XtVaSetValues(widget, XmNallowShellResize, allow, nullptr);
}

} // namespace

RptArea::RptArea(const char* name)
    : qipVCell(name), _demangleLevel(SimpleNames), _browsing(false), _srcViewerInstalled(false),
      _reportType(RptByFile), _isOutdated(false), _toldMisfits(0), _srcViewer("srcViewer"),
      _rptViewer("rptViewer")
{}

RptArea::~RptArea()
{
    _report.deleteRows();
}

void RptArea::install(qipVCell* parent)
{
    _base = XtVaCreateManagedWidget("rptArea", xmPanedWindowWidgetClass, parent->clientArea(),
                                    XmNspacing, PaneSpacing, XmNsashIndent, 0, nullptr);
    _clientArea = _base;
    _rptViewer.install(this);
    setPaneMinimum(_rptViewer, _rptViewer.heightFor(FewestRows));
    installDestroyHandler();
}

const char* RptArea::className() const
{
    return "RptArea";
}

int RptArea::processFile(const char* logfile)
{
    if (logfile == nullptr) {
        return qipVLRecFile::BadParameter;
    }
    const int result = _theRepository.processFile(logfile);
    if (result < 0) {
        RptText::beginLoadError(std::cerr, logfile) << qipVLRecFile::error(result) << std::endl;
    }
    return result;
}

void RptArea::addFilter(int kind, const char* name)
{
    _theRepository.addFilter(kind, name);
}

void RptArea::reportType(RptType type)
{
    _rptInfo._type = type;
}

void RptArea::sortBy(const char* keys)
{
    if (keys == nullptr) {
        return;
    }
    const char* current = _rptInfo.sortKeys();
    if (current == nullptr || std::strcmp(current, keys) != 0) {
        _rptInfo.sortKeys(keys);
    }
}

void RptArea::report()
{
    generateRpt();
    if (_isOutdated) {
        describe(); // what is shown stays, and the summary that belongs to it
        return;
    }
    showSummary();
    sortAndView();
    if (_browsing) {
        browse();
    }
    tellMisfits();
}

void RptArea::tellMisfits()
{
    if (_theRepository.misfits() == _toldMisfits) {
        return;
    }
    _toldMisfits = _theRepository.misfits();
    if (theStatusBar != nullptr) {
        theStatusBar->displayMessage("A log does not fit its maps: counts are wrong or missing!");
    }
}

void RptArea::generateRpt()
{
    const ZEMRptTable made = _theRepository.view(_rptInfo._type, _demangleLevel);
    _isOutdated = !made.isWhole();
    if (_isOutdated) {
        return;
    }
    _rptViewer.forgetView();
    _report.deleteRows();
    _report = made;
    _reportType = _rptInfo._type;
}

void RptArea::showSummary() const
{
    long untested = 0;
    long total = 0;
    _theRepository.coverageSummary(untested, total);
    if (theStatusBar != nullptr) {
        theStatusBar->coverageSummary(untested, total);
    }
}

// Tells the status bar what is shown.
void RptArea::describe() const
{
    if (theStatusBar == nullptr) {
        return;
    }
    try {
        if (!_isOutdated) {
            theStatusBar->reportInfo(RptText::header(_reportType, _rptInfo.sortKeys()).c_str());
            return;
        }
    } catch (const std::bad_alloc&) {
    }
    theStatusBar->reportInfo(NoMemory);
    theStatusBar->displayMessage(NoMemory); // needs no copy, for which there may be no memory
}

void RptArea::sortRpt()
{
    _report.sort(_rptInfo.sortKeys());
}

void RptArea::viewRpt()
{
    _rptViewer.showPercentage(_rptInfo._showPercentage);
    _rptViewer.installView(&_report);
    _rptViewer.selection(0);
    _rptViewer.render();
}

void RptArea::sortAndView()
{
    sortRpt();
    viewRpt();
    describe();
}

void RptArea::browse()
{
    ZEMRecord* record = _rptViewer.getSelection();
    if (_reportType == RptByDirectory || _reportType == RptByClass || record == nullptr) {
        return;
    }
    if (!_browsing) {
        showSource();
    }
    if (_reportType == RptByFunction) {
        const auto* func = static_cast<const ZEMFuncRecord*>(record);
        const long long above = std::min<long long>(func->_startLine - 1LL, INT_MAX);
        _srcViewer.display(static_cast<const ZEMFileRecord*>(func->_owner), _rptInfo,
                           static_cast<int>(above));
    } else {
        _srcViewer.display(static_cast<const ZEMFileRecord*>(record), _rptInfo, 1);
    }
    _browsing = true;
}

// A window that has room for both panes keeps its size, another one gets higher, and neither wider.
void RptArea::showSource()
{
    allowShellResize(_base, False);
    int wanted = 0;
    if (_srcViewerInstalled) {
        wanted = heightOf(_srcViewer.baseWidget());
    } else {
        _srcViewer.install(this);
        _srcViewer.unmanage();
        _srcViewerInstalled = true;
    }
    const int fewest = FewestSourceRows * _srcViewer.rowPixels();
    const int first = FirstSourceRows * _srcViewer.rowPixels();
    qipWindow::makeHigher(_base, first - roomForSource());
    // A pane that comes to a window on the screen gets its least height, which must be known when
    // it comes: without one it would be a single pixel high. The sash may make it smaller later.
    const int height = std::min(std::max(wanted, first), roomForSource());
    setPaneMinimum(_srcViewer, std::max(height, fewest));
    _srcViewer.manage();
    setPaneMinimum(_srcViewer, fewest);
    allowShellResize(_base, True);
}

// The height that the report can leave to the source.
int RptArea::roomForSource() const
{
    Dimension margin = 0;
    XtVaGetValues(_base, XmNmarginHeight, &margin, nullptr);
    return heightOf(_base) - 2 * margin - PaneSpacing - _rptViewer.heightFor(FewestRows);
}

void RptArea::browseToggle()
{
    if (_browsing) {
        _browsing = false;
        // The window keeps its size, and the report takes the room.
        allowShellResize(_base, False);
        _srcViewer.unmanage();
        allowShellResize(_base, True);
    } else {
        browse();
    }
}
