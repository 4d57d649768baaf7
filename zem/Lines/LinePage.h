// SPDX-License-Identifier: MIT
//
// The entries of some lines that follow each other. A LineIndex asks its subclass for a page when
// the first of its lines is asked for, and owns it.
#pragma once

class TextLine;

class LinePage
{
public:
    static constexpr long Lines = 128;

    LinePage() = default;
    virtual ~LinePage() = default;
    LinePage(const LinePage&) = delete;
    LinePage& operator=(const LinePage&) = delete;

    // Entry `i`, from 0. REQUIRES: i < Lines.
    virtual TextLine& at(long i) = 0;
};
