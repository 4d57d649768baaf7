// SPDX-License-Identifier: MIT
//
// The text that the decoder puts together: characters that grow at either end. No zero stands
// behind them.
#pragma once

#include <cstddef>

namespace Demangle {

struct string
{
    string();
    ~string();
    string(const string&) = delete;
    string& operator=(const string&) = delete;

    char* b; // start of the buffer, from dmalloc(); null while there is none
    char* p; // end of the text
    char* e; // end of the buffer
};

// Makes a string that has no buffer. What it had is not freed.
void string_init(string& s);
// Frees the buffer and leaves the string as string_init() does.
void string_delete(string& s);
// Keeps the buffer and forgets the text.
void string_clear(string& s);
// Makes room for `n` more characters. A first buffer has 32 at least, a later one twice as many as
// are needed.
void string_need(string& s, size_t n);

bool string_empty(const string& s);
size_t string_length(const string& s);

// Put text behind or before what is there. The text must not be a part of `s`.
void string_append(string& s, const char* text);
void string_appends(string& s, const string& text);
void string_appendn(string& s, const char* text, size_t n);
void string_prepend(string& s, const char* text);
void string_prependn(string& s, const char* text, size_t n);

// Exchanges text and buffer.
void string_swap(string& s, string& other);

// Keeps the first `n` characters, or all when there are fewer.
void string_chop(string& s, size_t n);

} // namespace Demangle
