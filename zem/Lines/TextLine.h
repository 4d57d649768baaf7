// SPDX-License-Identifier: MIT
//
// The index entry of one line of a text file: where the line stands and, once somebody has asked
// for it, its text. Entries belong to the array of a LineIndex.
#pragma once

class TextLine
{
public:
    TextLine() : _offset(0), _tabs(0), _len(0), _src(nullptr) {}
    // Frees the text.
    virtual ~TextLine();

    // Others point at an entry by its address.
    TextLine(const TextLine&) = delete;
    TextLine& operator=(const TextLine&) = delete;

    long _offset; // of the first character, bytes from the start of the file
    int _tabs;    // tab characters in the line
    int _len;     // of `_src`, without the terminating zero
    char* _src;   // the text, tabs expanded; owned, from malloc(); null until it is first read

protected:
    // Frees the text that is there and takes `text`, from malloc(), of `len` characters.
    void keepText(char* text, int len);
};
