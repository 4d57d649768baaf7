// SPDX-License-Identifier: MIT
//
// The counters that a program built with clang++ -fprofile-instr-generate leaves at its end: a
// .profraw file. It holds one profile, or several behind each other (of a program and its
// libraries, of a process that forked). Layout of one, in the byte order and word size of its magic
// number:
//
//   head       u64 each: magic, version and flags, [size of binary ids, since 7], number of data
//              records, padding, number of counters, padding, [bitmap bytes, padding, since 9],
//              size of names, address of counters, [of bitmaps, since 9], of names, [tables and
//              their names, since 10], last kind of value
//   ids        u64 length, bytes, zeros to a multiple of 8 (none in version 7)
//   data       a record for each function: u64 hash of the name, u64 hash of the function, word
//              counters, [word bitmap, since 9], words function and values, u32 number of counters,
//              u16 values of each kind (3 since 10), [u32 bitmap bytes, since 9]
//   counters   u64 each; or a byte each, 0 for what ran
//   bitmaps, names (ProfileNames.h) and zeros to a multiple of 8, tables
//   values     for each record with values: u32 size of all of it, u32 kinds, contents
//
// A record's counters begin at its address less that of all; since 8 both count from the record.
#pragma once

#include "tools/import/llvm/LlvmBytes.h"

#include <cstdint>
#include <string>
#include <vector>

class CoverageImage;

struct ProfileRecord
{
    uint64_t _name = 0;  // hash
    uint64_t _hash = 0;  // of the function
    uint64_t _start = 0; // of its counters, in bytes from the first
    uint32_t _nCounters = 0;
};

// One of the profiles of a file.
struct ProfilePart
{
    std::vector<std::string> _binaryIds;
    std::vector<ProfileRecord> _records;
    const char* _counters = nullptr; // in the bytes of the file
    size_t _countersSize = 0;        // bytes
    bool _isSingleByte = false;
    bool _isBigEndian = false;
    std::string _names; // as they stand

    // Gives all counters of a record to `counters`.
    void readCounters(const ProfileRecord& record, uint64_t* counters) const;
    size_t counterSize() const { return _isSingleByte ? 1 : 8; }
};

class RawProfile
{
public:
    enum Result {
        Ok,
        Empty,          // no bytes
        NotRaw,         // something else
        UnknownVersion, // a raw profile that llvm-profdata may know
        LeftOut,        // the functions are in the program, and none of the images has them
        Damaged
    };
    static constexpr size_t HeadSize = 128; // bytes, the largest

    // Whether bytes begin as such a file does.
    static bool isRaw(const char* bytes, size_t size);
    // The same for profiles that llvm-profdata made.
    static bool isIndexed(const char* bytes, size_t size);
    // The version of a raw profile, 0 for what is none.
    static uint32_t versionOf(const char* bytes, size_t size);
    // Whether read() knows the version of a raw profile and all its flags.
    static bool isKnown(const char* bytes, size_t size);
    // Whether its counters only say what ran.
    static bool isSingleByte(const char* bytes, size_t size);

    // Reads the profiles in `bytes`, which are borrowed for the object's life. `images` are asked
    // for what a profile leaves out. A file that is damaged gives none of its profiles.
    Result read(const std::string& bytes, const std::vector<const CoverageImage*>& images);

    const std::vector<ProfilePart>& parts() const { return _parts; }

private:
    struct Head;

    static bool readHead(LlvmBytes& bytes, Head& head);
    Result readPart(LlvmBytes& bytes, Head& head, const std::vector<const CoverageImage*>& images);
    static bool readLeftOut(const Head& head, ProfilePart& part,
                            const std::vector<const CoverageImage*>& images);
    static bool readIds(const char* ids, const Head& head, ProfilePart& part);
    static bool readRecords(const char* data, const Head& head, ProfilePart& part,
                            uint64_t& recordsWithValues);
    static void skipPadding(LlvmBytes& bytes, uint64_t size);
    static bool skipTables(LlvmBytes& bytes, const Head& head);
    static bool skipValues(LlvmBytes& bytes, uint64_t count);

    std::vector<ProfilePart> _parts;
};
