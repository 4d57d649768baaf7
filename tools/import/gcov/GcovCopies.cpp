// SPDX-License-Identifier: MIT
#include "tools/import/gcov/GcovCopies.h"

#include "tools/import/LineOwners.h"

#include <algorithm>
#include <functional>
#include <tuple>
#include <utility>

namespace {

void mix(size_t& hash, size_t value)
{
    constexpr uint64_t Factor = 0x9e3779b97f4a7c15;
    hash = static_cast<size_t>((hash ^ value) * Factor);
    hash ^= hash >> 32;
}

void addCount(int64_t& sum, int64_t count)
{
    if (__builtin_add_overflow(sum, count, &sum)) {
        sum = count > 0 ? INT64_MAX : INT64_MIN;
    }
}

} // namespace

size_t GcovCopies::CopyHash::operator()(const FunctionCopy& copy) const
{
    size_t hash = std::hash<std::string>()(copy._symbol);
    mix(hash, copy._file);
    mix(hash, copy._startLine);
    for (const CopyLine& line : copy._lines) {
        mix(hash, line._line);
    }
    return hash;
}

bool GcovCopies::CopyEqual::operator()(const FunctionCopy& a, const FunctionCopy& b) const
{
    const auto place = [](const FunctionCopy& copy) {
        return std::tie(copy._file, copy._startLine, copy._startColumn, copy._endLine,
                        copy._endColumn, copy._symbol, copy._lines);
    };
    return place(a) == place(b);
}

bool GcovCopies::add(size_t run, FunctionCopy& copy, const std::vector<GcovLine>& lines)
{
    copy._lines.reserve(lines.size());
    for (const GcovLine& line : lines) {
        const auto block = static_cast<uint32_t>(copy._lines.size());
        copy._lines.push_back({block, copy._file, line._line});
    }
    auto& copies = copy._symbol.empty() ? _strays : _copies;
    const std::lock_guard<std::mutex> lock(_guard);
    copy._firstCount = _nCounts;
    const auto found = copies.insert(std::move(copy));
    const uint32_t first = found.first->_firstCount;
    if (found.second) {
        if (lines.size() > ImportedBuild::MostCounts - _nCounts) {
            return false;
        }
        _nCounts += static_cast<uint32_t>(lines.size());
    }
    std::vector<int64_t>& counts = _counts[run];
    if (counts.size() < _nCounts) {
        counts.resize(_nCounts);
    }
    for (size_t i = 0; i < lines.size(); ++i) {
        addCount(counts[first + i], lines[i]._count);
    }
    return true;
}

bool GcovCopies::add(size_t run, uint32_t file, const GcovFunction& function)
{
    FunctionCopy copy;
    copy._symbol = function._symbol;
    copy._file = file;
    copy._startLine = function._startLine;
    copy._startColumn = function._startColumn;
    copy._endLine = function._endLine;
    copy._endColumn = function._endColumn;
    return add(run, copy, function._lines);
}

bool GcovCopies::addStrays(size_t run, uint32_t file, const std::vector<GcovLine>& lines)
{
    FunctionCopy copy;
    copy._file = file;
    return lines.empty() || add(run, copy, lines);
}

// Cuts each set of lines without functions in two: those that functions of the file have around
// them, and the others.
void GcovCopies::placeStrays(ImportedBuild& build, ImportLosses& losses) const
{
    const std::vector<std::string>& paths = build._sources.paths();
    std::vector<LineOwners> owners(paths.size());
    for (const FunctionCopy& copy : build._copies) {
        owners[copy._file].add(copy._startLine, copy._endLine, 0);
    }
    for (LineOwners& file : owners) {
        file.build();
    }
    std::vector<FunctionCopy> rests;
    std::vector<std::pair<uint32_t, uint32_t>> ranges(paths.size(), {UINT32_MAX, 0});
    for (const FunctionCopy& stray : _strays) {
        FunctionCopy held = stray;
        FunctionCopy rest = stray;
        held._isHidden = true;
        const auto isOwned = [&owners](const CopyLine& line) {
            return owners[line._file].ownerOf(line._line) != LineOwners::Nobody;
        };
        const auto isFree = [&isOwned](const CopyLine& line) {
            return !isOwned(line);
        };
        held._lines.erase(std::remove_if(held._lines.begin(), held._lines.end(), isFree),
                          held._lines.end());
        rest._lines.erase(std::remove_if(rest._lines.begin(), rest._lines.end(), isOwned),
                          rest._lines.end());
        if (!held._lines.empty()) {
            build._copies.push_back(std::move(held));
        }
        if (!rest._lines.empty()) {
            std::pair<uint32_t, uint32_t>& range = ranges[rest._file];
            range.first = std::min(range.first, rest._lines.front()._line);
            range.second = std::max(range.second, rest._lines.back()._line);
            losses._linesOutsideFunctions += rest._lines.size();
            rests.push_back(std::move(rest));
        }
    }
    for (FunctionCopy& rest : rests) {
        const std::string& path = paths[rest._file];
        rest._symbol = path.substr(path.rfind('/') + 1);
        std::tie(rest._startLine, rest._endLine) = ranges[rest._file];
        build._copies.push_back(std::move(rest));
    }
}

void GcovCopies::fillBuild(ImportedBuild& build, ImportLosses& losses)
{
    build._copies.reserve(_copies.size() + _strays.size());
    while (!_copies.empty()) {
        build._copies.push_back(std::move(_copies.extract(_copies.begin()).value()));
    }
    placeStrays(build, losses);
    _strays.clear();
    build._nCounts = _nCounts;
}

void GcovCopies::takeCounts(size_t run, std::vector<int64_t>& counts)
{
    counts.swap(_counts[run]);
    counts.resize(_nCounts);
}
