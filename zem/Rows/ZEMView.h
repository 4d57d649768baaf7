// SPDX-License-Identifier: MIT
//
// One row of a report: its label, its block and hit counts, and the coverage record that it sums
// up. The repository makes rows and sets their fields, ZEMRptTable orders them, the report viewer
// and zem-report show them.
//
//   class             adds         label
//   ZEMDirectoryView  _directory   the directory's own string
//   ZEMFileView       _filename    a string of its own, "directory/file"
//   ZEMFuncView       _funcname    the function name's own string
//   ZEMClassView      _classname   the class name's own string
//
// A row owns its names and, in a file row, its label; elsewhere the label is an alias of a name. It
// only points at its record. Rows are freed by ZEMRptTable::deleteRows().
#pragma once

#include <cstddef>
#include <cstdint>

class ZEMRecord;

class ZEMView
{
public:
    ZEMView();
    // Frees nothing: what a row owns is freed by the class that adds it.
    virtual ~ZEMView();

    ZEMView(const ZEMView&) = delete;
    ZEMView& operator=(const ZEMView&) = delete;

    // Makes `_label` from the names. Whoever makes a row calls it once the names are set.
    virtual void setLabel() = 0;

    virtual int hits() const;
    virtual int blocks() const;
    // Covered blocks in per cent of all, truncated towards zero (2 of 3 is 66); 0 without blocks.
    virtual int coverage() const;

    // Sets the counts, each at most as large as its field holds, and the record; null for none.
    void setCounts(ZEMRecord* owner, int64_t total, int64_t covered, int64_t hits);

    // The names by which rows are sorted. Never null: "" where a row has no such name, so that any
    // key can be applied to any row.
    virtual const char* directory() const;
    virtual const char* filename() const;
    virtual const char* funcname() const;
    virtual const char* classname() const;

    // Replaces the string in `field` by a copy of `value`; null changes nothing. `value` may be the
    // old string or a part of it. Without memory the field becomes null.
    static void setName(char*& field, const char* value);

    char* _label;      // null until setLabel()
    int _totBlk;       // all blocks
    int _covBlk;       // blocks that ran; below zero when a map file understates its block count
    int _hits;         // runs of all blocks together
    ZEMRecord* _owner; // the record that the row sums up, or null; not owned

protected:
    // The same for the first `length` characters of `value`. REQUIRES: value is not null.
    static void setName(char*& field, const char* value, size_t length);
};
