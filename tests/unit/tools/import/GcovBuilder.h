// SPDX-License-Identifier: MIT
//
// Writes .gcno and .gcda files byte by byte, in the layout of any compiler version and byte order.
//
//     GcovBuilder notes(12);
//     notes.notesHead(stamp, "/build");
//     notes.function(1, 2, 3, "main", 0, "a.cc", 1, 9);
//     notes.blocks(4);
//     notes.arcs(0, {{2, 4}});
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class GcovBuilder
{
public:
    struct Arc
    {
        uint32_t to;
        uint32_t flags;
    };

    // As clang++ writes them, in the form of GCC 4.8.
    static constexpr int Clang = 4;

    explicit GcovBuilder(int major, bool isBigEndian = false);

    void notesHead(uint32_t stamp, const std::string& folder);
    void countersHead(uint32_t stamp);

    void function(uint32_t ident, uint32_t lineChecksum, uint32_t graphChecksum,
                  const std::string& symbol, uint32_t isArtificial, const std::string& file,
                  uint32_t startLine, uint32_t endLine);
    void blocks(uint32_t count);
    void arcs(uint32_t from, const std::vector<Arc>& arcs);
    // Lines of one block in one file.
    void lines(uint32_t block, const std::string& file, const std::vector<uint32_t>& lines);
    // The same with text of a second file behind.
    void lines(uint32_t block, const std::string& file, const std::vector<uint32_t>& lines,
               const std::string& secondFile, const std::vector<uint32_t>& secondLines);

    void summary(uint32_t runs);
    void ran(uint32_t ident, uint32_t lineChecksum, uint32_t graphChecksum);
    // A copy that was not linked.
    void notLinked();
    void counters(const std::vector<int64_t>& counts);
    // `count` counters that are all zero, as compilers from version 11 on leave them out.
    void zeroedCounters(uint32_t count);

    // Any record with words as content.
    void record(uint32_t tag, const std::vector<uint32_t>& words);
    void word(uint32_t value);

    const std::string& bytes() const { return _bytes; }

private:
    void head(uint32_t magic, uint32_t stamp);
    void text(const std::string& text);
    void begin(uint32_t tag);
    void end();
    void put(size_t at, uint32_t value);

    const int _major;
    const bool _isBigEndian;
    std::string _bytes;
    size_t _content = 0; // where the open record's content starts
};

// The notes and counters of one unit "a.cc" with one function "work", lines 1 to 6, called 10
// times, its branch taken 4 times:
//
//   block 2: lines 1, 2   block 3: line 3   block 4: lines 4, 5   block 5: line 6
std::string sampleNotes(int major, bool isBigEndian = false);
std::string sampleCounters(int major, bool isBigEndian = false);
constexpr uint32_t SampleStamp = 0x12345678;
