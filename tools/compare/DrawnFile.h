// SPDX-License-Identifier: MIT
//
// One source file as the viewer draws it: each line red, with marks or without, through the same
// classes that the viewer uses.
#pragma once

#include "zem/Lines/SrcBrowser.h"

#include <string>
#include <vector>

class ZEMFileRecord;

// Lines count from 1 here.
class DrawnFile
{
public:
    // Reads the source file that `record` names and puts the blocks on its lines. Returns false
    // when the file is not there: the viewer shows nothing of it then.
    bool open(const ZEMFileRecord& record);

    uint32_t nLines() const { return static_cast<uint32_t>(_browser.nLines()); }

    // Drawn in the colour of untested lines.
    bool isRed(uint32_t line) const;
    // A block starts on the line: it has a count or a mark.
    bool hasMark(uint32_t line) const;
    // The line lies in a block that ran: drawn like any text, no mark.
    bool isInsideRun(uint32_t line) const;

    // The line's counts as the viewer shows them ("5/0"), "." for none.
    std::string marks(uint32_t line) const;
    std::string text(uint32_t line);

private:
    void findRunBlocks(const ZEMFileRecord& record);

    SrcBrowser _browser;
    std::vector<bool> _isInsideRun; // by line
};
