// SPDX-License-Identifier: MIT
#include "zem/Demangle/growString.h"

#include "zem/Demangle/allocate.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace Demangle {

namespace {

constexpr size_t FirstSize = 32; // of a buffer at least

} // namespace

string::string() : b(nullptr), p(nullptr), e(nullptr) {}

string::~string()
{
    string_delete(*this);
}

void string_init(string& s)
{
    s.b = nullptr;
    s.p = nullptr;
    s.e = nullptr;
}

void string_delete(string& s)
{
    std::free(s.b);
    string_init(s);
}

void string_clear(string& s)
{
    s.p = s.b;
}

void string_need(string& s, size_t n)
{
    if (s.b == nullptr) {
        n = std::max(n, FirstSize);
        s.b = static_cast<char*>(dmalloc(n));
        s.p = s.b;
        s.e = s.b + n;
    } else if (static_cast<size_t>(s.e - s.p) < n) {
        const size_t length = string_length(s);
        const size_t size = 2 * (length + n);
        s.b = static_cast<char*>(drealloc(s.b, size));
        s.p = s.b + length;
        s.e = s.b + size;
    }
}

bool string_empty(const string& s)
{
    return s.b == s.p;
}

size_t string_length(const string& s)
{
    return static_cast<size_t>(s.p - s.b);
}

void string_append(string& s, const char* text)
{
    string_appendn(s, text, std::strlen(text));
}

void string_appends(string& s, const string& text)
{
    string_appendn(s, text.b, string_length(text));
}

void string_appendn(string& s, const char* text, size_t n)
{
    if (n > 0) {
        string_need(s, n);
        std::memcpy(s.p, text, n);
        s.p += n;
    }
}

void string_prepend(string& s, const char* text)
{
    string_prependn(s, text, std::strlen(text));
}

void string_prependn(string& s, const char* text, size_t n)
{
    if (n > 0) {
        string_need(s, n);
        std::memmove(s.b + n, s.b, string_length(s));
        std::memcpy(s.b, text, n);
        s.p += n;
    }
}

void string_swap(string& s, string& other)
{
    std::swap(s.b, other.b);
    std::swap(s.p, other.p);
    std::swap(s.e, other.e);
}

void string_chop(string& s, size_t n)
{
    if (n < string_length(s)) {
        s.p = s.b + n;
    }
}

} // namespace Demangle
