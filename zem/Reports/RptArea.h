// SPDX-License-Identifier: MIT
//
// The heart of the main window: it owns the repository, the current report and the canvas that
// shows it. The command line and the commands drive it.
//
// The rows of a report belong to it from generateRpt() until the next one; the canvas only points
// at them and forgets them first.
#pragma once

#include "qip/Base/qipVCell.h"
#include "zem/Reports/RptViewer.h"
#include "zem/Repository/ZEMRepository.h"
#include "zem/Rows/RptInfo.h"
#include "zem/Rows/ZEMRptTable.h"
#include "zem/Source/SrcViewer.h"

class RptArea : public qipVCell
{
public:
    explicit RptArea(const char* name);
    RptArea(const RptArea&) = delete;
    RptArea& operator=(const RptArea&) = delete;
    ~RptArea() override;

    // Creates the paned window "rptArea" with the report canvas.
    void install(qipVCell* parent) override;
    const char* className() const override;

    // Merges a log file. A failure is one line on the standard error stream and nothing in the
    // window. Returns the repository's result; report() shows what has changed. Null is -11 and
    // changes nothing, without a line.
    int processFile(const char* logfile);

    // See ZEMRepository::addFilter().
    void addFilter(int kind, const char* name);

    // What the next report() shows.
    void reportType(RptType type);
    RptType reportType() const { return _rptInfo._type; }
    // 1 simple names, 2 with argument types, 3 with their qualifiers too.
    void manglingLevel(int level) { _demangleLevel = level; }
    int manglingLevel() const { return _demangleLevel; }
    void showHitCounts(int show) { _rptInfo._showHitCounts = show; }

    // Keys for the next sort (see ZEMRptTable::compareViews). Null, the empty string and the keys
    // that are set already change nothing.
    void sortBy(const char* keys);

    // Makes the report anew, sorts and shows it, and tells the status bar. Without memory for all
    // of it the status bar says so, and everything else stays as it is. When a log was loaded since
    // that does not fit its maps, a message says so for a while.
    void report();

    // Sorts and shows the report that there is, and tells the status bar.
    void sortAndView();

    // Whether the report that is shown is older than the last one asked for.
    bool isOutdated() const { return _isOutdated; }

    const RptInfo& info() const { return _rptInfo; }
    const ZEMRptTable& table() const { return _report; }

    // The steps of report().
    void generateRpt();
    void sortRpt();
    void viewRpt();

    // Opens the source of the selected row: a file from its first line, a function from the line
    // above it. Directories and classes have none, and without a selection nothing happens. A
    // function on the first line opens the source view and leaves it as it is.
    void browse();

    // Hides the source view when it is open, else browse().
    void browseToggle();

    bool browsing() const { return _browsing; }
    const RptViewer& rptViewer() const { return _rptViewer; }
    const SrcViewer& srcViewer() const { return _srcViewer; }

private:
    void showSource();
    int roomForSource() const;
    void showSummary() const;
    void describe() const;
    void tellMisfits();

    int _demangleLevel;
    bool _browsing;           // the source view is open
    bool _srcViewerInstalled; // it has its widgets
    RptInfo _rptInfo;
    ZEMRptTable _report;
    RptType _reportType; // of `_report`; that of `_rptInfo` is the one asked for
    bool _isOutdated;
    long _toldMisfits; // of the repository, as far as the status bar said so
    SrcViewer _srcViewer;
    RptViewer _rptViewer;
    ZEMRepository _theRepository;
};

// The viewer's one report area; null in a program without one.
extern RptArea* theReportContainer;
