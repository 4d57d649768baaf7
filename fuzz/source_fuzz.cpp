// SPDX-License-Identifier: MIT
//
// The source view of any text with any blocks, against the same done the simple way. The input is
// the number of functions, the blocks of each (see FuzzBytes), a 0, and the text.
#include "fuzz/FuzzBytes.h"
#include "fuzz/MemoryFile.h"
#include "fuzz/fuzzTarget.h"
#include "qip/Support/qipAssert.h"
#include "zem/Data/ZEMBlkRecord.h"
#include "zem/Lines/SrcBrowser.h"
#include "zem/Lines/SrcCoverage.h"
#include "zem/Lines/SrcLine.h"
#include "zem/Lines/SrcPrefix.h"
#include "zem/Rows/RptInfo.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr size_t TabWidth = 8;

using Blocks = std::vector<ZEMBlkRecord>;

// A text as lines, tabs expanded.
struct Text
{
    std::vector<std::string> lines;
    size_t longest = 0; // that ends in a newline, that included

    explicit Text(const std::string& text)
    {
        lines.emplace_back();
        size_t start = 0;
        for (size_t i = 0; i < text.size(); ++i) {
            std::string& line = lines.back();
            if (text[i] == '\n') {
                longest = std::max(longest, i + 1 - start);
                start = i + 1;
                lines.emplace_back();
            } else if (text[i] == '\t') {
                line.append(TabWidth - line.size() % TabWidth, ' ');
            } else {
                line += text[i];
            }
        }
    }
};

struct Line
{
    int64_t hits = SrcLine::NoBlock;
    std::vector<int64_t> shown; // counts

    void show(int64_t count)
    {
        hits = count;
        shown.assign(1, count);
    }
};

int64_t clamped(int64_t count)
{
    return std::min<int64_t>(count, INT32_MAX);
}

void show(const ZEMBlkRecord& block, std::vector<Line>& lines)
{
    const size_t start = block._startLine - 1U;
    if (start < lines.size()) {
        lines[start].show(clamped(block._nHits));
    }
    for (size_t n = start + 1; block._nHits == 0 && n < block._stopLine && n < lines.size(); ++n) {
        lines[n].show(SrcLine::InsideUnrun);
    }
}

// Blocks that follow each other directly and start on one line.
void showTogether(const ZEMBlkRecord* blocks, size_t count, std::vector<Line>& lines)
{
    if (count < 2 || blocks->_stopLine > lines.size()) {
        return;
    }
    Line& line = lines[blocks->_stopLine - 1U];
    std::vector<int64_t> counts;
    int64_t sum = 0;
    for (size_t i = 0; i < count; ++i) {
        sum += blocks[i]._nHits;
        counts.push_back(clamped(blocks[i]._nHits));
    }
    counts.resize(std::min(line.shown.size() + count - 1, count));
    line.hits = clamped(sum);
    line.shown = counts;
}

void show(const Blocks& blocks, std::vector<Line>& lines)
{
    for (size_t i = 0; i < blocks.size();) {
        const size_t first = i++;
        if (blocks[first]._startLine == 0 || blocks[first]._stopLine == 0) {
            continue;
        }
        show(blocks[first], lines);
        while (i < blocks.size() && blocks[i]._startLine == blocks[first]._startLine) {
            ++i;
        }
        showTogether(&blocks[first], i - first, lines);
    }
}

std::vector<Blocks> functions(FuzzBytes& bytes)
{
    std::vector<Blocks> result;
    for (uint32_t n = bytes.below(5); n > 0; --n) {
        result.emplace_back(bytes.below(24));
        for (ZEMBlkRecord& block : result.back()) {
            const bool isLarge = bytes.below(16) == 15;
            block._startLine = static_cast<uint16_t>(isLarge ? bytes.word() : bytes.below(32));
            block._stopLine = static_cast<uint16_t>(isLarge ? bytes.word() : bytes.below(32));
            block._nHits = isLarge ? bytes.word() : bytes.below(3);
        }
    }
    return result;
}

std::string join(const std::vector<int64_t>& counts)
{
    std::string text;
    for (const int64_t count : counts) {
        text += (text.empty() ? " " : "/") + std::to_string(count);
    }
    return text;
}

std::string marks(const std::vector<int64_t>& counts)
{
    std::string text = " ";
    for (const int64_t count : counts) {
        text += count == 0 ? '!' : '.';
    }
    return text + " ";
}

// The columns of a line, as much of them as there is room for.
void checkPrefix(const RptInfo& info, const SrcCoverage& coverage, const SrcBrowser& browser,
                 const std::vector<Line>& lines, int room)
{
    const SrcPrefix columns(info, coverage.hitDetailWidth(), coverage.maxBlocksOnLine());
    const std::unique_ptr<char[]> text(new char[static_cast<size_t>(room) + 1]);
    qipAssert(columns.header(browser.filename(), text.get(), room) <= room);
    for (size_t n = 0; n < std::min<size_t>(lines.size(), 64); ++n) {
        std::string number = std::to_string(n + 1);
        number.insert(0, number.size() < 7 ? 7 - number.size() : 0, ' ');
        std::string wanted = info._showLineNumbers != 0 ? number + "  " : "";
        if (lines[n].hits != SrcLine::NoBlock) {
            wanted += info._showHitCounts != 0   ? join(lines[n].shown)
                      : info._markUncovered != 0 ? marks(lines[n].shown)
                                                 : "";
        }
        const auto line = static_cast<long>(n);
        const int length = columns.prefix(line, browser.line(line), text.get(), room);
        qipAssert(std::string(text.get(), static_cast<size_t>(length)) ==
                  wanted.substr(0, static_cast<size_t>(room)));
    }
}

void checkLines(SrcBrowser& browser, const Text& text, const std::vector<Line>& lines)
{
    for (size_t n = 0; n < lines.size(); ++n) {
        const auto number = static_cast<long>(n);
        int length = -1;
        const char* shown = browser.getLine(number, length);
        qipAssert(shown != nullptr);
        qipAssert(std::string(shown, static_cast<size_t>(length)) == text.lines[n]);
        const SrcBrowser& looker = browser;
        qipAssert(looker.getHits(number) == lines[n].hits);
        qipAssert(static_cast<size_t>(looker.getHitMapSize(number)) == lines[n].shown.size());
        for (size_t i = 0; i < lines[n].shown.size(); ++i) {
            qipAssert(looker.getHitMap(number)[i] == lines[n].shown[i]);
        }
        qipAssert(looker.line(number)->untested() ==
                  (lines[n].hits == 0 || lines[n].hits == SrcLine::InsideUnrun));
    }
}

// What is found in a file that was cut behind its index is no longer than what was there.
void checkCut(const MemoryFile& file, const std::string& path, const Text& text, size_t size)
{
    SrcBrowser browser;
    qipAssert(browser.open(path.c_str()) == 0);
    qipAssert(ftruncate(file.descriptor(), static_cast<off_t>(size)) == 0);
    for (long n = browser.nLines() - 1; n >= 0; --n) {
        int length = -1;
        const char* shown = browser.getLine(n, length);
        qipAssert(shown == nullptr ||
                  static_cast<size_t>(length) <= text.lines[static_cast<size_t>(n)].size());
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzBytes bytes(data, size);
    const std::vector<Blocks> program = functions(bytes);
    RptInfo info;
    info._showLineNumbers = static_cast<int>(bytes.below(2));
    info._showHitCounts = static_cast<int>(bytes.below(2));
    info._markUncovered = static_cast<int>(bytes.below(2));
    const int room = static_cast<int>(bytes.below(256));
    const size_t cut = bytes.below(256);
    std::string source;
    while (!bytes.isEmpty()) {
        source += static_cast<char>(bytes.byte());
    }

    const MemoryFile file(reinterpret_cast<const uint8_t*>(source.data()), source.size());
    const Text text(source);
    SrcBrowser browser;
    qipAssert(browser.open(file.path().c_str()) == 0);
    qipAssert(static_cast<size_t>(browser.nLines()) == text.lines.size());
    qipAssert(static_cast<size_t>(browser.maxLineSz()) == text.longest);

    SrcCoverage coverage(browser);
    std::vector<Line> lines(text.lines.size());
    for (const Blocks& blocks : program) {
        coverage.loadBlocks(blocks.data(), static_cast<uint32_t>(blocks.size()));
        show(blocks, lines);
    }
    checkLines(browser, text, lines);
    checkPrefix(info, coverage, browser, lines, room);
    checkCut(file, file.path(), text, std::min(cut, source.size()));
    return 0;
}
