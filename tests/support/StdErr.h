// SPDX-License-Identifier: MIT
//
// Takes one of the process's standard streams, whoever writes to it: iostream, stdio or a library.
// While the object lives the stream goes into a file; text() is what came so far.
#pragma once

#include <string>

class CapturedStream
{
public:
    // `fd` is 1 or 2.
    explicit CapturedStream(int fd);
    // Gives the stream back.
    ~CapturedStream();
    CapturedStream(const CapturedStream&) = delete;
    CapturedStream& operator=(const CapturedStream&) = delete;

    std::string text() const;

private:
    int _fd;
    int _saved; // what `_fd` was
    int _file;  // where it goes
};

class StdErr : public CapturedStream
{
public:
    StdErr() : CapturedStream(2) {}
};

class StdOut : public CapturedStream
{
public:
    StdOut() : CapturedStream(1) {}
};
