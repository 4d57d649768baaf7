// SPDX-License-Identifier: MIT
#include "tests/support/StdErr.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sys/types.h>
#include <unistd.h>

namespace {

void flushAll()
{
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
}

} // namespace

CapturedStream::CapturedStream(int fd) : _fd(fd)
{
    flushAll();
    char name[] = "/tmp/zem-stream-XXXXXX";
    _file = mkstemp(name);
    _saved = dup(_fd);
    if (_file < 0 || _saved < 0 || dup2(_file, _fd) < 0) {
        std::abort();
    }
    unlink(name);
}

CapturedStream::~CapturedStream()
{
    flushAll();
    dup2(_saved, _fd);
    close(_saved);
    close(_file);
}

std::string CapturedStream::text() const
{
    flushAll();
    std::string text;
    char piece[4096];
    off_t offset = 0;
    for (;;) {
        const ssize_t got = pread(_file, piece, sizeof piece, offset);
        if (got <= 0) {
            return text;
        }
        text.append(piece, static_cast<size_t>(got));
        offset += got;
    }
}
