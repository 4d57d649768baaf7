// SPDX-License-Identifier: MIT
//
// A name from a file as it may be printed. Names of data files go to terminals and into tables: a
// byte of theirs must not steer the one or make a row of the other.
//
//   bytes of the name                              printed as
//   text in ASCII or UTF-8                         itself
//   control characters, line separators, marks     \xHH for each byte, two small hexadecimal digits
//     that turn the direction of writing
//   bytes that are no UTF-8                        \xHH
//   a backslash in front of x and two such digits  \x5c: two names never look the same
//
//     std::cerr << "cannot read " << qipVisibleText(path) << '\n';
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

class qipVisibleText
{
public:
    // Borrows `text`, which ends in a zero byte; null is "".
    explicit qipVisibleText(const char* text);

    // Bytes of the printed form.
    size_t length() const;

    // A copy of the printed form. May throw std::bad_alloc, as only this does.
    std::string string() const;

private:
    friend std::ostream& operator<<(std::ostream& out, const qipVisibleText& text);

    const char* _text;
};

// Writes the printed form; a width set for the stream does not count. Takes no memory.
std::ostream& operator<<(std::ostream& out, const qipVisibleText& text);
