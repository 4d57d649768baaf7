// SPDX-License-Identifier: MIT
#include "zem/Lines/TextLine.h"

#include <cstdlib>

TextLine::~TextLine()
{
    free(_src);
}

void TextLine::keepText(char* text, int len)
{
    if (text != _src) {
        free(_src);
    }
    _src = text;
    _len = len;
}
