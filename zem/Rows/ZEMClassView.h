// SPDX-License-Identifier: MIT
//
// The row of a class, the sum of its member functions. It has no record, and it hides the file and
// function names from the sort keys: a class may lie in many files, so sorted by "F" or "f" all
// rows are equal. See ZEMView for who owns what.
#pragma once

#include "zem/Rows/ZEMFileView.h"

class ZEMClassView : public ZEMFileView
{
public:
    ZEMClassView();
    // Frees the class name, of which the label is an alias.
    ~ZEMClassView() override;

    // "" while it is unset. The setter keeps a copy and ignores null.
    const char* classname() const override;
    void classname(const char* name);

    // Always "".
    const char* filename() const override;
    const char* funcname() const override;
    using ZEMFileView::filename;

    // The label is the class name itself, not a copy.
    void setLabel() override;

    char* _classname; // owned, or null
};
