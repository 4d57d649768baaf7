// SPDX-License-Identifier: MIT
//
// Makes the tables of a report from source files and their counts: which rows there are, in which
// order, and what they show. Names that a filter hides take no part.
//
// A maker is used for one table and dropped. Everything that it is given is borrowed and must not
// change as long as it lives. The caller frees the tables with ZEMRptTable::deleteRows(). Without
// memory for a row or one of its names the table is empty and not whole.
#pragma once

#include "qip/Support/List.h"
#include "zem/Rows/NameFilter.h"
#include "zem/Rows/ZEMRptTable.h"

class ZEMFileRecord;

class RowMaker
{
public:
    // The names to show: source files by their whole path, functions by their stored name, classes
    // and directories as their rows are labelled.
    struct Filters
    {
        const List<char*>& files;
        const List<char*>& functions;
        const List<char*>& classes;
        const List<char*>& directories;
    };

    RowMaker(const List<ZEMFileRecord*>& files, const Filters& shown);
    RowMaker(const RowMaker&) = delete;
    RowMaker& operator=(const RowMaker&) = delete;
    virtual ~RowMaker();

    // One row for each function, in the order of the files. `manglingLevel` is a NameLevel; a name
    // that is no encoded one is shown as stored.
    ZEMRptTable byFunction(int manglingLevel);

    // One row for each file. A function filter hides functions from the counts of hits and of
    // untested blocks, not from the number of blocks: what it hides counts as covered. Pinned by
    // ZEMRepositoryTest.FilteredFunctionsCountAsCoveredInAFileRow.
    ZEMRptTable byFile();

    // One row for each directory or class, the one met last coming first.
    ZEMRptTable byDirectory();
    ZEMRptTable byClass();

protected:
    // Called for each file, shown or not, in order and counted from 0, right before its blocks are
    // looked at. An override brings their hits up to date.
    virtual void prepare(long number);

private:
    struct Counts;

    bool addFunctions(ZEMFileRecord& file, int manglingLevel, ZEMRptTable& table) const;
    Counts countFile(ZEMFileRecord& file) const;

    const List<ZEMFileRecord*>& _sources;
    const NameFilter _files;
    const NameFilter _functions;
    const List<char*>& _classes;
    const List<char*>& _directories;
};
