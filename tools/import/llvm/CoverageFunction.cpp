// SPDX-License-Identifier: MIT
#include "tools/import/llvm/CoverageFunction.h"

#include <algorithm>

namespace {

constexpr uint32_t ExpansionBit = 4;
constexpr uint32_t KindShift = 3;
constexpr uint32_t GapBit = 0x80000000u;
constexpr uint32_t LastColumn = UINT32_MAX;

// Whether a counter is none of an expression, or of one that is there.
bool isKnown(uint32_t counter, size_t nExpressions)
{
    return (counter & CoverageFunction::Difference) == 0 ||
           CoverageFunction::numberOf(counter) < nExpressions;
}

uint32_t readCounter(LlvmBytes& bytes, size_t nExpressions)
{
    const uint32_t counter = bytes.lebBelow(LlvmBytes::NumberBound);
    if (!isKnown(counter, nExpressions)) {
        bytes.fail();
    }
    return counter;
}

// Reads what stands before the place.
bool readHead(LlvmBytes& bytes, size_t nFiles, size_t nExpressions, CoverageRegion& region)
{
    const uint32_t head = bytes.lebBelow(LlvmBytes::NumberBound);
    if (!isKnown(head, nExpressions)) {
        return false;
    }
    if (CoverageFunction::tagOf(head) != CoverageFunction::Zero) {
        region._counter = head;
        return !bytes.failed();
    }
    const uint32_t number = head >> KindShift;
    if ((head & ExpansionBit) != 0) {
        region._kind = CoverageRegion::Expansion;
        region._expanded = number;
        return !bytes.failed() && number < nFiles;
    }
    region._kind = static_cast<CoverageRegion::Kind>(number);
    switch (number) {
    case CoverageRegion::Code:
    case CoverageRegion::Skipped:
        return !bytes.failed();
    case CoverageRegion::Branch:
    case CoverageRegion::Condition: {
        region._counter = bytes.lebBelow(LlvmBytes::NumberBound);
        const uint32_t other = bytes.lebBelow(LlvmBytes::NumberBound);
        for (int i = 0; number == CoverageRegion::Condition && i < 3; ++i) {
            (void)bytes.lebBelow(LlvmBytes::NumberBound);
        }
        return !bytes.failed() && isKnown(region._counter, nExpressions) &&
               isKnown(other, nExpressions);
    }
    case CoverageRegion::Decision:
        (void)bytes.lebBelow(LlvmBytes::NumberBound);
        (void)bytes.lebBelow(LlvmBytes::NumberBound);
        return !bytes.failed();
    default:
        return false;
    }
}

// `line` is the start of the region before, and of this one afterwards.
bool readPlace(LlvmBytes& bytes, uint32_t& line, CoverageRegion& region)
{
    const uint64_t start = uint64_t(line) + bytes.lebBelow(LlvmBytes::NumberBound);
    region._startColumn = bytes.lebBelow(LlvmBytes::NumberBound);
    const uint64_t end = start + bytes.lebBelow(LlvmBytes::NumberBound);
    region._endColumn = bytes.lebBelow(uint64_t(UINT32_MAX) + 1);
    if (bytes.failed() || end >= LlvmBytes::NumberBound) {
        return false;
    }
    if ((region._endColumn & GapBit) != 0) {
        region._endColumn &= ~GapBit;
        region._kind = CoverageRegion::Gap;
    }
    if (region._startColumn == 0 && region._endColumn == 0) {
        region._startColumn = 1;
        region._endColumn = LastColumn;
    }
    line = static_cast<uint32_t>(start);
    region._startLine = line;
    region._endLine = static_cast<uint32_t>(end);
    return region._startLine != region._endLine || region._startColumn <= region._endColumn;
}

} // namespace

// The loop has the bytes for itself while it reads, so that its place in them is no member of
// something that others see: most of the time of an import goes by here.
bool CoverageFunction::readRegions(LlvmBytes& bytes, uint32_t file)
{
    const size_t count = bytes.lebCount();
    LlvmBytes own = bytes;
    const size_t nFiles = _files.size();
    const size_t nExpressions = _expressions.size();
    uint32_t line = 0;
    for (size_t i = 0; i < count; ++i) {
        CoverageRegion region;
        region._file = file;
        if (!readHead(own, nFiles, nExpressions, region) || !readPlace(own, line, region)) {
            return false;
        }
        _regions.push_back(region);
    }
    bytes = own;
    return !bytes.failed();
}

// A macro ran as often as the first region of its text, which may be the use of another macro, and
// so on. One that is its own text at last never ran. Each file is looked at once.
void CoverageFunction::resolveExpansions()
{
    const bool isAny = std::any_of(_regions.begin(), _regions.end(), [](const auto& region) {
        return region._kind == CoverageRegion::Expansion;
    });
    if (!isAny) {
        return;
    }
    enum State : unsigned char { New, Open, Done };
    std::vector<State> states(_files.size(), New);
    std::vector<uint32_t> counters(_files.size(), 0);
    std::vector<uint32_t> chain;
    for (CoverageRegion& region : _regions) {
        if (region._kind != CoverageRegion::Expansion) {
            continue;
        }
        chain.clear();
        uint32_t file = region._expanded;
        uint32_t counter = 0;
        while (states[file] == New) {
            states[file] = Open;
            chain.push_back(file);
            if (_firstOfFile[file] == SIZE_MAX) {
                break;
            }
            const CoverageRegion& first = _regions[_firstOfFile[file]];
            if (first._kind != CoverageRegion::Expansion) {
                counter = first._kind == CoverageRegion::Skipped ? 0 : first._counter;
                break;
            }
            file = first._expanded;
        }
        counter = states[file] == Done ? counters[file] : counter;
        for (const uint32_t link : chain) {
            states[link] = Done;
            counters[link] = counter;
        }
        region._counter = counters[region._expanded];
    }
}

bool CoverageFunction::read(const char* mapping, size_t size, size_t nFiles)
{
    _files.clear();
    _expressions.clear();
    _regions.clear();
    LlvmBytes bytes(mapping, size);
    const size_t files = bytes.lebCount();
    for (size_t i = 0; i < files; ++i) {
        _files.push_back(bytes.lebBelow(nFiles));
    }
    _expressions.resize(bytes.lebCount());
    for (CoverageExpression& expression : _expressions) {
        expression._left = readCounter(bytes, _expressions.size());
        expression._right = readCounter(bytes, _expressions.size());
    }
    if (bytes.failed() || _files.empty()) {
        return false;
    }
    _firstOfFile.assign(_files.size(), SIZE_MAX);
    for (uint32_t file = 0; file < _files.size(); ++file) {
        const size_t first = _regions.size();
        if (!readRegions(bytes, file)) {
            return false;
        }
        _firstOfFile[file] = first < _regions.size() ? first : SIZE_MAX;
    }
    resolveExpansions();
    return !_regions.empty();
}

bool CoverageFunction::isDummy() const
{
    return _files.size() == 1 && _expressions.empty() && _regions.size() == 1 &&
           tagOf(_regions.front()._counter) == Zero;
}
