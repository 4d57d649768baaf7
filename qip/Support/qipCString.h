// SPDX-License-Identifier: MIT
//
// A C string that its holder owns: a copy of a text in the heap, or null. It converts to the text,
// so that it is used as the pointer would be.
#pragma once

#include <cstddef>

class qipCString
{
public:
    qipCString() : _text(nullptr) {} // null
    qipCString(const qipCString& other);
    qipCString& operator=(const qipCString& other);
    ~qipCString();

    // Keeps a copy of `text` in place of the old text; null makes it null. `text` may be the old
    // text or a part of it. Returns false without memory: the text is null then.
    bool set(const char* text) { return replace(_text, text); }

    const char* get() const { return _text; }
    operator const char*() const { return _text; }

    // The same for a plain pointer, from new[] or null, that is freed by its holder. The second
    // form takes the first `length` characters. REQUIRES of that: text is not null.
    static bool replace(char*& field, const char* text);
    static bool replace(char*& field, const char* text, size_t length);

private:
    char* _text; // owned
};
