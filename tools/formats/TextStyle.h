// SPDX-License-Identifier: MIT
//
// How a report as text looks. In a file or a pipe all of this is off: that form does not change,
// for the scripts that read it.
#pragma once

#include "tools/formats/Percent.h"

struct TextStyle
{
    bool _isOnTerminal = false;      // nothing may steer it, in the formats of other tools either
    bool _isPadded = false;          // labels have one length
    bool _hasBars = false;           // a bar behind each row
    bool _hasColours = false;        // by how much of a row ran
    bool _namesTotals = false;       // two more lines at the end say what is added up in each sum
    const Percent* _limit = nullptr; // rows under it are red; borrowed, null for none
};
