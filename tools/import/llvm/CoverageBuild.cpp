// SPDX-License-Identifier: MIT
#include "tools/import/llvm/CoverageBuild.h"

#include "tools/common/SourcePath.h"
#include "tools/common/parallel.h"
#include "tools/import/llvm/symbolOf.h"

#include <algorithm>
#include <set>
#include <unordered_set>

namespace {

constexpr size_t Slice = 2048; // functions

// Damaged regions could reach over billions of lines. No compiler writes more lines than this, for
// each byte of all mappings, beside the first ones.
constexpr uint64_t LinesForEachByte = 64;
constexpr uint64_t FirstLines = 1u << 20;

bool hasText(const CoverageRegion& region)
{
    return region._kind == CoverageRegion::Code || region._kind == CoverageRegion::Expansion;
}

// A gap before the first case of a switch never runs by its nature.
bool isCountedGap(const CoverageRegion& region)
{
    return region._kind == CoverageRegion::Gap &&
           CoverageFunction::tagOf(region._counter) != CoverageFunction::Zero;
}

bool hidesText(const CoverageRegion& region)
{
    return region._kind == CoverageRegion::Gap || region._kind == CoverageRegion::Skipped;
}

// Which files of a function are text of the function itself: the first, and those that are included
// in such. Only text that is included begins with its file; a macro's has its definition before it.
void findOwnFiles(const CoverageFunction& function, std::vector<bool>& isOwn)
{
    isOwn.assign(function._files.size(), false);
    isOwn[0] = true;
    if (isOwn.size() == 1) {
        return;
    }
    std::vector<const CoverageRegion*> first(function._files.size(), nullptr);
    std::vector<std::vector<uint32_t>> uses(function._files.size());
    for (const CoverageRegion& region : function._regions) {
        first[region._file] = first[region._file] == nullptr ? &region : first[region._file];
        if (region._kind == CoverageRegion::Expansion) {
            uses[region._file].push_back(region._expanded);
        }
    }
    std::vector<uint32_t> waiting{0};
    while (!waiting.empty()) {
        const uint32_t file = waiting.back();
        waiting.pop_back();
        for (const uint32_t used : uses[file]) {
            const bool isIncluded = first[used] != nullptr && first[used]->_startLine == 1 &&
                                    first[used]->_startColumn == 1;
            if (isIncluded && !isOwn[used]) {
                isOwn[used] = true;
                waiting.push_back(used);
            }
        }
    }
}

// What the regions of one file of a function span.
struct Extent
{
    TextPosition _start = UINT64_MAX;
    TextPosition _end = 0;
    TextPosition _bodyStart = 0; // of the longest with text
    TextPosition _bodyEnd = 0;
    uint64_t _nRegions = 0;

    void add(const CoverageRegion& region);
    // At most.
    uint64_t lines() const
    {
        return _nRegions == 0 ? 0 : lineOf(_end) - lineOf(_start) + _nRegions;
    }
};

void Extent::add(const CoverageRegion& region)
{
    const TextPosition start = textPosition(region._startLine, region._startColumn);
    const TextPosition end = textPosition(region._endLine, region._endColumn);
    _start = std::min(_start, start);
    _end = std::max(_end, end);
    const bool isLonger =
        region._endLine - region._startLine > lineOf(_bodyEnd) - lineOf(_bodyStart);
    if (hasText(region) && (isLonger || _bodyEnd == 0)) {
        _bodyStart = start;
        _bodyEnd = end;
    }
    ++_nRegions;
}

// Puts lines, which come file by file, into the order of blocks, each once.
void sortLines(const std::vector<CopyLine>& lines, size_t nBlocks, std::vector<size_t>& ends,
               std::vector<CopyLine>& result)
{
    ends.assign(nBlocks + 1, 0);
    for (const CopyLine& line : lines) {
        ++ends[line._block + 1];
    }
    for (size_t block = 0; block < nBlocks; ++block) {
        ends[block + 1] += ends[block];
    }
    result.resize(lines.size());
    for (const CopyLine& line : lines) {
        result[ends[line._block]++] = line;
    }
    // Files do not come in the order of their numbers.
    if (!std::is_sorted(result.begin(), result.end())) {
        std::sort(result.begin(), result.end());
    }
    result.erase(std::unique(result.begin(), result.end()), result.end());
}

// Gives a copy its lines, with no more memory than they take.
void setLines(const std::vector<CopyLine>& lines, FunctionCopy& copy)
{
    const bool isOwn = std::all_of(lines.begin(), lines.end(), [&copy](const CopyLine& line) {
        return line._file == copy._file;
    });
    if (!isOwn) {
        copy._lines.assign(lines.begin(), lines.end());
        return;
    }
    copy._ownLines.reserve(lines.size());
    for (const CopyLine& line : lines) {
        copy._ownLines.push_back({line._block, line._line});
    }
}

std::string absoluteName(const std::string& name)
{
    return absolutePath(std::string(), name);
}

} // namespace

class ShapeJob : public ParallelJob
{
public:
    ShapeJob(CoverageBuild& owner, ImportedBuild& build) : _owner(owner), _build(build) {}
    void run(size_t item) override
    {
        CoverageBuild::Scratch scratch;
        const size_t end = std::min((item + 1) * Slice, _owner._entries.size());
        for (size_t i = item * Slice; i < end; ++i) {
            _owner.shape(_owner._entries[i], _build, scratch);
        }
    }

private:
    CoverageBuild& _owner;
    ImportedBuild& _build;
};

class CopyJob : public ParallelJob
{
public:
    CopyJob(const CoverageBuild& owner, ImportedBuild& build,
            std::vector<CoverageBuild::Made>& made)
        : _owner(owner), _build(build), _made(made)
    {}
    void run(size_t item) override
    {
        CoverageBuild::Scratch scratch;
        const size_t end = std::min((item + 1) * Slice, _owner._entries.size());
        for (size_t i = item * Slice; i < end; ++i) {
            if (!_owner._entries[i]._isLeftOut) {
                _owner.make(_owner._entries[i], _build, scratch, _made[item]);
            }
        }
    }

private:
    const CoverageBuild& _owner;
    ImportedBuild& _build;
    std::vector<CoverageBuild::Made>& _made;
};

void CoverageBuild::add(std::unique_ptr<CoverageImage> image)
{
    _views.push_back(image.get());
    _images.push_back(std::move(image));
}

void CoverageBuild::collect()
{
    size_t nRecords = 0;
    for (const CoverageImage* image : _views) {
        nRecords += image->records().size();
    }
    _entries.reserve(nRecords);
    for (const CoverageImage* image : _views) {
        for (const CoverageRecord& record : image->records()) {
            Entry entry;
            entry._image = image;
            entry._record = &record;
            _entries.push_back(entry);
        }
    }
}

// Finds the place of a function and how many lines it may have.
void CoverageBuild::shape(Entry& entry, ImportedBuild& build, Scratch& scratch) const
{
    const CoverageRecord& record = *entry._record;
    const std::vector<std::string>* files = entry._image->files(record._list);
    CoverageFunction& function = scratch._function;
    entry._name = entry._image->name(record._name);
    if (files == nullptr || entry._name.empty() ||
        !function.read(record._mapping, record._size, files->size())) {
        entry._isDamaged = true;
        return;
    }
    const std::string& file = (*files)[function._files[0]];
    if (scratch._file != &file) {
        // The functions of a unit stand together.
        scratch._source = build._sources.find(absoluteName(file));
        scratch._file = &file;
    }
    entry._source = scratch._source;
    findOwnFiles(function, scratch._isOwn);
    Extent extent;
    uint32_t place = 0;
    for (const CoverageRegion& region : function._regions) {
        if (!scratch._isOwn[region._file]) {
            continue;
        }
        if (region._file != place) {
            entry._lines += extent.lines();
            extent = Extent();
            place = region._file;
        }
        extent.add(region);
        if (place == 0) {
            entry._range = Range(extent._start, extent._end);
            entry._body = Range(extent._bodyStart, extent._bodyEnd);
        }
    }
    entry._lines += extent.lines();
    entry._isDamaged = function._regions.front()._file != 0;
}

// Leaves out the functions of files that are not wanted, and those that are damaged.
void CoverageBuild::leaveOut(ImportLosses& losses)
{
    for (Entry& entry : _entries) {
        entry._isLeftOut = entry._isDamaged;
        losses._damagedFunctions += entry._isDamaged ? 1 : 0;
    }
    leaveOutDummies();
    leaveOutCopies(losses);
    for (Entry& entry : _entries) {
        if (entry._isLeftOut || entry._source._answer == SourceFilter::Kept) {
            continue;
        }
        (entry._source._answer == SourceFilter::System ? losses._systemFunctions
                                                       : losses._excludedFunctions) += 1;
        // A profile that has its counters belongs to the build all the same.
        CountPlan::Function nothing;
        nothing._name = entry._record->_name;
        nothing._hash = entry._record->_hash;
        (void)_plan.add(nothing);
        entry._isLeftOut = true;
    }
}

// A function that one unit only saw and another made is the one that was made. So is a static one
// of a header, which has another name in each unit.
void CoverageBuild::leaveOutDummies()
{
    const bool isAny = std::any_of(_entries.begin(), _entries.end(),
                                   [](const Entry& entry) { return entry._record->_isDummy; });
    if (!isAny) {
        return;
    }
    std::unordered_set<uint64_t, MixedHash> names;
    std::set<std::pair<uint32_t, TextPosition>> places;
    for (const Entry& entry : _entries) {
        if (!entry._isLeftOut && !entry._record->_isDummy) {
            names.insert(entry._record->_name);
            places.emplace(entry._source._number, entry._range.first);
        }
    }
    for (Entry& entry : _entries) {
        if (entry._isLeftOut || !entry._record->_isDummy) {
            continue;
        }
        // The first of several stays.
        entry._isLeftOut = names.count(entry._record->_name) != 0 ||
                           !places.emplace(entry._source._number, entry._range.first).second;
    }
}

// Of a function that several files hold the first stays.
void CoverageBuild::leaveOutCopies(ImportLosses& losses)
{
    if (_views.size() == 1) {
        return; // which has one record of each name
    }
    // Which entry has the name and the hash.
    std::unordered_map<std::pair<uint64_t, uint64_t>, size_t, MixedHash> first;
    std::set<std::pair<size_t, uint32_t>> files; // of the others
    for (size_t i = 0; i < _entries.size(); ++i) {
        Entry& entry = _entries[i];
        if (entry._isLeftOut || entry._record->_isDummy) {
            continue;
        }
        const auto found =
            first.emplace(std::make_pair(entry._record->_name, entry._record->_hash), i);
        if (found.second) {
            continue;
        }
        const Entry& before = _entries[found.first->second];
        if (before._source._number == entry._source._number ||
            !files.emplace(found.first->second, entry._source._number).second) {
            entry._isLeftOut = true;
        } else {
            // Functions of one name in two files: a profile has one row of counters for both.
            ++losses._sharedCounters;
        }
    }
}

void CoverageBuild::boundLines(ImportLosses& losses)
{
    uint64_t allowed = FirstLines;
    for (const Entry& entry : _entries) {
        allowed += LinesForEachByte * entry._record->_size;
    }
    for (Entry& entry : _entries) {
        if (entry._isLeftOut) {
            continue;
        }
        // What lies in a function is looked at for each instance of it.
        const uint64_t needed = entry._lines + _nested[entry._around].size();
        if (needed > allowed) {
            entry._isLeftOut = true;
            ++losses._damagedFunctions;
        } else {
            allowed -= needed;
        }
    }
}

// Finds what lies in each function, directly, by the ranges of their bodies. Instances of a
// template have one range.
void CoverageBuild::findNested()
{
    struct Body
    {
        uint32_t _file;
        Range _range;
        size_t _entry;
    };
    std::vector<Body> bodies;
    for (size_t i = 0; i < _entries.size(); ++i) {
        if (!_entries[i]._isLeftOut) {
            bodies.push_back({_entries[i]._source._number, _entries[i]._body, i});
        }
    }
    // Outer ones first.
    std::sort(bodies.begin(), bodies.end(), [](const Body& a, const Body& b) {
        return std::tie(a._file, a._range.first, b._range.second, a._entry) <
               std::tie(b._file, b._range.first, a._range.second, b._entry);
    });
    std::vector<const Body*> open;
    const Body* before = nullptr;
    for (const Body& body : bodies) {
        const bool isSame =
            before != nullptr && before->_file == body._file && before->_range == body._range;
        before = &body;
        if (isSame) {
            _entries[body._entry]._around = _entries[(&body - 1)->_entry]._around;
            continue;
        }
        while (!open.empty() && (open.back()->_file != body._file ||
                                 open.back()->_range.second < body._range.second)) {
            open.pop_back();
        }
        _entries[body._entry]._around = static_cast<uint32_t>(_nested.size());
        _nested.emplace_back();
        if (!open.empty()) {
            _nested[_entries[open.back()->_entry]._around].push_back(body._range);
        }
        open.push_back(&body);
    }
}

// The blocks are the different counters, in the order of their numbers.
void CoverageBuild::make(const Entry& entry, ImportedBuild& build, Scratch& scratch,
                         Made& made) const
{
    const CoverageRecord& record = *entry._record;
    CoverageFunction& function = scratch._function;
    (void)function.read(record._mapping, record._size, entry._image->files(record._list)->size());
    findOwnFiles(function, scratch._isOwn);
    BlockNumbers& blocks = scratch._blocks;
    blocks.clear();
    for (const CoverageRegion& region : function._regions) {
        if ((hasText(region) || isCountedGap(region)) && scratch._isOwn[region._file]) {
            blocks.add(region._counter);
        }
    }
    blocks.number();
    CountPlan::Function& plan = scratch._plan;
    if (!CountPlan::make(function, blocks.counters(), plan)) {
        ++made._losses._damagedFunctions;
        return;
    }
    made._parts.push_back(
        {record._name, record._hash, plan._nCounters, plan._steps.size(), plan._blocks.size()});
    made._steps.insert(made._steps.end(), plan._steps.begin(), plan._steps.end());
    made._blocks.insert(made._blocks.end(), plan._blocks.begin(), plan._blocks.end());
    made._copies.emplace_back();
    FunctionCopy& copy = made._copies.back();
    copy._symbol = symbolOf(entry._name);
    copy._file = entry._source._number;
    copy._startLine = lineOf(entry._range.first);
    copy._startColumn = columnOf(entry._range.first);
    copy._endLine = lineOf(entry._range.second);
    copy._endColumn = columnOf(entry._range.second);
    findLines(entry, build, scratch, made);
    sortLines(scratch._lines, blocks.counters().size(), scratch._ends, scratch._sorted);
    setLines(scratch._sorted, copy);
}

// Adds the lines of all files of the function itself.
void CoverageBuild::findLines(const Entry& entry, ImportedBuild& build, Scratch& scratch,
                              Made& made) const
{
    const CoverageFunction& function = scratch._function;
    scratch._lines.clear();
    size_t next = 0;
    for (uint32_t file = 0; file < function._files.size(); ++file) {
        scratch._regions.clear();
        for (; next < function._regions.size() && function._regions[next]._file == file; ++next) {
            const CoverageRegion& region = function._regions[next];
            if (!scratch._isOwn[file]) {
                made._losses._regionsOfMacros += hasText(region) ? 1 : 0;
            } else if (hasText(region) || hidesText(region)) {
                const bool isCounted = hasText(region) || isCountedGap(region);
                scratch._regions.add(
                    {region._startLine, region._startColumn, region._endLine, region._endColumn,
                     isCounted ? scratch._blocks.of(region._counter) : RegionLines::NoBlock,
                     region._kind, region._kind == CoverageRegion::Gap});
            }
        }
        if (!scratch._isOwn[file]) {
            continue;
        }
        SourceNumber source = entry._source;
        if (file == 0) {
            for (const Range& range : _nested[entry._around]) {
                scratch._regions.add({lineOf(range.first), columnOf(range.first),
                                      lineOf(range.second), columnOf(range.second),
                                      RegionLines::NoBlock, UINT32_MAX});
            }
        } else {
            const auto& files = *entry._image->files(entry._record->_list);
            source = build._sources.find(absoluteName(files[function._files[file]]));
        }
        const size_t before = scratch._lines.size();
        scratch._regions.append(source._number, scratch._lines);
        if (source._answer != SourceFilter::Kept) {
            made._losses._linesOfOtherFiles += scratch._lines.size() - before;
            scratch._lines.resize(before);
        }
    }
}

void CoverageBuild::keep(Made& made, ImportedBuild& build, ImportLosses& losses)
{
    losses.add(made._losses);
    const CountPlan::Step* steps = made._steps.data();
    const uint32_t* blocks = made._blocks.data();
    for (size_t i = 0; i < made._parts.size(); ++i) {
        const Part& part = made._parts[i];
        if (_plan.counts() + part._nBlocks > ImportedBuild::MostCounts) {
            ++losses._damagedFunctions;
            continue;
        }
        made._copies[i]._firstCount = _plan.add(part._name, part._hash, part._nCounters, steps,
                                                part._nSteps, blocks, part._nBlocks);
        steps += part._nSteps;
        blocks += part._nBlocks;
        build._copies.push_back(std::move(made._copies[i]));
    }
    made = Made();
}

void CoverageBuild::read(ImportedBuild& build, ImportLosses& losses, unsigned int nThreads)
{
    collect();
    _plan.reserve(_entries.size());
    const size_t nSlices = (_entries.size() + Slice - 1) / Slice;
    ShapeJob shapes(*this, build);
    runParallel(shapes, nSlices, nThreads);
    leaveOut(losses);
    findNested();
    boundLines(losses);
    std::vector<Made> made(nSlices);
    CopyJob copies(*this, build, made);
    runParallel(copies, nSlices, nThreads);
    std::vector<Entry>().swap(_entries);
    std::vector<std::vector<Range>>().swap(_nested);
    for (const std::unique_ptr<CoverageImage>& image : _images) {
        image->forget();
    }
    size_t nCopies = 0;
    for (const Made& slice : made) {
        nCopies += slice._copies.size();
    }
    build._copies.reserve(nCopies);
    for (Made& slice : made) {
        keep(slice, build, losses);
    }
    build._nCounts = static_cast<uint32_t>(_plan.counts());
}
