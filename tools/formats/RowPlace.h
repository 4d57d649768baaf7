// SPDX-License-Identifier: MIT
//
// Where in the sources the thing is that a row stands for.
#pragma once

#include "zem/Rows/RptType.h"

#include <cstdint>

class ZEMView;

class RowPlace
{
public:
    // `row`, of a report of this type, is borrowed.
    RowPlace(const ZEMView& row, RptType type);

    // The source file's path as the map has it; "" for a directory or a class.
    const char* path() const { return _path; }
    // Where a function begins, from 1; 0 for anything else.
    uint32_t line() const { return _line; }

private:
    const char* _path;
    uint32_t _line;
};
