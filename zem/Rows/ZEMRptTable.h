// SPDX-License-Identifier: MIT
//
// The rows of one report. A table travels by value: copies and the destructor free nothing. Whoever
// holds the last copy frees the rows with deleteRows(); until then every copy shows the same rows
// in the same array.
//
// A table has all of its rows or none: where there is no memory for one, it is empty and not whole.
#pragma once

#include <cstddef>

class ZEMView;

class ZEMRptTable
{
public:
    // An empty table.
    ZEMRptTable();
    ZEMRptTable(const ZEMRptTable&) = default;
    ZEMRptTable& operator=(const ZEMRptTable&) = default;
    // Frees nothing.
    virtual ~ZEMRptTable();

    // Makes an array for `nRows` rows in place of none; false for no rows and without memory, and
    // the table stays empty; in the latter case it is not whole. REQUIRES: the table is empty.
    bool reserve(size_t nRows);
    // Puts `row`, not null, behind the last. REQUIRES: the array has room for it.
    void append(ZEMView* row) { _view[_nItems++] = row; }

    // Frees the rows, because there is no memory for one more: the table is empty and not whole.
    void giveUp();
    // Whether no row is missing for want of memory.
    bool isWhole() const { return _isWhole; }

    // Frees the rows and their array and leaves this table empty. Other copies of the table point
    // at freed rows afterwards.
    void deleteRows();

    // Orders the rows by `keys` (see compareViews). Rows that are equal on every key come in no
    // particular order; null and "" leave the rows as they are.
    void sort(const char* keys);

    // Compares two rows by `keys`, one character each, the first being the primary key; all
    // ascending:
    //
    //   d  directory     F  file name      f, n  function name      (strcmp)
    //   %  coverage      #  hits           b     blocks             (difference)
    //
    // Null and "" make all rows equal. Any other character ends the comparison: the keys behind it
    // do not count. Pinned by ZEMRptTableTest.UnknownKeyEndsTheComparison.
    // Returns less than, equal to or greater than 0.
    static int compareViews(const ZEMView* a, const ZEMView* b, const char* keys);

    // The length of the longest label, in characters, and the largest number of blocks. 0 for an
    // empty table.
    int longestLabel() const;
    int maxBlocks() const;

    ZEMView** _view; // made with new[], or null; may be longer than _nItems
    int _nItems;
    bool _isWhole;

    // The keys of the sort in progress, borrowed from its caller: qsort hands its comparison
    // nothing but the elements. Of no use outside sort().
    static const char* sortKeyList;

private:
    static int qsort_cbk(const ZEMView** a, const ZEMView** b);
    static int qsortElements(const void* a, const void* b);
};
