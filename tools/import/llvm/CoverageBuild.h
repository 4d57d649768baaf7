// SPDX-License-Identifier: MIT
//
// The functions of all programs and libraries of a build, each once, as the common model wants
// them, and how their counts follow from a profile.
//
//   - A function that several files hold is read from the first. The counters of a profile do not
//     tell its copies apart.
//   - A function that units saw and none made has one block that never runs.
//   - Text of a macro is left out: the use of the macro is a block. Text of a file that is included
//     inside a function is the function's text in that file.
//   - Regions with one counter are one block: they always run equally often.
//   - Text of a lambda, or of a class inside a function, is none of the function around it.
#pragma once

#include "tools/common/ImportLosses.h"
#include "tools/import/ImportedBuild.h"
#include "tools/import/llvm/BlockNumbers.h"
#include "tools/import/llvm/CountPlan.h"
#include "tools/import/llvm/CoverageImage.h"
#include "tools/import/llvm/RegionLines.h"
#include "tools/import/llvm/TextPosition.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

class CoverageBuild
{
public:
    // Takes a file. All files have to be there before read().
    void add(std::unique_ptr<CoverageImage> image);

    // Reads all functions with `nThreads` threads; the images forget theirs. To be called once.
    void read(ImportedBuild& build, ImportLosses& losses, unsigned int nThreads);

    const CountPlan& plan() const { return _plan; }
    const std::vector<const CoverageImage*>& images() const { return _views; }

private:
    friend class ShapeJob;
    friend class CopyJob;

    using Range = std::pair<TextPosition, TextPosition>;
    static constexpr uint32_t NoRange = UINT32_MAX;

    // A record of one of the files, and what has to be known of all before one is made.
    struct Entry
    {
        const CoverageImage* _image = nullptr;
        const CoverageRecord* _record = nullptr;
        std::string_view _name;
        SourceNumber _source;
        Range _range;               // of all its text
        Range _body;                // of its longest region
        uint32_t _around = NoRange; // place in _nested of what lies in it
        uint64_t _lines = 0;        // at most
        bool _isDamaged = false;
        bool _isLeftOut = false; // nothing of it is wanted
    };
    // A plan whose steps and blocks stand in those of Made, behind those of the one before.
    struct Part
    {
        uint64_t _name;
        uint64_t _hash;
        uint32_t _nCounters;
        size_t _nSteps;
        size_t _nBlocks;
    };
    // What some entries give.
    struct Made
    {
        std::vector<FunctionCopy> _copies;
        std::vector<Part> _parts; // of each copy
        std::vector<CountPlan::Step> _steps;
        std::vector<uint32_t> _blocks;
        ImportLosses _losses;
    };
    // What is used for one function after the other.
    struct Scratch
    {
        CoverageFunction _function;
        std::vector<bool> _isOwn; // text of the function itself, by file
        BlockNumbers _blocks;
        CountPlan::Function _plan;
        RegionLines _regions;
        std::vector<CopyLine> _lines;       // file by file
        std::vector<CopyLine> _sorted;      // the same by block
        std::vector<size_t> _ends;          // of the lines of each block
        const std::string* _file = nullptr; // that was looked up last
        SourceNumber _source;
    };

    void shape(Entry& entry, ImportedBuild& build, Scratch& scratch) const;
    void make(const Entry& entry, ImportedBuild& build, Scratch& scratch, Made& made) const;
    void findLines(const Entry& entry, ImportedBuild& build, Scratch& scratch, Made& made) const;
    void collect();
    void leaveOut(ImportLosses& losses);
    void leaveOutDummies();
    void leaveOutCopies(ImportLosses& losses);
    void boundLines(ImportLosses& losses);
    void findNested();
    void keep(Made& made, ImportedBuild& build, ImportLosses& losses);

    std::vector<std::unique_ptr<CoverageImage>> _images;
    std::vector<const CoverageImage*> _views;
    std::vector<Entry> _entries;
    std::vector<std::vector<Range>> _nested;
    CountPlan _plan;
};
