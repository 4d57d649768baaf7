// SPDX-License-Identifier: MIT
//
// The lists of source files in a binary's section __llvm_covmap, one for each unit. Layout,
// repeated until the end, numbers in the binary's byte order:
//
//    0 u32 0   4 u32 size of the list   8 u32 0   12 u32 version   16 the list
//
// then zero bytes to the next multiple of 8. The list: LEB128 number of files, a text (LlvmText.h)
// of that many times LEB128 length and name. Since version 5 the first name is the folder that the
// compiler ran in, which relative names count from. A list is known by the hash of its bytes as
// they stand.
#pragma once

#include "tools/import/llvm/LlvmText.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

class FileLists
{
public:
    // As the file writes it; tools call it one more.
    static constexpr uint32_t FirstVersion = 3;
    static constexpr uint32_t LastVersion = 6;

    enum Result { Ok, UnknownVersion, Damaged };

    // Adds the lists of one section.
    Result read(const std::string& bytes, bool isBigEndian);

    // Adds a list whose names are absolute. Returns the hash that it is found by.
    uint64_t addList(const std::vector<std::string>& files);

    // The files of a list, absolute unless the compiler was told to leave its folder out; null when
    // there is no such list, or two that differ.
    const std::vector<std::string>* find(uint64_t hash) const;

    // Of the lists that were read, and of one that was not known.
    uint32_t version() const { return _version; }

private:
    bool readList(const char* bytes, size_t size, uint32_t version);

    LlvmText _reader;
    std::map<uint64_t, std::vector<std::string>> _lists; // empty: void
    uint32_t _version = 0;
};
