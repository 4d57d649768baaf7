// SPDX-License-Identifier: MIT
//
// All that is known about coverage: the source files of every map file that a log named, with the
// counts of every log merged into their blocks, the running totals, and the four name filters. It
// answers with tables of rows. One lives for the whole run; loading adds and never takes away.
//
// The totals are added up for each merged log record: two logs of one file count its blocks twice,
// and a block that ran in only one of them counts once as untested. Rows come from the merged
// counts. Pinned by ZEMRepositoryTest.TotalsAddUpForEachRecord.
//
// The hits of a log wait beside the blocks until somebody looks: loading leaves the blocks as they
// were, srcfiles(), the dump and the making of any table bring all of them up to date. So the
// records that the rows of a table lead to show the counts of that table until the next look. The
// totals are up to date always. Pinned by ZEMRepositoryLookTest.
#pragma once

#include "qip/Support/List.h"
#include "qip/Support/qipVLFailure.h"
#include "zem/Data/ZEMFileRecord.h"
#include "zem/Repository/PathIndex.h"
#include "zem/Repository/SourceIndex.h"
#include "zem/Rows/RptType.h"
#include "zem/Rows/ZEMRptTable.h"

#include <iosfwd>
#include <memory>
#include <sys/stat.h>
#include <vector>

class ZEMLogFileRecord;

class ZEMRepository
{
public:
    ZEMRepository();
    ZEMRepository(const ZEMRepository&) = delete;
    ZEMRepository& operator=(const ZEMRepository&) = delete;
    // Deletes the source files; no row of a table may be asked for its record afterwards.
    virtual ~ZEMRepository();

    // Load one log file, and each map file that it names and that is not loaded yet. Return 0, or
    // the code of qipVLRecFile for the log or for a map; what was merged before that stays. A log
    // that failed half-way and is loaded again is merged again from its start.
    int processFile(const char* path);
    int processLogFile(const char* path);

    // Loads one map file. A source file that is known already is not taken from it. Returns 0, or a
    // code of qipVLRecFile; -11 for a null or empty path.
    int processMapFile(const char* path);

    // Why the last of these that failed did so, and the map file that it failed in; "" when it was
    // the log itself. A path of 4 KiB and more is cut.
    const qipVLFailure& failure() const { return _failure; }
    const char* failedMap() const { return _failedMap; }

    // How many records of what was loaded do not fit, so that counts are missing or are another
    // function's: those of a log about a file that no map has, or with another number of blocks
    // than the map; those of a map with other functions of a file than a map before it, or than the
    // same map when it was loaded; and those of an unknown tag. Added up over all files.
    long misfits() const { return _nMisfits; }

    // The untested and all blocks, as added up; the int form is clamped to what it holds.
    void coverageSummary(int& uncovered, int& total) const;
    void coverageSummary(long& uncovered, long& total) const;

    // Adds `name`, borrowed for the life of the repository, to what is shown: 'F' files (by their
    // whole path), 'f' functions (by their stored name), 'o' classes, 'd' directories. Any other
    // kind, and a null name, is ignored. A text that its owner changes later counts as it is when
    // a table is made. Without memory for it no table is whole any more.
    void addFilter(int kind, const char* name);

    // 1 when the filter has names and `name` is none of them, else 0.
    int isSuppressed(List<char*>& filter, const char* name) const;

    // Tables of rows; the caller frees them with ZEMRptTable::deleteRows(). Empty and not whole
    // without memory.
    //
    // One row for each function, in the order loaded. `manglingLevel` is a NameLevel; a name that
    // is no encoded one is shown as stored.
    ZEMRptTable viewByFunction(int manglingLevel) const;
    // One row for each file. A function filter hides functions from the counts of hits and of
    // untested blocks, not from the number of blocks: what it hides counts as covered. Pinned by
    // ZEMRepositoryTest.FilteredFunctionsCountAsCoveredInAFileRow.
    ZEMRptTable viewByFile() const;
    // One row for each directory or class, the one met last coming first.
    ZEMRptTable viewByDirectory() const;
    ZEMRptTable viewByClass() const;

    // The table of a report type; by file for any other number. `manglingLevel` counts only for
    // that by function.
    ZEMRptTable view(RptType type, int manglingLevel) const;

    // Lists label, covered and all blocks of each row on the standard output.
    static void showView(ZEMRptTable table);

    const List<char*>& mapfiles() const { return _mapfiles; }
    // Brings the hits of the blocks up to date.
    const List<ZEMFileRecord*>& srcfiles() const;

private:
    class Rows;
    struct MapState
    {
        struct stat _file; // before it was read
        long _log;         // the last one that it was compared for
    };

    int loadLog(const char* path);
    int loadMap(const char* path);
    int failed(int code, const qipVLFailure& failure);
    int withoutMemory();
    int enterMap(const char* path, const struct stat& state);
    void lookAgain(long number);
    void giveBack(long size);
    bool take(ZEMFileRecord* file);
    int take(List<ZEMFileRecord*>& files);
    void merge(long source, const ZEMLogFileRecord& record, std::ostream& messages);
    ZEMRptTable withoutFilters() const;

    long _totUncov;
    long _totBlocks;
    long _nMisfits = 0;
    long _nLogs = 0;                    // whose records were looked at
    List<char*> _fileNames;             // the names are the caller's
    List<char*> _classNames;            //
    List<char*> _functionNames;         //
    List<char*> _directoryNames;        //
    List<char*> _mapfiles;              // owned, in the order loaded
    List<ZEMFileRecord*> _srcfiles;     // owned, in the order first seen
    PathIndex _mapIndex;                // finds in `_mapfiles`
    std::vector<MapState> _mapStates;   // of these files
    mutable SourceIndex _sources;       // finds in `_srcfiles`; hits wait in it to be counted
    bool _hasAllFilters;                // none was lost for want of memory
    std::unique_ptr<char[]> _logMemory; // for the records of a log, kept for the next
    size_t _logMemorySize;
    qipVLFailure _failure;
    char _failedMap[4096];
};

// Writes map files, source files, functions and blocks as text.
std::ostream& operator<<(std::ostream& out, ZEMRepository& repository);
