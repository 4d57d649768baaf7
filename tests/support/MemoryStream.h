// SPDX-License-Identifier: MIT
//
// A stdio stream that reads bytes from memory, for readers that take a FILE*.
#pragma once

#include <cstdio>
#include <string>
#include <utility>

class MemoryStream
{
public:
    explicit MemoryStream(std::string bytes) : _bytes(std::move(bytes))
    {
        // fmemopen() refuses an empty buffer.
        _stream = _bytes.empty() ? std::fopen("/dev/null", "rb")
                                 : fmemopen(_bytes.data(), _bytes.size(), "rb");
    }
    ~MemoryStream() { std::fclose(_stream); }
    MemoryStream(const MemoryStream&) = delete;
    MemoryStream& operator=(const MemoryStream&) = delete;

    FILE* get() const { return _stream; }

private:
    std::string _bytes;
    FILE* _stream;
};
