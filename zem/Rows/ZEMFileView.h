// SPDX-License-Identifier: MIT
//
// The row of a source file; its record is the ZEMFileRecord. Function and class rows derive from it
// because they can be sorted by directory and file too. See ZEMView for who owns what.
#pragma once

#include "zem/Rows/ZEMDirectoryView.h"

class ZEMFileView : public ZEMDirectoryView
{
public:
    ZEMFileView();
    // Frees the file name and the label. A subclass whose label is an alias clears it first.
    ~ZEMFileView() override;

    // The name without its directory; "" while it is unset.
    const char* filename() const override;
    // Splits `path` at its last "/" and keeps both parts: "src/a.c" gives "src" and "a.c", "/a.c"
    // and "a.c" give "" and "a.c". REQUIRES: path is not null.
    void filename(const char* path);

    // Builds the label: directory, "/", file name. A path without a directory is labelled "/a.c",
    // because its directory is empty and not absent. Pinned by
    // ZEMFileViewTest.LabelOfABareNameBeginsWithASlash. Without memory the label is null.
    void setLabel() override;

    char* _filename; // owned, or null
};
