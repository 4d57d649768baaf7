// SPDX-License-Identifier: MIT
//
// A file that is read in pieces, with the system's reason where that fails. Only
// regular files: a pipe or a device could hold the program for ever.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/stat.h>

class InputFile
{
public:
    InputFile() = default;
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // Opens the file that `path` names. To be called once. Returns false with problem() set.
    bool open(const std::string& path);

    // In bytes, when it was opened.
    uint64_t size() const { return static_cast<uint64_t>(_status.st_size); }
    // How many bytes append() has given out.
    uint64_t position() const { return _position; }

    // Appends the next `size` bytes to `bytes`, fewer only where the file ends. Returns false with
    // problem() set when they cannot be read, or when the file has become shorter.
    // REQUIRES: open() returned true.
    bool append(std::string& bytes, size_t size);

    // Appends `size` bytes from `offset` on to `bytes`, fewer only where the file ends; append()
    // goes on where it was. Returns false like append(). REQUIRES: open() returned true.
    bool readAt(uint64_t offset, size_t size, std::string& bytes);

    // Reads the `size` bytes from `offset` on to `bytes`; append() goes on where it was. Returns
    // false with problem() set when they are not all there or cannot be read. REQUIRES: open()
    // returned true.
    bool fill(uint64_t offset, size_t size, char* bytes);

    // Whether nobody has written to the file since it was opened; sets problem() otherwise.
    // REQUIRES: open() returned true.
    bool isUnchanged();

    // What went wrong last, such as "Permission denied"; empty when nothing did.
    const std::string& problem() const { return _problem; }

private:
    bool fail(const char* problem);
    size_t readInto(uint64_t offset, size_t size, char* bytes);

    int _fd = -1;
    struct stat _status = {};
    uint64_t _position = 0;
    std::string _problem;
};
