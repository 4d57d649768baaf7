// SPDX-License-Identifier: MIT
//
// The whole way of a g++ build into a model, for programs made up from the input: flow graphs, a
// spanning tree whose arcs have no counters, and some runs through each graph, counted block by
// block on the way. The counts that the importer finds must be those.
#include "fuzz/FuzzBytes.h"
#include "fuzz/fuzzTarget.h"
#include "qip/Support/qipAssert.h"
#include "tests/unit/tools/import/GcovBuilder.h"
#include "tools/common/countRun.h"
#include "tools/common/finishCoverage.h"
#include "tools/import/ModelBuilder.h"
#include "tools/import/gcc/GccUnit.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <numeric>
#include <string>
#include <vector>

namespace {

constexpr uint32_t Entry = 0;
constexpr uint32_t Exit = 1;
constexpr uint32_t FirstBody = 2;
constexpr uint32_t Stamp = 77;
constexpr int LongestWalk = 300;      // blocks of one call; the rest of the way is the shortest
constexpr uint32_t LinesOfEach = 100; // from the start of one function to that of the next

struct Arc
{
    uint32_t from;
    uint32_t to;
    bool isOnTree = false;
    int64_t count = 0; // of one unit
};

// A function with one place in the source, and how often its blocks ran in all units.
class Function
{
public:
    Function(FuzzBytes& bytes, uint32_t number)
        : _number(number), _nBlocks(FirstBody + 1 + bytes.below(10)), _visits(_nBlocks)
    {
        _arcs.push_back({Entry, FirstBody});
        for (uint32_t block = FirstBody; block < _nBlocks; ++block) {
            addWaysOut(bytes, block);
            _lines.push_back(firstLine() + bytes.below(20));
        }
        chooseTree(bytes);
    }

    std::string symbol() const { return "f" + std::to_string(_number); }
    uint32_t firstLine() const { return 1 + _number * LinesOfEach; }
    const std::vector<int64_t>& visits() const { return _visits; }

    void writeNotes(GcovBuilder& notes) const
    {
        notes.function(_number, 1, 2, symbol(), 0, "a.cc", firstLine(), firstLine() + 50);
        notes.blocks(_nBlocks);
        for (size_t i = 0; i < _arcs.size();) {
            std::vector<GcovBuilder::Arc> together;
            const uint32_t from = _arcs[i].from;
            for (; i < _arcs.size() && _arcs[i].from == from; ++i) {
                together.push_back({_arcs[i].to, _arcs[i].isOnTree ? 1u : 0u});
            }
            notes.arcs(from, together);
        }
        for (uint32_t block = FirstBody; block < _nBlocks; ++block) {
            notes.lines(block, "a.cc", {_lines[block - FirstBody]});
        }
    }

    // Runs it some times and writes what the counters of this unit say then.
    void run(FuzzBytes& bytes, GcovBuilder& counters)
    {
        for (Arc& arc : _arcs) {
            arc.count = 0;
        }
        // A call of each kind, many times: counts of more than 32 bits.
        for (uint32_t n = bytes.below(4); n > 0; --n) {
            walk(bytes, int64_t{1} << bytes.below(40));
        }
        counters.ran(_number, 1, 2);
        std::vector<int64_t> counts;
        for (const Arc& arc : _arcs) {
            if (!arc.isOnTree) {
                counts.push_back(arc.count);
            }
        }
        const bool isZero = std::count(counts.begin(), counts.end(), 0) ==
                            static_cast<std::ptrdiff_t>(counts.size());
        if (isZero && bytes.below(2) == 1) {
            counters.zeroedCounters(static_cast<uint32_t>(counts.size()));
        } else {
            counters.counters(counts);
        }
    }

private:
    // The first way leads to the next block, and from the last to the exit.
    void addWaysOut(FuzzBytes& bytes, uint32_t block)
    {
        std::vector<uint32_t> targets = {block + 1 < _nBlocks ? block + 1 : Exit};
        for (uint32_t n = bytes.below(3); n > 0; --n) {
            const uint32_t target = 1 + bytes.below(_nBlocks - 1);
            if (std::find(targets.begin(), targets.end(), target) == targets.end()) {
                targets.push_back(target);
            }
        }
        for (const uint32_t target : targets) {
            _arcs.push_back({block, target});
        }
    }

    // What leaves comes back in: the exit leads to the entry, by an arc that is on the tree.
    void chooseTree(FuzzBytes& bytes)
    {
        std::vector<uint32_t> part(_nBlocks);
        std::iota(part.begin(), part.end(), 0);
        const auto unite = [&](uint32_t a, uint32_t b) {
            const uint32_t before = part[a];
            const uint32_t into = part[b];
            std::replace(part.begin(), part.end(), before, into);
            return before != into;
        };
        unite(Exit, Entry);
        const size_t first = bytes.below(static_cast<uint32_t>(_arcs.size()));
        for (size_t i = 0; i < _arcs.size(); ++i) {
            Arc& arc = _arcs[(first + i) % _arcs.size()];
            arc.isOnTree = unite(arc.from, arc.to);
        }
    }

    void walk(FuzzBytes& bytes, int64_t times)
    {
        uint32_t block = Entry;
        _visits[block] += times;
        for (int step = 0; block != Exit; ++step) {
            std::vector<Arc*> ways;
            for (Arc& arc : _arcs) {
                if (arc.from == block) {
                    ways.push_back(&arc);
                }
            }
            const bool isFree = step < LongestWalk && !bytes.isEmpty();
            Arc& arc = *ways[isFree ? bytes.below(static_cast<uint32_t>(ways.size())) : 0];
            arc.count += times;
            block = arc.to;
            _visits[block] += times;
        }
    }

    uint32_t _number;
    uint32_t _nBlocks;
    std::vector<int64_t> _visits;
    std::vector<Arc> _arcs;
    std::vector<uint32_t> _lines; // of each body block
};

// What the importer counts before anything is put together.
void checkCopies(const ImportedBuild& build, const std::vector<int64_t>& counts,
                 const std::vector<Function>& functions)
{
    qipAssert(build._copies.size() == functions.size());
    std::map<std::string, const Function*> bySymbol;
    for (const Function& function : functions) {
        bySymbol[function.symbol()] = &function;
    }
    for (const FunctionCopy& copy : build._copies) {
        const std::vector<int64_t>& visits = bySymbol.at(copy._symbol)->visits();
        for (size_t block = 0; block < visits.size(); ++block) {
            qipAssert(counts[copy._firstCount + block] == visits[block]);
        }
    }
}

// What the log gets: a count for each block of the map. Most are those of one basic block, each of
// which has its line; the others are sums.
void checkModel(const CoverageModel& model, const CoverageCounts& result,
                const std::vector<Function>& functions)
{
    qipAssert(model._files.size() == 1 && result._files.size() == 1);
    const std::vector<CovFunction>& found = model._files[0]._functions;
    qipAssert(found.size() == functions.size());
    std::vector<int64_t> values;
    for (size_t i = 0; i < functions.size(); ++i) {
        const std::vector<int64_t>& visits = functions[i].visits();
        qipAssert(found[i]._startLine == functions[i].firstLine());
        qipAssert(found[i]._nBasicBlocks == visits.size() - FirstBody);
        values.insert(values.end(), visits.begin() + FirstBody, visits.end());
    }
    size_t place = 0;
    for (const CovFunction& function : found) {
        for (const CovBlock& block : function._blocks) {
            const uint32_t count = result._files[0][place++];
            qipAssert(block._value >= values.size() ||
                      count == std::min(values[block._value], GreatestCount));
        }
    }
    qipAssert(place == result._files[0].size());
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzBytes bytes(data, size);
    const int major = 9 + static_cast<int>(bytes.below(6));
    const bool isBigEndian = bytes.below(2) == 1;
    std::vector<Function> functions;
    for (uint32_t n = 1 + bytes.below(4); n > 0; --n) {
        functions.emplace_back(bytes, static_cast<uint32_t>(functions.size()));
    }
    GcovBuilder notes(major, isBigEndian);
    notes.notesHead(Stamp, "/build");
    for (const Function& function : functions) {
        function.writeNotes(notes);
    }

    const SourceFilter filter;
    ImportedBuild build(filter);
    GraphStore store;
    for (uint32_t nUnits = 1 + bytes.below(3); nUnits > 0; --nUnits) {
        GcovBuilder counters(major, isBigEndian);
        counters.countersHead(Stamp);
        for (Function& function : functions) {
            function.run(bytes, counters);
        }
        counters.word(0);
        GccUnit unit(build._sources, store);
        qipAssert(unit.readBlocks(notes.bytes(), &counters.bytes()));
        qipAssert(unit.failure().empty());
    }
    ImportLosses losses;
    std::vector<int64_t> counts;
    qipAssert(store.solve(1, build, counts, losses));
    checkCopies(build, counts, functions);

    CoverageModel model;
    buildModel(build, false, 1, model, losses);
    finishCoverage(model, NameStyle(), losses, 1);
    CoverageCounts result;
    countRun(model, counts, result, losses, 1);
    checkModel(model, result, functions);
    qipAssert(losses._linesShownRed + losses._linesShownBlack == 0);
    return 0;
}
