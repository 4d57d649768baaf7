// SPDX-License-Identifier: MIT
//
// A file that is read in pieces, with the system's reason where that fails. Only
// regular files: a pipe or a device could hold the program for ever.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

class qipFileState;

class InputFile
{
public:
    InputFile();
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // Opens the file that `path` names. To be called once. Returns false with problem() set.
    bool open(const std::string& path);

    // The same for a file whose content counts and to which somebody may write meanwhile: waits for
    // a moment if it was written to just now, so that isUnchanged() can tell, and refuses it if
    // that goes on.
    bool openToWatch(const std::string& path);

    // In bytes, when it was opened.
    uint64_t size() const { return _size; }
    // How many bytes append() and next() have given out.
    uint64_t position() const { return _position; }

    // Appends the next `size` bytes to `bytes`, fewer only where the file ends. Returns false with
    // problem() set when they cannot be read, or when the file has become shorter.
    // REQUIRES: the file is open.
    bool append(std::string& bytes, size_t size);

    // The same to `bytes`, which has room for `size` bytes; `got` is how many came. Nothing is
    // filled with zeros first, as a text that grows is.
    bool next(char* bytes, size_t size, size_t& got);

    // Appends `size` bytes from `offset` on to `bytes`, fewer only where the file ends; append()
    // goes on where it was. Returns false like append(). REQUIRES: the file is open.
    bool readAt(uint64_t offset, size_t size, std::string& bytes);

    // Reads the `size` bytes from `offset` on to `bytes`; append() goes on where it was. Returns
    // false with problem() set when they are not all there or cannot be read. REQUIRES: open()
    // returned true.
    bool fill(uint64_t offset, size_t size, char* bytes);

    // Whether nobody has written to the file since it was opened; sets problem() otherwise.
    // REQUIRES: openToWatch() returned true.
    bool isUnchanged();

    // What went wrong last, such as "Permission denied"; empty when nothing did.
    const std::string& problem() const { return _problem; }

private:
    bool fail(const char* problem);
    size_t readInto(uint64_t offset, size_t size, char* bytes);

    int _fd = -1;
    uint64_t _size = 0;
    uint64_t _position = 0;
    std::unique_ptr<qipFileState> _watched; // null unless openToWatch() went well
    std::string _problem;
};
