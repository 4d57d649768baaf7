// SPDX-License-Identifier: MIT
//
// Makes what Clang and its run-time library write, in words of coverage: the parts of a program
// that hold its coverage map, and raw profiles. In every version, word size and byte order, also
// those of compilers that are not installed.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// Appends numbers to bytes.
class LlvmNumbers
{
public:
    explicit LlvmNumbers(bool isBigEndian = false) : _isBigEndian(isBigEndian) {}

    LlvmNumbers& fixed(uint64_t value, size_t size);
    LlvmNumbers& u16(uint64_t value) { return fixed(value, 2); }
    LlvmNumbers& u32(uint64_t value) { return fixed(value, 4); }
    LlvmNumbers& u64(uint64_t value) { return fixed(value, 8); }
    LlvmNumbers& leb(uint64_t value);
    LlvmNumbers& text(const std::string& bytes);
    LlvmNumbers& align(size_t unit);
    const std::string& bytes() const { return _bytes; }

private:
    bool _isBigEndian;
    std::string _bytes;
};

// LEB128 numbers one after the other.
std::string lebs(const std::vector<uint64_t>& numbers);
// A text as names and file lists have it, plain or as a zlib stream.
std::string llvmText(const std::string& text, bool isPacked);

// Which of the layouts.
struct LlvmTarget
{
    bool _is64 = true;
    bool _isBigEndian = false;
    uint32_t _mapVersion = 5;
    uint32_t _rawVersion = 8;
    bool _isPacked = false;     // names and file lists
    bool _isSingleByte = false; // counters
    std::string _buildId = {};
};

struct LlvmFunction
{
    std::string _name;
    uint64_t _hash = 0;
    std::string _mapping = {};
    std::vector<uint64_t> _counters = {}; // of a run
    uint32_t _valueSites = 0;
};

// The mapping of a function with the one file 1 of its unit, no expressions, and code regions, each
// a counter (as in the file), start line and column, end line and column.
std::string plainMapping(const std::vector<std::vector<uint32_t>>& regions);
constexpr uint32_t counterNumber(uint32_t number)
{
    return number << 2 | 1;
}

// A section of a file.
struct ElfPart
{
    std::string _name;
    std::string _bytes;
    uint32_t _type = 1;
    uint64_t _address = 0;
    uint64_t _flags = 0;
};
// A whole file with these sections; `type` 2 is a program, 1 an object.
std::string elfFile(const LlvmTarget& target, const std::vector<ElfPart>& parts, uint16_t type = 2);

// The sections. `files` begins with the compiler's folder when the version has one.
std::string mapSection(const LlvmTarget& target, const std::vector<std::string>& files);
std::string recordSection(const LlvmTarget& target, const std::vector<std::string>& files,
                          const std::vector<LlvmFunction>& functions);
std::string nameSection(const LlvmTarget& target, const std::vector<LlvmFunction>& functions);

// A program with all of it.
std::string llvmProgram(const LlvmTarget& target, const std::vector<std::string>& files,
                        const std::vector<LlvmFunction>& functions);

// A raw profile of one run of it.
std::string rawProfile(const LlvmTarget& target, const std::vector<LlvmFunction>& functions);
