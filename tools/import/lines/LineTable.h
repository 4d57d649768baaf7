// SPDX-License-Identifier: MIT
//
// Coverage that knows lines of files and no more of functions than their places: what tracefiles
// and Cobertura documents hold. Each line is given to the innermost function around it and is a
// block of its own there. Filled section by section, then asked for the build and for the counts of
// each run.
//
// What several sections say of one file is united: a function or a line is there when any section
// has it. So the build does not depend on the order of sections.
//
//   - A function whose end is not given ends before the next one begins, the last one with the
//     file's last line. That is a guess, which is counted.
//   - Lines in no function go to one that has the name of the file.
//   - Of functions with one range, the first by name has the lines. The others are left out and
//     counted, but for instances of one template.
#pragma once

#include "tools/common/ImportLosses.h"
#include "tools/import/ImportedBuild.h"
#include "tools/import/lines/BytePool.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

class LineTable
{
public:
    // The number of a source file. `path` is absolute.
    uint32_t file(const std::string& path);

    // The number of the run that is a test of this name.
    uint32_t test(const std::string& name);
    // The number of a new run.
    uint32_t addRun(const std::string& name);

    // Some of what the run counted is of this time, in seconds since the epoch. The last one stays.
    void noteTime(uint32_t run, uint32_t time);

    // Starts a section: what the run counted in the file.
    void beginSection(uint32_t file, uint32_t run);
    // A function of the section's file from line `first` on; `last` is 0 when it is not known. The
    // name has `size` bytes.
    void addFunction(const char* name, size_t size, uint32_t first, uint32_t last);
    // A line of the section, from 1. Counts of one line are added up, so that memory follows the
    // different lines.
    void addLine(uint32_t line, int64_t count)
    {
        if (line == _lastLine) {
            addCount(_section.back()._count, count);
            return;
        }
        if (_section.size() == _mostLines) {
            uniteSection();
        }
        _isSorted = _isSorted && line > _lastLine;
        _lastLine = line;
        _section.push_back({line, count});
    }
    // Keeps the section.
    void endSection();

    size_t runs() const { return _runs.size(); }
    const std::string& runName(size_t run) const { return _runs[run]._name; }
    uint32_t runTime(size_t run) const { return _runs[run]._time; } // 0 when it is not known

    // Makes the functions of the files that are kept, once, when all sections are in, with
    // `nThreads` threads. Returns false when there are more lines than a build can have.
    bool fillBuild(ImportedBuild& build, ImportLosses& losses, unsigned int nThreads);

    // Gives the counts of one run. REQUIRES: fillBuild() was called.
    void fillCounts(size_t run, std::vector<int64_t>& counts) const;

private:
    class FilesJob;
    class FileBuild;

    struct LineHits
    {
        uint32_t _line;
        int64_t _count;
    };
    struct Function
    {
        const char* _name; // in _pool
        uint32_t _size;
        uint32_t _first;
        uint32_t _last;
    };
    // The lines of one section, as PackedLines.
    struct Section
    {
        uint32_t _file;
        uint32_t _nLines;
        const char* _bytes; // in _pool
    };
    struct File
    {
        std::string _path;
        std::vector<Function> _functions; // may come again
        size_t _nextFunction = 0;         // the one that a section probably has next
        size_t _nDifferent = 0;           // as they were united last
        bool _isKept = false;
        uint32_t _number = 0;         // of the source in the build
        std::vector<uint32_t> _lines; // the union of all sections
        uint32_t _firstPlace = 0;     // in a run's counts, of the first line
        std::vector<uint32_t> _place; // behind that, of each line; empty when they are in order
    };
    struct Run
    {
        std::string _name;
        uint32_t _time = 0;
        std::vector<Section> _sections;
    };

    // Lines that a section may have before it is looked for such that are one.
    static constexpr size_t LeastUnited = 1u << 16;

    static void addCount(int64_t& sum, int64_t count)
    {
        if (__builtin_add_overflow(sum, count, &sum)) {
            sum = count > 0 ? INT64_MAX : INT64_MIN;
        }
    }
    static void uniteFunctions(std::vector<Function>& functions);
    void sortSection();
    void uniteSection();
    void leaveOut(ImportedBuild& build, ImportLosses& losses);

    std::vector<File> _files;
    std::unordered_map<std::string, uint32_t> _fileNumbers;
    std::vector<Run> _runs;
    std::unordered_map<std::string, uint32_t> _tests; // name > run
    BytePool _pool;
    uint32_t _nCounts = 0;

    uint32_t _file = 0; // of the section
    uint32_t _run = 0;
    std::vector<LineHits> _section;
    uint32_t _lastLine = 0;
    bool _isSorted = true;
    size_t _mostLines = LeastUnited;
    std::vector<char> _packed;
};
