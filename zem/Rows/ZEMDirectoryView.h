// SPDX-License-Identifier: MIT
//
// The row of a directory in a report by directory, and the part of a file row that knows its
// directory. It has no record. See ZEMView for who owns what.
#pragma once

#include "zem/Rows/ZEMView.h"

class ZEMDirectoryView : public ZEMView
{
public:
    ZEMDirectoryView();
    // Frees the directory name.
    ~ZEMDirectoryView() override;

    // The directory without a trailing slash; "" while it is unset. The setter keeps a copy and
    // ignores null.
    const char* directory() const override;
    void directory(const char* name);

    // The label is the directory name itself, not a copy.
    void setLabel() override;

    char* _directory; // owned, or null

protected:
    // As ZEMView::setName for a name that `_label` may be an alias of: the label follows it.
    void setLabelledName(char*& field, const char* value);
};
