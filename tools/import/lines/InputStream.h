// SPDX-License-Identifier: MIT
//
// The bytes of a file from its start to its end, in pieces; unpacked when it is gzipped (its first
// two bytes say so), whatever its name is. Several gzip members one after the other are one file.
// The checksum of each member is compared. Zeros behind the last member are padding.
#pragma once

#include "tools/common/InputFile.h"

#include <cstddef>
#include <string>
#include <vector>
#include <zlib.h>

class InputStream
{
public:
    InputStream() = default;
    ~InputStream();
    InputStream(const InputStream&) = delete;
    InputStream& operator=(const InputStream&) = delete;

    // To be called once. Returns false with problem() set.
    bool open(const std::string& path);

    // Puts the next bytes to `to`, `size` of them, fewer only at the end. `got` is how many.
    // Returns false with problem() set when they cannot be had: the system refuses, the packed
    // bytes are damaged or end early, or the file was written to meanwhile.
    // REQUIRES: open() returned true.
    bool read(char* to, size_t size, size_t& got);

    bool isPacked() const { return _isPacked; }

    // Such as "Permission denied"; empty when nothing went wrong.
    const std::string& problem() const { return _problem; }

private:
    enum Step { More, Finished, Failed };

    bool fail(const std::string& problem);
    bool refill();
    bool readPlain(char* to, size_t size, size_t& got);
    Step unpack();
    Step endMember();

    InputFile _file;
    std::vector<char> _raw; // room for what was read from the file and not given out yet
    size_t _filled = 0;     // of _raw
    size_t _used = 0;       // of these
    bool _isPacked = false;
    bool _isStarted = false; // _packed is initialised
    bool _isFinished = false;
    z_stream _packed = {};
    std::string _problem;
};
