// SPDX-License-Identifier: MIT
//
// The notes that g++ or clang++ --coverage leaves beside each object file: for each function its
// place, its flow graph and the source lines of each basic block. Layout, in words of 4 bytes,
// strings with their length first:
//
//   head       magic "gcno", version, stamp, [checksum since 12], working folder,
//              "unexecuted blocks" flag
//   0x01000000 function: ident, line checksum, graph checksum, symbol, artificial flag, source
//   file,
//              start line, start column, end line, end column; what follows belongs to it:
//   0x01410000 blocks: their number. Block 0 is the entry, 1 the exit
//   0x01430000 arcs: from block, then pairs of to block and flags
//   0x01450000 lines: block, then lines; a 0 is followed by the name of the file that the next
//              lines are in, or by an empty string at the end
//
// Those of clang++ have no folder and no flag in the head; a function has no artificial flag and no
// more of its range than the start line; and blocks have a word for each instead of their number.
//
// Records with other tags are passed by. GccImporter reads one file of each unit.
#pragma once

#include "tools/import/gcc/ContentKey.h"
#include "tools/import/gcc/GcovWords.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// One line of a block, in the order of the notes.
struct GcnoLine
{
    uint32_t _block = 0;
    uint32_t _file = 0; // index into GcnoFunction::_files
    uint32_t _line = 0;
};

struct GcnoArc
{
    static constexpr uint32_t OnTree = 1; // has no counter: the others determine it
    static constexpr uint32_t Fake = 2;   // a call that does not return, or an exception
    static constexpr uint32_t FallThrough = 4;
    static constexpr uint32_t KnownFlags = 31;
    static constexpr uint32_t GreatestBlock = (1u << 27) - 1;

    // There are millions of arcs. No file is large enough for block numbers of more bits.
    uint32_t _from;
    uint32_t _to : 27;
    uint32_t _flags : 5;
    int64_t _count;
};

// By what counters know a function.
struct GcnoIdentity
{
    uint32_t _ident = 0;
    uint32_t _lineChecksum = 0;
    uint32_t _graphChecksum = 0;
};

// Its texts stay in the bytes that the reader borrows.
struct GcnoFunction : GcnoIdentity
{
    static constexpr uint32_t EntryBlock = 0;
    static constexpr uint32_t ExitBlock = 1;

    std::string_view _symbol;
    bool _isArtificial = false;
    uint32_t _startLine = 0;
    uint32_t _startColumn = 0;
    uint32_t _endLine = 0; // 0, and no columns, when the notes do not say it
    uint32_t _endColumn = 0;
    std::vector<std::string_view> _files; // as written; 0 is the function's own
    uint32_t _nBlocks = 0;
    // Counters belong to those off the tree, in this order. clang++ means one more on the tree,
    // from the exit to the entry, which readGraph() adds.
    std::vector<GcnoArc> _arcs;
    std::vector<GcnoLine> _lines;

    // As if it were new, but with the memory of its lists.
    void clear();
};

class GcnoFile
{
public:
    enum Result { Ok, NotNotes, UnknownVersion, Damaged };

    // Borrows `size` bytes at `data` for its life.
    GcnoFile(const unsigned char* data, size_t size);
    GcnoFile(const GcnoFile&) = delete;
    GcnoFile& operator=(const GcnoFile&) = delete;

    // Reads the head. UnknownVersion leaves major() and stamp() set.
    Result open();

    int major() const { return _words.major(); }
    uint32_t stamp() const { return _words.stamp(); }
    // What relative source paths count from.
    const std::string& folder() const { return _folder; }

    // Finds the next function and reads its ident and checksums; what `function` had before is
    // gone. Returns false at the end and, with damaged() set, where the file is cut short.
    // REQUIRES: open() returned Ok.
    bool findFunction(GcnoFunction& function);

    // Adds to `key` all bytes of the function that was found last, apart from its ident.
    void addContent(ContentKey& key) const;

    // Reads symbol, file and range of the function that was found last. Returns false, with
    // damaged() set, when it is cut short.
    bool readPlace(GcnoFunction& function);

    // Whether all lines of the function whose place was read last are in its own file. Checks its
    // graph like readGraph(), and keeps nothing of it; but says no when it meets another file, and
    // leaves what is behind to readGraph(). With damaged() set the answer means nothing.
    bool isInOneFile(GcnoFunction& function);

    // findFunction() and readPlace() in one.
    bool nextFunction(GcnoFunction& function);

    // Reads blocks, arcs and lines of the function whose place was read last. A caller may leave
    // this out. Returns false, with damaged() set, when they do not fit together.
    bool readGraph(GcnoFunction& function);

    bool damaged() const { return _damaged; }

    // How often two names of files were compared: no more often than a block changes its file.
    uint64_t nameComparisons() const { return _nameComparisons; }

private:
    struct SameName
    {
        uint64_t* _count;
        bool operator()(std::string_view a, std::string_view b) const
        {
            ++*_count;
            return a == b;
        }
    };

    uint32_t fileNumber(std::string_view padded, GcnoFunction& function);
    uint32_t otherFileNumber(std::string_view file, GcnoFunction& function);
    bool readBlocks(const GcovWords::Record& record, GcnoFunction& function);
    bool readArcs(const GcovWords::Record& record, GcnoFunction& function);
    bool readLines(const GcovWords::Record& record, GcnoFunction& function);
    bool checkArcs(const GcovWords::Record& record, const GcnoFunction& function) const;
    bool checkLines(const GcovWords::Record& record, const GcnoFunction& function,
                    bool& isInOneFile);

    GcovWords _words;
    const unsigned char* _data;
    const size_t _size;
    std::string _folder;
    size_t _next = 0;  // where the search for the next function starts
    size_t _place = 0; // of the current function's head behind the checksums, in bytes
    size_t _placeEnd = 0;
    size_t _graphStart = 0; // extent of the current function's records, in bytes
    size_t _graphEnd = 0;
    uint64_t _nameComparisons = 0;
    // Of the current function; empty while all lines are in its own file, as nearly always.
    std::unordered_map<std::string_view, uint32_t, std::hash<std::string_view>, SameName>
        _fileNumbers{0, std::hash<std::string_view>(), SameName{&_nameComparisons}};
    std::string_view _lastName; // that was asked for last, as it stands in the notes; or empty
    uint32_t _lastFile = 0;     // its number
    bool _damaged = false;
};
