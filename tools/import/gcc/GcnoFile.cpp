// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GcnoFile.h"

#include "tools/import/gcc/GcovInput.h"

#include <algorithm>
#include <utility>

namespace {

constexpr uint32_t FunctionTag = 0x01000000;
constexpr uint32_t BlocksTag = 0x01410000;
constexpr uint32_t ArcsTag = 0x01430000;
constexpr uint32_t LinesTag = 0x01450000;

// The least that the notes spend on a block: each but the exit has a record of arcs with its
// number. A count that asks for more blocks than the bytes can describe is damage.
constexpr size_t LeastBytesOfBlock = 12;
static_assert(GcovInput::LargestFile / LeastBytesOfBlock < GcnoArc::GreatestBlock);

} // namespace

void GcnoFunction::clear()
{
    GcnoFunction fresh;
    fresh._files.swap(_files);
    fresh._arcs.swap(_arcs);
    fresh._lines.swap(_lines);
    fresh._files.clear();
    fresh._arcs.clear();
    fresh._lines.clear();
    *this = std::move(fresh);
}

GcnoFile::GcnoFile(const unsigned char* data, size_t size)
    : _words(data, size), _data(data), _size(size)
{}

GcnoFile::Result GcnoFile::open()
{
    if (!_words.readHead(GcovWords::NotesMagic)) {
        return NotNotes;
    }
    if (!_words.isKnown()) {
        return UnknownVersion;
    }
    _folder = _words.skipNotesHead();
    if (_words.failed()) {
        _damaged = true;
        return Damaged;
    }
    _next = _words.position();
    return Ok;
}

bool GcnoFile::findFunction(GcnoFunction& function)
{
    function.clear();
    if (_damaged) {
        return false;
    }
    GcovWords::Record record;
    _words.confine(_next, _size);
    do {
        if (!_words.nextRecord(record)) {
            _damaged = _words.failed();
            return false;
        }
    } while (record._tag != FunctionTag);
    const GcovWords::Record head = record;

    _graphStart = _graphEnd = _words.position();
    while (_words.nextRecord(record) && record._tag != FunctionTag) {
        _graphEnd = _words.position();
    }
    if (_words.failed()) {
        _damaged = true;
        return false;
    }
    _next = _graphEnd;

    _words.confine(head._start, head._start + head._size);
    function._ident = _words.word();
    function._lineChecksum = _words.word();
    function._graphChecksum = _words.word();
    _place = _words.position();
    _placeEnd = head._start + head._size;
    _damaged = _words.failed();
    return !_damaged;
}

void GcnoFile::addContent(ContentKey& key) const
{
    constexpr size_t Checksums = 8; // bytes
    key.add(_data + _place - Checksums, _graphEnd - (_place - Checksums));
}

bool GcnoFile::readPlace(GcnoFunction& function)
{
    bool isNull = false;
    _words.confine(_place, _placeEnd);
    function._symbol = _words.text(isNull);
    function._isArtificial = !_words.isOfClang() && _words.word() != 0;
    function._files.push_back(_words.text(isNull));
    function._startLine = _words.word();
    if (_words.isOfClang()) {
        _damaged = _words.failed();
        return !_damaged;
    }
    function._startColumn = _words.word();
    function._endLine = _words.word();
    function._endColumn = _words.word();
    _damaged = _words.failed();
    return !_damaged;
}

bool GcnoFile::nextFunction(GcnoFunction& function)
{
    return findFunction(function) && readPlace(function);
}

bool GcnoFile::readGraph(GcnoFunction& function)
{
    _words.confine(_graphStart, _graphEnd);
    if (!_fileNumbers.empty()) {
        _fileNumbers.clear();
    }
    _lastName = std::string_view();
    _lastFile = 0;
    GcovWords::Record record;
    while (!_damaged && _words.nextRecord(record)) {
        if (record._tag == BlocksTag) {
            _damaged = !readBlocks(record, function);
        } else if (record._tag == ArcsTag) {
            _damaged = !readArcs(record, function);
        } else if (record._tag == LinesTag) {
            _damaged = !readLines(record, function);
        }
        _words.confine(record._start + record._size, _graphEnd);
    }
    _damaged = _damaged || _words.failed();
    if (!_damaged && _words.isOfClang() && function._nBlocks > GcnoFunction::ExitBlock) {
        function._arcs.push_back(
            {GcnoFunction::ExitBlock, GcnoFunction::EntryBlock, GcnoArc::OnTree, 0});
    }
    return !_damaged;
}

bool GcnoFile::readBlocks(const GcovWords::Record& record, GcnoFunction& function)
{
    if (function._nBlocks != 0) {
        return false; // a second number would leave arcs that point past the blocks
    }
    if (_words.isOfClang()) {
        function._nBlocks = static_cast<uint32_t>(record._size / 4);
        return true;
    }
    _words.confine(record._start, record._start + record._size);
    function._nBlocks = _words.word();
    return function._nBlocks <= (_graphEnd - _graphStart) / LeastBytesOfBlock + 2;
}

bool GcnoFile::isInOneFile(GcnoFunction& function)
{
    _words.confine(_graphStart, _graphEnd);
    bool isInOneFile = true;
    GcovWords::Record record;
    while (!_damaged && isInOneFile && _words.nextRecord(record)) {
        const size_t next = _words.position();
        if (record._tag == BlocksTag) {
            _damaged = !readBlocks(record, function);
        } else if (record._tag == ArcsTag) {
            _damaged = !checkArcs(record, function);
        } else if (record._tag == LinesTag) {
            _damaged = !checkLines(record, function, isInOneFile);
        }
        _words.confine(next, _graphEnd);
    }
    _damaged = _damaged || _words.failed();
    function._nBlocks = 0; // which readGraph() expects
    return isInOneFile;
}

// Whether they go from blocks to blocks.
bool GcnoFile::checkArcs(const GcovWords::Record& record, const GcnoFunction& function) const
{
    const size_t end = record._start + record._size;
    size_t at = record._start + 4;
    uint32_t greatest = at <= end ? _words.wordAt(record._start) : UINT32_MAX;
    for (; at + 8 <= end; at += 8) {
        greatest = std::max(greatest, _words.wordAt(at));
    }
    return greatest < function._nBlocks;
}

// Whether readLines() would take them, up to the first that is in another file.
bool GcnoFile::checkLines(const GcovWords::Record& record, const GcnoFunction& function,
                          bool& isInOneFile)
{
    _words.confine(record._start, record._start + record._size);
    if (_words.word() >= function._nBlocks) {
        return false;
    }
    const std::string_view own = function._files[0];
    while (isInOneFile) {
        while (_words.word() != 0) {
        }
        bool isNull = false;
        const std::string_view name = _words.paddedText(isNull);
        if (isNull || _words.failed()) {
            break;
        }
        isInOneFile = name.substr(0, own.size()) == own &&
                      (name.size() == own.size() || name[own.size()] == '\0');
    }
    return !_words.failed();
}

// The number of the file whose name the notes have as `padded`.
uint32_t GcnoFile::fileNumber(std::string_view padded, GcnoFunction& function)
{
    if (padded != _lastName) {
        _lastName = padded;
        const std::string_view file = GcovWords::withoutPadding(padded);
        if (function._files[_lastFile] != file) {
            _lastFile = otherFileNumber(file, function);
        }
    }
    return _lastFile;
}

uint32_t GcnoFile::otherFileNumber(std::string_view file, GcnoFunction& function)
{
    if (_fileNumbers.empty()) {
        _fileNumbers.emplace(function._files[0], 0);
    }
    const auto found = _fileNumbers.emplace(file, static_cast<uint32_t>(function._files.size()));
    if (found.second) {
        function._files.push_back(file);
    }
    return found.first->second;
}

bool GcnoFile::readArcs(const GcovWords::Record& record, GcnoFunction& function)
{
    if (!checkArcs(record, function)) {
        return false;
    }
    const size_t end = record._start + record._size;
    GcnoArc arc = {};
    arc._from = _words.wordAt(record._start);
    for (size_t at = record._start + 4; at + 8 <= end; at += 8) {
        arc._to = _words.wordAt(at) & GcnoArc::GreatestBlock;
        arc._flags = _words.wordAt(at + 4) & GcnoArc::KnownFlags;
        function._arcs.push_back(arc);
    }
    return true;
}

bool GcnoFile::readLines(const GcovWords::Record& record, GcnoFunction& function)
{
    _words.confine(record._start, record._start + record._size);
    GcnoLine line;
    line._block = _words.word();
    if (line._block >= function._nBlocks) {
        return false;
    }
    for (;;) {
        line._line = _words.word();
        if (_words.failed()) {
            return false;
        }
        if (line._line != 0) {
            function._lines.push_back(line);
            continue;
        }
        bool isNull = false;
        const std::string_view name = _words.paddedText(isNull);
        if (isNull) {
            return !_words.failed();
        }
        line._file = fileNumber(name, function);
    }
}
