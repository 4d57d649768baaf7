// SPDX-License-Identifier: MIT
//
// Bytes as a file with a name, for readers that open one; it never meets a disk. Used by fuzz
// targets, which also want the readers' warnings out of the way.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

class MemoryFile
{
public:
    MemoryFile(const uint8_t* data, size_t size) : _fd(memfd_create("input", 0))
    {
        std::cerr.rdbuf(nullptr);
        while (size > 0) {
            const ssize_t written = write(_fd, data, size);
            if (written <= 0) {
                std::abort();
            }
            data += written;
            size -= static_cast<size_t>(written);
        }
    }
    ~MemoryFile() { close(_fd); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    int descriptor() const { return _fd; }
    std::string path() const { return "/proc/self/fd/" + std::to_string(_fd); }

private:
    int _fd;
};
