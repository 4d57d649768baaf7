// SPDX-License-Identifier: MIT
//
// The coverage map that Clang put into one program, shared library or object: names, lists of files
// and a record for each function. Layout of the section __llvm_covfun, repeated, in the file's byte
// order:
//
//    0 u64 hash of the name   8 u32 size of the mapping   12 u64 hash of the function's structure
//   20 u64 hash of the list of files   28 the mapping, see CoverageFunction.h
//
// then zero bytes to the next multiple of 8. Of the records of one name the first counts, or the
// first that is no dummy (a function that a unit saw and did not make) in the place of the first.
#pragma once

#include "tools/import/llvm/ElfFile.h"
#include "tools/import/llvm/FileLists.h"
#include "tools/import/llvm/MixedHash.h"
#include "tools/import/llvm/ProfileNames.h"

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct CoverageRecord
{
    uint64_t _name = 0; // hash
    uint64_t _hash = 0; // of the function
    uint64_t _list = 0; // hash of the list of files
    const char* _mapping = nullptr;
    uint32_t _size = 0; // of the mapping, in bytes
    bool _isDummy = false;
};

class CoverageImage
{
public:
    enum Result {
        Ok,
        NoCoverage,     // an ELF file that was not instrumented
        Stripped,       // was instrumented; its map is gone
        UnknownVersion, // of the map
        Failed          // problem() says why
    };

    CoverageImage() = default;
    CoverageImage(const CoverageImage&) = delete;
    CoverageImage& operator=(const CoverageImage&) = delete;

    // Reads the file. To be called once.
    Result read(const std::string& path);

    const std::string& problem() const { return _problem; }
    const std::string& path() const { return _path; }
    bool isObject() const { return _isObject; }
    const std::string& buildId() const { return _buildId; }
    // Of the map, as the file writes it.
    uint32_t version() const { return _lists.version(); }

    // In the order of the file; they point into the object.
    const std::vector<CoverageRecord>& records() const { return _records; }
    // Gives back the memory of records and names; none is there afterwards.
    void forget();
    // Null when there is none, or two that differ.
    const std::vector<std::string>* files(uint64_t list) const { return _lists.find(list); }
    std::string_view name(uint64_t hash) const { return _names.find(hash); }
    // A file without debug information's counterpart has no names: a profile has them, too.
    bool lacksNames() const { return _names.isEmpty(); }
    bool addNames(const std::string& bytes) { return _names.add(bytes); }

    // Adds a function that another tool read. `hash` stands for the function's structure.
    void addFunction(const std::string& name, uint64_t hash, const std::vector<std::string>& files,
                     const std::string& mapping);

    // What the data section of a profile holds when the program leaves it out, and the address that
    // its pointers count from; empty when the program writes it.
    const std::string& profileData() const { return _profileData; }
    uint64_t countersAddress() const { return _countersAddress; }

private:
    Result fail(const std::string& problem);
    Result read(ElfFile& file);
    Result readMap(ElfFile& file);
    bool readRecords(bool isBigEndian);
    void addRecord(const CoverageRecord& record);

    std::string _path;
    std::string _problem;
    bool _isObject = false;
    std::string _buildId;
    std::string _recordBytes;
    std::deque<std::string> _mappings; // of functions that were added
    std::string _profileData;
    uint64_t _countersAddress = 0;
    FileLists _lists;
    ProfileNames _names;
    std::vector<CoverageRecord> _records;
    std::unordered_map<uint64_t, size_t, MixedHash> _byName; // place in _records
};
