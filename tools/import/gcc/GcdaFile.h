// SPDX-License-Identifier: MIT
//
// The counters that a run of a g++ or clang++ --coverage build leaves, or adds to those that are
// there. Layout, in words of 4 bytes:
//
//   head       magic "gcda", version, stamp, [checksum since 12]
//   0xa1000000 summary: number of runs, greatest count
//   0x01000000 function: ident, line checksum, graph checksum; empty for a copy that was not linked
//   0x01a10000 arc counters of the function before it: 64 bits each, lower word first. A negative
//              length stands for that many zeros
//   0          closes the file. Without it some of the counters are missing
//
// Records with other tags are passed by. GccImporter reads one file of each unit that ran.
#pragma once

#include "tools/import/gcc/GcnoFile.h"

#include <vector>

class GcdaFile
{
public:
    enum Result { Ok, NotCounters, UnknownVersion, OtherBuild, Damaged };

    // Borrows `size` bytes at `data` for its life.
    GcdaFile(const unsigned char* data, size_t size);

    // Reads the head and finds the counters of each function. OtherBuild: the stamp is not `stamp`,
    // so that these counters belong to another state of the source. Damaged: records do not fit
    // together, or the file ends before it is closed.
    Result open(uint32_t stamp);

    // What a result other than Ok means, for a message.
    static const char* text(Result result);

    // The number of runs that the counters add up.
    uint32_t runs() const { return _runs; }

    // Whether the counters that the file has for `function` belong to it: it knows no such ident,
    // or the same checksums and `nCounters` counters.
    bool fits(const GcnoIdentity& function, size_t nCounters) const;

    // Notes that lost functions, or counters that lost the ident of one, show in what is left over
    // when all functions of the notes have been met. Says whether the file knows no such ident, or
    // the same checksums.
    bool meet(const GcnoIdentity& function);
    // Whether all functions of the file were met.
    bool areAllMet() const { return _nMet == _functions.size(); }

    // Adds to the arcs off the tree what the file has for the function `ident`. REQUIRES: fits().
    void addCounters(uint32_t ident, std::vector<GcnoArc>& arcs);

    // Both in one for a function that was just read. Gives the arcs of `function` that are off the
    // tree their counts; all zero when the file does not know the function. Returns false when it
    // knows another function by that ident, or has another number of counters for it; nothing
    // changes then.
    bool fillCounters(GcnoFunction& function);

private:
    struct Entry
    {
        uint32_t _ident = 0;
        uint32_t _lineChecksum = 0;
        uint32_t _graphChecksum = 0;
        size_t _start = 0; // of the counters
        size_t _size = 0;  // in bytes
        bool _isZeroed = true;
        bool _isMet = false;
    };

    Result readRecords();
    void sortFunctions();
    // The place among `_functions`, or their number.
    size_t placeOf(uint32_t ident) const;
    const Entry* find(uint32_t ident) const;

    GcovWords _words;
    const size_t _size;
    uint32_t _runs = 0;
    std::vector<Entry> _functions; // by ident, each once
    size_t _nMet = 0;              // of these
    // Notes and counters have functions in one order: behind the one that was asked for last.
    mutable size_t _next = 0;
};
