// SPDX-License-Identifier: MIT
//
// One line of a help file. Entries belong to a FileBrowser.
#pragma once

#include "zem/Lines/TextLine.h"

class FileLine : public TextLine
{
public:
    // Frees the text that is there and keeps `text`, from malloc(), of `len` characters.
    void saveFileLine(char* text, int len) { keepText(text, len); }
};
