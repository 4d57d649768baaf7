// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GraphStore.h"

#include "tools/common/parallel.h"
#include "tools/import/gcc/FlowSolver.h"

#include <algorithm>
#include <utility>

namespace {

void countBlocksWithoutLine(const GccGraph& graph, ImportLosses& losses)
{
    uint64_t withLines = 0;
    uint32_t last = UINT32_MAX;
    for (const CopyLine& line : graph._copy._lines) {
        withLines += line._block != last ? 1 : 0;
        last = line._block;
    }
    const uint64_t real =
        graph._nBlocks - std::min(graph._nBlocks, GcnoFunction::ExitBlock + uint32_t{1});
    losses._blocksWithoutLine += real - std::min(real, withLines + graph._blocksOfOtherFiles);
    losses._blocksOfOtherFiles += graph._blocksOfOtherFiles;
    losses._linesOfOtherFiles += graph._linesOfOtherFiles;
}

size_t countsOf(const GccGraph& graph)
{
    return graph._nBlocks == 0 ? graph._lineCounts.size() : graph._nBlocks;
}

// Fills the graph's part of `counts`. `solver` and `solved` are there to be used again.
void solveGraph(GccGraph& graph, FlowSolver& solver, std::vector<int64_t>& solved,
                std::vector<int64_t>& counts, ImportLosses& losses)
{
    const auto first = counts.begin() + static_cast<std::ptrdiff_t>(graph._copy._firstCount);
    if (graph._nBlocks == 0) {
        std::copy(graph._lineCounts.begin(), graph._lineCounts.end(), first);
        return;
    }
    if (!solver.solve(graph._nBlocks, graph._arcs, solved)) {
        ++losses._unsolvedFunctions;
    }
    std::copy(solved.begin(), solved.end(), first);
}

void forgetCounters(GccGraph& graph)
{
    std::fill(graph._lineCounts.begin(), graph._lineCounts.end(), 0);
    for (GcnoArc& arc : graph._arcs) {
        arc._count = 0;
    }
}

// Solves many graphs in one step; there are up to a million of them, most of them small.
class SolveJob : public ParallelJob
{
public:
    static constexpr size_t GraphsOfStep = 256;

    SolveJob(const std::vector<GccGraph*>& graphs, bool isLastRun, std::vector<int64_t>& counts)
        : _graphs(graphs), _isLastRun(isLastRun), _counts(counts), _losses(steps())
    {}

    size_t steps() const { return (_graphs.size() + GraphsOfStep - 1) / GraphsOfStep; }

    void run(size_t item) override
    {
        const size_t end = std::min(_graphs.size(), (item + 1) * GraphsOfStep);
        FlowSolver solver;
        std::vector<int64_t> solved;
        for (size_t i = item * GraphsOfStep; i < end; ++i) {
            solveGraph(*_graphs[i], solver, solved, _counts, _losses[item]);
            if (_isLastRun) {
                std::vector<GcnoArc>().swap(_graphs[i]->_arcs);
            } else {
                forgetCounters(*_graphs[i]);
            }
        }
    }

    const std::vector<ImportLosses>& losses() const { return _losses; }

private:
    const std::vector<GccGraph*>& _graphs;
    const bool _isLastRun;
    std::vector<int64_t>& _counts;
    std::vector<ImportLosses> _losses;
};

// Gives functions whose notes say no more than where they begin an end: the last line that any
// function has of its own file that begins there. Instances of one template have different last
// lines, and must have one range all the same.
void endOpenFunctions(std::vector<FunctionCopy>& copies)
{
    std::unordered_map<uint64_t, uint32_t> ends; // by file and first line
    const auto placeOf = [](const FunctionCopy& copy) {
        return uint64_t{copy._file} << 32 | copy._startLine;
    };
    for (const FunctionCopy& copy : copies) {
        if (copy._endLine != 0) {
            continue;
        }
        uint32_t& end = ends.emplace(placeOf(copy), copy._startLine).first->second;
        for (const CopyLine& line : copy._lines) {
            end = line._file == copy._file ? std::max(end, line._line) : end;
        }
    }
    for (FunctionCopy& copy : copies) {
        if (copy._endLine == 0) {
            copy._endLine = ends[placeOf(copy)];
        }
    }
}

} // namespace

ContentKey GccGraph::key() const
{
    ContentKey key;
    key.add(_copy._symbol.data(), _copy._symbol.size());
    const uint32_t place[] = {
        _copy._file,    _copy._startLine, _copy._startColumn,
        _copy._endLine, _copy._endColumn, _copy._isBody ? 1u : _copy._isHidden ? 2u : 0u,
        _nBlocks};
    key.add(place, sizeof(place));
    for (const GcnoArc& arc : _arcs) {
        key.add(uint64_t{arc._from} << 32 | uint32_t{arc._to} << 5 | arc._flags);
    }
    key.add(_copy._lines.data(), _copy._lines.size() * sizeof(CopyLine));
    return key;
}

KnownFunction GraphStore::find(const ContentKey& bytes)
{
    Part& part = partOf(bytes);
    const std::lock_guard<std::mutex> lock(part._guard);
    const auto found = part._byBytes.find(bytes);
    return found == part._byBytes.end() ? KnownFunction() : found->second;
}

void GraphStore::leaveOut(const ContentKey& bytes, KnownFunction::Kind kind)
{
    Part& part = partOf(bytes);
    const std::lock_guard<std::mutex> lock(part._guard);
    part._byBytes[bytes]._kind = kind;
}

GccGraph* GraphStore::insert(const ContentKey& bytes, std::unique_ptr<GccGraph> graph)
{
    const ContentKey key = graph->key();
    GccGraph* kept = nullptr;
    {
        Part& part = partOf(key);
        const std::lock_guard<std::mutex> lock(part._guard);
        const auto found = part._graphs.find(key);
        if (found != part._graphs.end()) {
            kept = found->second.get();
        } else if (_numbered.empty()) {
            kept = graph.get();
            part._graphs.emplace(key, std::move(graph));
        } else {
            return nullptr;
        }
    }
    Part& part = partOf(bytes);
    const std::lock_guard<std::mutex> lock(part._guard);
    part._byBytes[bytes] = {kept->_kind, kept};
    return kept;
}

std::mutex& GraphStore::guardOf(const GccGraph& graph)
{
    return _parts[reinterpret_cast<uintptr_t>(&graph) / sizeof(GccGraph) % Parts]._guard;
}

void GraphStore::addCounters(GccGraph& graph, GcdaFile& counters, uint32_t ident)
{
    const std::lock_guard<std::mutex> lock(guardOf(graph));
    counters.addCounters(ident, graph._arcs);
}

void GraphStore::addLineCounts(GccGraph& graph, const std::vector<int64_t>& counts)
{
    const std::lock_guard<std::mutex> lock(guardOf(graph));
    graph._lineCounts.resize(counts.size());
    for (size_t i = 0; i < counts.size(); ++i) {
        if (__builtin_add_overflow(graph._lineCounts[i], counts[i], &graph._lineCounts[i])) {
            graph._lineCounts[i] = INT64_MAX;
        }
    }
}

bool GraphStore::number(ImportedBuild& build)
{
    uint64_t nCounts = 0;
    for (Part& part : _parts) {
        decltype(part._byBytes)().swap(part._byBytes);
        for (auto& graph : part._graphs) {
            graph.second->_copy._firstCount = static_cast<uint32_t>(nCounts);
            nCounts += countsOf(*graph.second);
            if (nCounts > ImportedBuild::MostCounts) {
                return false;
            }
            _numbered.push_back(graph.second.get());
        }
    }
    build._nCounts = static_cast<uint32_t>(nCounts);
    return true;
}

void GraphStore::solveAll(unsigned int nThreads, bool isLastRun, std::vector<int64_t>& counts,
                          ImportLosses& losses)
{
    size_t nCounts = 0;
    for (const GccGraph* graph : _numbered) {
        nCounts += countsOf(*graph);
    }
    counts.assign(nCounts, 0);
    SolveJob job(_numbered, isLastRun, counts);
    runParallel(job, job.steps(), nThreads);
    for (const ImportLosses& part : job.losses()) {
        losses.add(part);
    }
}

void GraphStore::moveCopies(ImportedBuild& build)
{
    build._copies.reserve(_numbered.size());
    for (GccGraph* graph : _numbered) {
        // What says where its counts are stays.
        build._copies.push_back(std::move(graph->_copy));
    }
    endOpenFunctions(build._copies);
}

bool GraphStore::solve(unsigned int nThreads, ImportedBuild& build, std::vector<int64_t>& counts,
                       ImportLosses& losses)
{
    if (!number(build)) {
        return false;
    }
    countLeftOut(losses);
    solveAll(nThreads, true, counts, losses);
    moveCopies(build);
    _numbered.clear();
    for (Part& part : _parts) {
        decltype(part._graphs)().swap(part._graphs);
    }
    return true;
}

bool GraphStore::giveCopies(ImportedBuild& build, ImportLosses& losses)
{
    if (!number(build)) {
        return false;
    }
    countLeftOut(losses);
    moveCopies(build);
    return true;
}

void GraphStore::solveRun(unsigned int nThreads, std::vector<int64_t>& counts, ImportLosses& losses)
{
    solveAll(nThreads, false, counts, losses);
}

// Counts what the functions had to leave out, whatever ran.
void GraphStore::countLeftOut(ImportLosses& losses) const
{
    for (const GccGraph* graph : _numbered) {
        if (graph->_nBlocks != 0 && graph->_kind == KnownFunction::Wanted) {
            countBlocksWithoutLine(*graph, losses);
        }
    }
}
