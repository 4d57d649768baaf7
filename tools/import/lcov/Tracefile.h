// SPDX-License-Identifier: MIT
//
// Reads a tracefile of lcov (1.x or 2.x), or what other tools write in its form; plain or gzipped.
// Text, one record on each line:
//
//   TN:name                    the test that the sections behind it belong to; may be empty
//   SF:path                    begins the section of a source file
//   FN:start,[end,]name        a function, and
//   FNDA:count,name              how often it was called
//   FNL:index,start[,end]      the same since 2.2: a place, its number counted in this section, and
//   FNA:index,count,name         one of the functions there
//   DA:line,count[,checksum]   a line; what is given for one line several times adds up
//   end_of_record              ends the section
//   #...                       a comment
//
// Branches and conditions (BRDA, MCDC), totals (FNF, FNH, BRF, BRH, MCF, MCH, LF, LH) and VER are
// passed by; so are records of other kinds, which are counted. How often a function was called
// follows from its lines.
//
// The file is read in pieces: memory does not follow the length of its lines.
#pragma once

#include "tools/common/ImportLosses.h"
#include "tools/import/lines/InputStream.h"
#include "tools/import/lines/LineTable.h"
#include "tools/import/lines/SourceRoots.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

class Tracefile
{
public:
    // The greatest length of a record that is used, in bytes. Others may have any.
    static constexpr size_t LongestRecord = 1u << 20;

    // Each test is a log with counts of all files: more than these are refused.
    static constexpr size_t MostTests = 10000;

    // Borrows `table` for its life.
    explicit Tracefile(LineTable& table) : _table(table) {}

    // Puts all sections of the file into the table. Those that belong to no test are a new run
    // `runName`. To be called once.
    // Returns false with problem() set when the file cannot be read or is no tracefile.
    bool read(const std::string& path, const std::string& runName);

    // "PATH:LINE: cause", or "PATH: cause".
    const std::string& problem() const { return _problem; }

    // Records of unknown kinds, lines without a number.
    const ImportLosses& losses() const { return _losses; }

private:
    struct Place
    {
        uint32_t _first;
        uint32_t _last;
    };

    bool fail(const std::string& cause);
    bool readPieces();
    bool takePlainLine(const char*& at);
    bool readRecords(const char* at, const char* end);
    uint32_t run();
    bool endsWithinLine(const char* start, const char* end) const;
    bool skipLongLine(const std::string& start);
    bool readRecord(const char* at, const char* end);
    bool readOther(const char* at, const char* end);
    bool beginSection(const char* at, const char* end);
    bool readLine(const char* at, const char* end);
    bool readFunction(const char* at, const char* end);
    bool readPlace(const char* at, const char* end);
    bool readAlias(const char* at, const char* end);
    void addFunction(const Place& place, const char* name, const char* end);
    bool endSection();
    static bool isUnused(const char* at, const char* end);

    LineTable& _table;
    std::string _path;
    std::string _runName;
    InputStream _input;
    std::unique_ptr<SourceRoots> _roots;
    uint64_t _line = 0;
    uint32_t _time = 0; // when the file was written
    std::string _test;  // empty when the sections belong to none
    uint32_t _ownRun = UINT32_MAX;
    bool _isInSection = false;
    bool _hasSections = false;
    bool _isSkipping = false;                    // the rest of a line without use
    bool _isCut = false;                         // within its last line
    std::unordered_map<uint32_t, Place> _places; // of the section, by index
    std::string _text;                           // for names
    ImportLosses _losses;
    std::string _problem;
};
