// SPDX-License-Identifier: MIT
//
// The text canvas of the help window: shows one text file, read only. Owned by the HelpWindow.
#pragma once

#include "qip/Components/qipTCanvas.h"
#include "zem/Lines/FileBrowser.h"

class FileViewer : public qipTCanvas
{
public:
    explicit FileViewer(const char* name);

    // 100 columns and 30 rows to begin with, the width that help texts are written for.
    void install(qipVCell* parent) override;
    const char* className() const override;

    // Shows the file `path` from line `line` on, counted from 1, at its left edge. A file that
    // cannot be opened leaves the viewer empty.
    void display(const char* path, int line);

    const FileBrowser& browser() const { return _browser; }

protected:
    void refresh(Drawable window, qipView view) override;

private:
    FileBrowser _browser;
};
