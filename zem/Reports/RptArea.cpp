// SPDX-License-Identifier: MIT
#include "zem/Reports/RptArea.h"

#include "qip/Support/qipVLRecFile.h"
#include "zem/Data/ZEMFileRecord.h"
#include "zem/Reports/RptText.h"
#include "zem/Window/ZEMStsBar.h"

#include <Xm/PanedW.h>
#include <Xm/Xm.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <iostream>

RptArea* theReportContainer = nullptr;

namespace {

constexpr int TallestPane = 10000;  // pixels; Motif's own 1000 leaves a gap on a tall screen
constexpr int FewestRows = 2;       // that a sash leaves of the report
constexpr int FewestSourceRows = 6; // of the source: its header, three lines and the scroll bar
constexpr int FirstSourceRows = 14;

// `rows` are those of the canvas.
void setPaneMinimum(const qipCanvas& canvas, int rows)
{
    XtVaSetValues(canvas.baseWidget(), XmNpaneMinimum,
                  static_cast<Dimension>(rows * canvas.rowPixels()), XmNpaneMaximum,
                  static_cast<Dimension>(TallestPane), nullptr);
}

} // namespace

RptArea::RptArea(const char* name)
    : qipVCell(name), _demangleLevel(1), _browsing(false), _srcViewerInstalled(false),
      _srcViewer("srcViewer"), _rptViewer("rptViewer")
{}

RptArea::~RptArea()
{
    _report.deleteRows();
}

void RptArea::install(qipVCell* parent)
{
    _base = XtVaCreateManagedWidget("rptArea", xmPanedWindowWidgetClass, parent->clientArea(),
                                    XmNspacing, 10, XmNsashIndent, 0, nullptr);
    _clientArea = _base;
    _rptViewer.install(this);
    setPaneMinimum(_rptViewer, FewestRows);
    installDestroyHandler();
}

const char* RptArea::className() const
{
    return "RptArea";
}

int RptArea::processFile(const char* logfile)
{
    const int result = _theRepository.processFile(logfile);
    if (result < 0) {
        std::cerr << " *** RptArea::report: Error processing " << logfile << ": "
                  << qipVLRecFile::error(result) << std::endl;
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
    long untested = 0;
    long total = 0;
    _theRepository.coverageSummary(untested, total);
    if (theStatusBar != nullptr) {
        theStatusBar->coverageSummary(untested, total);
    }
    generateRpt();
    sortAndView();
    if (_browsing) {
        browse();
    }
}

void RptArea::generateRpt()
{
    _rptViewer.forgetView();
    _report.deleteRows();
    switch (_rptInfo._type) {
    case RptByDirectory:
        _report = _theRepository.viewByDirectory();
        break;
    case RptByFunction:
        _report = _theRepository.viewByFunction(_demangleLevel);
        break;
    case RptByClass:
        _report = _theRepository.viewByClass();
        break;
    default:
        _report = _theRepository.viewByFile();
    }
}

void RptArea::sortRpt()
{
    const char* keys = _rptInfo.sortKeys();
    if (keys != nullptr && keys[0] != '\0') {
        _report.sort(keys);
    }
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
    if (theStatusBar != nullptr) {
        theStatusBar->reportInfo(RptText::header(_rptInfo._type, _rptInfo.sortKeys()).c_str());
    }
}

void RptArea::browse()
{
    ZEMRecord* record = _rptViewer.getSelection();
    if (_rptInfo._type == RptByDirectory || _rptInfo._type == RptByClass || record == nullptr) {
        return;
    }
    showSource();
    if (_rptInfo._type == RptByFunction) {
        const auto* func = static_cast<const ZEMFuncRecord*>(record);
        const long long above = std::min<long long>(func->_startLine - 1LL, INT_MAX);
        _srcViewer.display(static_cast<const ZEMFileRecord*>(func->_owner), _rptInfo,
                           static_cast<int>(above));
    } else {
        _srcViewer.display(static_cast<const ZEMFileRecord*>(record), _rptInfo, 1);
    }
    _browsing = true;
}

void RptArea::showSource()
{
    if (_srcViewerInstalled) {
        _srcViewer.manage();
        return;
    }
    _srcViewer.install(this);
    // A pane that comes to a window on the screen gets its least height, which must be known when
    // it comes: without one it would be a single pixel high. The sash may make it smaller later.
    _srcViewer.unmanage();
    setPaneMinimum(_srcViewer, FirstSourceRows);
    _srcViewer.manage();
    setPaneMinimum(_srcViewer, FewestSourceRows);
    _srcViewerInstalled = true;
}

void RptArea::browseToggle()
{
    if (_browsing) {
        _browsing = false;
        _srcViewer.unmanage();
    } else {
        browse();
    }
}
