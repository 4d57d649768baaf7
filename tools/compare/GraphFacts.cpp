// SPDX-License-Identifier: MIT
#include "tools/compare/GraphFacts.h"

#include "tools/common/SourcePath.h"
#include "tools/import/gcc/FlowSolver.h"
#include "tools/import/gcc/GcdaFile.h"

namespace {

const unsigned char* bytesOf(const std::string& text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

// The lines of one unit, so that a unit that turns out to be damaged adds nothing.
class UnitLines
{
public:
    UnitLines(const std::string& folder, const SourceFilter& filter)
        : _folder(folder), _filter(filter)
    {}

    void add(const GcnoFunction& function, const std::vector<int64_t>& counts)
    {
        for (const GcnoLine& line : function._lines) {
            FileFacts* file = this->file(std::string(function._files[line._file]));
            if (file == nullptr) {
                continue;
            }
            LineFacts& facts = file->_lines[line._line];
            (function._isArtificial ? facts._isTouchedMade : facts._isTouched) = true;
            (function._isArtificial ? facts._madeRan : facts._blockRan) |= counts[line._block] > 0;
        }
    }

    const BuildFacts& facts() const { return _facts; }

private:
    // Null when the filter leaves the file out.
    FileFacts* file(const std::string& name)
    {
        const auto found = _known.emplace(name, nullptr);
        if (found.second) {
            const std::string path = absolutePath(_folder, name);
            if (_filter.ask(path) == SourceFilter::Kept) {
                found.first->second = &_facts._files[path];
            }
        }
        return found.first->second;
    }

    const std::string _folder;
    const SourceFilter& _filter;
    BuildFacts _facts;
    std::unordered_map<std::string, FileFacts*> _known; // by the name in the notes
};

} // namespace

bool addGraphFacts(const std::string& notes, const std::string& counters,
                   const SourceFilter& filter, BuildFacts& facts)
{
    GcnoFile graphs(bytesOf(notes), notes.size());
    if (graphs.open() != GcnoFile::Ok) {
        return false;
    }
    GcdaFile runs(bytesOf(counters), counters.size());
    if (!counters.empty() && runs.open(graphs.stamp()) != GcdaFile::Ok) {
        return false;
    }
    UnitLines lines(graphs.folder(), filter);
    GcnoFunction function;
    std::vector<int64_t> counts;
    while (graphs.nextFunction(function)) {
        if (!graphs.readGraph(function) || (!counters.empty() && !runs.fillCounters(function))) {
            return false;
        }
        // Where a function that returns twice leaves blocks open these are 0, as gcov has them.
        (void)solveFlow(function._nBlocks, function._arcs, counts);
        lines.add(function, counts);
    }
    if (graphs.damaged()) {
        return false;
    }
    facts.add(lines.facts());
    return true;
}
