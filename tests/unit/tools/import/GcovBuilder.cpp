// SPDX-License-Identifier: MIT
#include "tests/unit/tools/import/GcovBuilder.h"

namespace {

constexpr int FirstMajorWithBytes = 12;

} // namespace

GcovBuilder::GcovBuilder(int major, bool isBigEndian) : _major(major), _isBigEndian(isBigEndian) {}

void GcovBuilder::put(size_t at, uint32_t value)
{
    for (size_t i = 0; i < 4; ++i) {
        const size_t shift = _isBigEndian ? 24 - 8 * i : 8 * i;
        _bytes[at + i] = static_cast<char>(value >> shift);
    }
}

void GcovBuilder::word(uint32_t value)
{
    _bytes.append(4, '\0');
    put(_bytes.size() - 4, value);
}

void GcovBuilder::text(const std::string& text)
{
    std::string padded = text + '\0';
    if (_major < FirstMajorWithBytes) {
        padded.append((4 - padded.size() % 4) % 4, '\0');
    }
    word(static_cast<uint32_t>(_major < FirstMajorWithBytes ? padded.size() / 4 : padded.size()));
    _bytes += padded;
}

void GcovBuilder::begin(uint32_t tag)
{
    word(tag);
    word(0);
    _content = _bytes.size();
}

void GcovBuilder::end()
{
    const size_t size = _bytes.size() - _content;
    put(_content - 4, static_cast<uint32_t>(_major < FirstMajorWithBytes ? size / 4 : size));
}

void GcovBuilder::head(uint32_t magic, uint32_t stamp)
{
    word(magic);
    const uint32_t tens = static_cast<uint32_t>('A' + _major / 10);
    const uint32_t ones = static_cast<uint32_t>('0' + _major % 10);
    word(_major == Clang ? 0x3430382a : tens << 24 | ones << 16 | '2' << 8 | '*');
    word(stamp);
    if (_major >= FirstMajorWithBytes) {
        word(0xc0ffee);
    }
}

void GcovBuilder::notesHead(uint32_t stamp, const std::string& folder)
{
    head(0x67636e6f, stamp);
    if (_major != Clang) {
        text(folder);
        word(1);
    }
}

void GcovBuilder::countersHead(uint32_t stamp)
{
    head(0x67636461, stamp);
}

void GcovBuilder::function(uint32_t ident, uint32_t lineChecksum, uint32_t graphChecksum,
                           const std::string& symbol, uint32_t isArtificial,
                           const std::string& file, uint32_t startLine, uint32_t endLine)
{
    begin(0x01000000);
    word(ident);
    word(lineChecksum);
    word(graphChecksum);
    text(symbol);
    if (_major != Clang) {
        word(isArtificial);
    }
    text(file);
    word(startLine);
    if (_major != Clang) {
        word(5);
        word(endLine);
        word(1);
    }
    end();
}

void GcovBuilder::blocks(uint32_t count)
{
    record(0x01410000,
           std::vector<uint32_t>(_major == Clang ? count : 1, _major == Clang ? 0 : count));
}

void GcovBuilder::arcs(uint32_t from, const std::vector<Arc>& arcs)
{
    begin(0x01430000);
    word(from);
    for (const Arc& arc : arcs) {
        word(arc.to);
        word(arc.flags);
    }
    end();
}

void GcovBuilder::lines(uint32_t block, const std::string& file,
                        const std::vector<uint32_t>& numbers)
{
    lines(block, file, numbers, std::string(), {});
}

void GcovBuilder::lines(uint32_t block, const std::string& file,
                        const std::vector<uint32_t>& numbers, const std::string& secondFile,
                        const std::vector<uint32_t>& secondLines)
{
    begin(0x01450000);
    word(block);
    word(0);
    text(file);
    for (const uint32_t line : numbers) {
        word(line);
    }
    if (!secondFile.empty()) {
        word(0);
        text(secondFile);
        for (const uint32_t line : secondLines) {
            word(line);
        }
    }
    word(0);
    word(0);
    end();
}

void GcovBuilder::summary(uint32_t runs)
{
    record(0xa1000000, {runs, 99});
}

void GcovBuilder::ran(uint32_t ident, uint32_t lineChecksum, uint32_t graphChecksum)
{
    record(0x01000000, {ident, lineChecksum, graphChecksum});
}

void GcovBuilder::notLinked()
{
    record(0x01000000, {});
}

void GcovBuilder::counters(const std::vector<int64_t>& counts)
{
    begin(0x01a10000);
    for (const int64_t count : counts) {
        word(static_cast<uint32_t>(count));
        word(static_cast<uint32_t>(static_cast<uint64_t>(count) >> 32));
    }
    end();
}

void GcovBuilder::zeroedCounters(uint32_t count)
{
    word(0x01a10000);
    word(0u - count * (_major < FirstMajorWithBytes ? 2 : 8));
}

void GcovBuilder::record(uint32_t tag, const std::vector<uint32_t>& words)
{
    begin(tag);
    for (const uint32_t value : words) {
        word(value);
    }
    end();
}

std::string sampleNotes(int major, bool isBigEndian)
{
    GcovBuilder notes(major, isBigEndian);
    notes.notesHead(SampleStamp, "/build");
    notes.function(7, 8, 9, "work", 0, "a.cc", 1, 6);
    notes.blocks(6);
    notes.arcs(0, {{2, 4}});
    notes.arcs(2, {{3, 4}, {4, 1}});
    notes.arcs(3, {{5, 1}});
    notes.arcs(4, {{5, 5}});
    notes.arcs(5, {{1, 1}});
    if (major >= 14) {
        notes.record(0x01470000, {2, 1, 0}); // conditions of block 2
    }
    notes.lines(2, "a.cc", {1, 2});
    notes.lines(3, "a.cc", {3});
    notes.lines(4, "a.cc", {5, 4});
    notes.lines(5, "a.cc", {6});
    return notes.bytes();
}

std::string sampleCounters(int major, bool isBigEndian)
{
    GcovBuilder counters(major, isBigEndian);
    counters.countersHead(SampleStamp);
    counters.summary(3);
    counters.notLinked();
    counters.ran(7, 8, 9);
    counters.counters({10, 4});
    counters.record(0x01a30000, {1, 2}); // another kind of counters
    counters.word(0);
    return counters.bytes();
}
