// SPDX-License-Identifier: MIT
#include "qip/Support/qipCString.h"

#include <cstring>
#include <new>

qipCString::qipCString(const qipCString& other) : _text(nullptr)
{
    set(other._text);
}

qipCString& qipCString::operator=(const qipCString& other)
{
    if (this != &other) {
        set(other._text);
    }
    return *this;
}

qipCString::~qipCString()
{
    delete[] _text;
}

bool qipCString::replace(char*& field, const char* text)
{
    if (text == nullptr) {
        delete[] field;
        field = nullptr;
        return true;
    }
    return replace(field, text, std::strlen(text));
}

bool qipCString::replace(char*& field, const char* text, size_t length)
{
    char* copy = new (std::nothrow) char[length + 1];
    if (copy != nullptr) {
        std::memcpy(copy, text, length);
        copy[length] = '\0';
    }
    // Only now: `text` may lie in what is freed.
    delete[] field;
    field = copy;
    return copy != nullptr;
}
