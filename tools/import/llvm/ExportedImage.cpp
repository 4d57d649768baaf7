// SPDX-License-Identifier: MIT
#include "tools/import/llvm/ExportedImage.h"

#include "tools/import/llvm/md5Low.h"

namespace {

constexpr uint32_t GapBit = 0x80000000u;

void putLeb(std::string& bytes, uint64_t number)
{
    while (number >= 0x80) {
        bytes += static_cast<char>((number & 0x7f) | 0x80);
        number >>= 7;
    }
    bytes += static_cast<char>(number);
}

void putWord(std::string& bytes, uint64_t word)
{
    for (int shift = 0; shift < 64; shift += 8) {
        bytes += static_cast<char>(word >> shift);
    }
}

bool hasCounter(const CoverageRegion& region)
{
    return region._kind == CoverageRegion::Code || region._kind == CoverageRegion::Gap;
}

// Writes one region. `line` is the start of the one before it in its file.
bool putRegion(std::string& bytes, const CoverageRegion& region, uint32_t counter, uint32_t& line)
{
    if (hasCounter(region)) {
        putLeb(bytes, uint64_t(counter) << 2 | 1);
    } else if (region._kind == CoverageRegion::Expansion) {
        putLeb(bytes, uint64_t(region._expanded) << 3 | 4);
    } else {
        putLeb(bytes, 2 << 3); // skipped
    }
    if (region._startLine < line || region._endLine < region._startLine) {
        return false;
    }
    putLeb(bytes, region._startLine - line);
    putLeb(bytes, region._startColumn);
    putLeb(bytes, region._endLine - region._startLine);
    putLeb(bytes,
           region._kind == CoverageRegion::Gap ? region._endColumn | GapBit : region._endColumn);
    line = region._startLine;
    return true;
}

// Returns false when the regions are not in the order of files and lines.
bool makeMapping(const ExportedFunction& function, std::string& mapping)
{
    const size_t nFiles = function._files.size();
    putLeb(mapping, nFiles);
    for (size_t file = 0; file < nFiles; ++file) {
        putLeb(mapping, file);
    }
    putLeb(mapping, 0); // expressions
    uint32_t counter = 0;
    size_t next = 0;
    for (size_t file = 0; file < nFiles; ++file) {
        const size_t first = next;
        while (next < function._regions.size() && function._regions[next]._file == file) {
            ++next;
        }
        putLeb(mapping, next - first);
        uint32_t line = 0;
        for (size_t i = first; i < next; ++i) {
            const CoverageRegion& region = function._regions[i];
            if (!putRegion(mapping, region, counter, line)) {
                return false;
            }
            counter += hasCounter(region) ? 1 : 0;
        }
    }
    return next == function._regions.size();
}

} // namespace

bool ExportedImage::function(ExportedFunction& function)
{
    std::string mapping;
    if (!makeMapping(function, mapping)) {
        return false;
    }
    std::string places = mapping;
    for (const std::string& file : function._files) {
        places += file;
        places += '\0';
    }
    const uint64_t hash = md5Low(places.data(), places.size());
    ProfileRecord record;
    record._name = md5Low(function._name.data(), function._name.size());
    record._hash = hash;
    record._start = _counters.size();
    for (size_t i = 0; i < function._regions.size(); ++i) {
        if (hasCounter(function._regions[i])) {
            putWord(_counters, function._counts[i]);
            ++record._nCounters;
        }
    }
    if (record._nCounters != 0) {
        _part._records.push_back(record);
    }
    if (_image != nullptr) {
        _image->addFunction(function._name, hash, function._files, mapping);
    }
    return true;
}

const ProfilePart& ExportedImage::part()
{
    _part._counters = _counters.data();
    _part._countersSize = _counters.size();
    return _part;
}
