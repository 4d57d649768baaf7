// SPDX-License-Identifier: MIT
//
// The functions of a build, each different one once: a header's function is the same in hundreds of
// units, so it is read in the first of them, and the counters of all are added up before its flow
// is solved. Used by all threads at once.
#pragma once

#include "tools/common/ImportLosses.h"
#include "tools/import/FunctionCopy.h"
#include "tools/import/ImportedBuild.h"
#include "tools/import/gcc/ContentKey.h"
#include "tools/import/gcc/GcdaFile.h"

#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

struct GccGraph;

// What the store knows of the bytes of a function in some notes.
struct KnownFunction
{
    enum Kind { Unknown, Wanted, System, Excluded, Artificial };

    Kind _kind = Unknown;
    // Of a wanted function, and of another when it holds lines of others (a lambda that was put
    // into an algorithm); owned by the store.
    GccGraph* _graph = nullptr;
};

// A function with its flow graph, of which the arcs off the tree hold the sums of all units. A
// function that was read as lines has no arcs; its copy holds the sums.
struct GccGraph
{
    FunctionCopy _copy;
    uint32_t _nBlocks = 0; // 0 when it was read as lines
    std::vector<GcnoArc> _arcs;
    std::vector<int64_t> _lineCounts; // of a function that was read as lines, of each block
    size_t _nCounters = 0;            // arcs off the tree
    KnownFunction::Kind _kind = KnownFunction::Wanted;
    uint64_t _blocksOfOtherFiles = 0; // all lines are in files that are left out
    uint64_t _linesOfOtherFiles = 0;

    // Of everything but counts, with sources by number.
    ContentKey key() const;
};

class GraphStore
{
public:
    // `bytes` are those of the function in the notes, with the folder that names count from.
    KnownFunction find(const ContentKey& bytes);

    // Remembers a function of which nothing is wanted.
    void leaveOut(const ContentKey& bytes, KnownFunction::Kind kind);

    // Takes a function that find() did not know, or drops it when it is there under other bytes or
    // another thread was first. Returns the one that is kept; null behind giveCopies() when it was
    // not there.
    GccGraph* insert(const ContentKey& bytes, std::unique_ptr<GccGraph> graph);

    // Adds the counters that `counters` holds for the function `ident`. REQUIRES: they fit().
    void addCounters(GccGraph& graph, GcdaFile& counters, uint32_t ident);

    // Adds the counts of a copy of `graph` that was read as lines.
    void addLineCounts(GccGraph& graph, const std::vector<int64_t>& counts);

    // Finds the counts of all blocks, with `nThreads` threads, and gives the functions away to
    // `build`, numbered as `counts` are. Nobody else uses the store any more. Returns false when
    // there are too many blocks.
    bool solve(unsigned int nThreads, ImportedBuild& build, std::vector<int64_t>& counts,
               ImportLosses& losses);

    // The same for several runs: once this, which gives the functions away without counts,
    bool giveCopies(ImportedBuild& build, ImportLosses& losses);
    // and then for each run, behind its addCounters(), this. Counters are zero again afterwards.
    void solveRun(unsigned int nThreads, std::vector<int64_t>& counts, ImportLosses& losses);

private:
    // Several parts, so that threads rarely wait for each other.
    struct Part
    {
        std::mutex _guard;
        std::unordered_map<ContentKey, KnownFunction, ContentKeyHash> _byBytes;
        std::unordered_map<ContentKey, std::unique_ptr<GccGraph>, ContentKeyHash> _graphs;
    };
    static constexpr size_t Parts = 64;

    Part& partOf(const ContentKey& key) { return _parts[key.low() % Parts]; }
    std::mutex& guardOf(const GccGraph& graph);
    bool number(ImportedBuild& build);
    void solveAll(unsigned int nThreads, bool isLastRun, std::vector<int64_t>& counts,
                  ImportLosses& losses);
    void moveCopies(ImportedBuild& build);
    void countLeftOut(ImportLosses& losses) const;

    Part _parts[Parts];
    std::vector<GccGraph*> _numbered; // all, in the order of their counts; empty before number()
};
