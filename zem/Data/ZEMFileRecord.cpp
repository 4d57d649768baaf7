// SPDX-License-Identifier: MIT
#include "zem/Data/ZEMFileRecord.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/qipVLRecFile.h"
#include "qip/Support/qipVisibleText.h"
#include "zem/Data/RecordReader.h"

#include <algorithm>
#include <new>
#include <ostream>

namespace {

// Blocks for which there is room before any is read; the file may claim more than it holds.
constexpr uint32_t MostExpected = 64 * 1024;

} // namespace

ZEMFileRecord::ZEMFileRecord()
    : _filename(nullptr), _timeModified(0), _nBlocks(0), _nFuncs(0), _blocks(nullptr), _nPlaced(0)
{}

ZEMFileRecord::~ZEMFileRecord()
{
    clear();
    delete[] _filename;
}

// Forgets the functions and their blocks.
void ZEMFileRecord::clear()
{
    while (ZEMFuncRecord* func = _funcList.first()) {
        _funcList.remove(func);
        delete func;
    }
    delete[] _blocks;
    _blocks = nullptr;
    _nPlaced = 0;
}

int ZEMFileRecord::read(FILE* stream)
{
    if (stream == nullptr) {
        return qipVLRecFile::ShutDown;
    }
    clear();
    int result = RecordReader::name(stream, _filename);
    if (result != qipVLRecFile::NoError) {
        delete[] _filename;
        _filename = nullptr;
        return result;
    }
    uint32_t words[3];
    result = RecordReader::words(stream, words, 3);
    if (result != qipVLRecFile::NoError) {
        return result;
    }
    _timeModified = words[0];
    _nBlocks = words[1];
    _nFuncs = words[2];

    // Lines are collected first: only then is it known how many blocks there really are, and they
    // get one array.
    std::vector<uint32_t> lines;
    try {
        lines.reserve(std::min(_nBlocks, MostExpected));
    } catch (const std::bad_alloc&) {
        return qipVLRecFile::OutOfMemory;
    }
    result = readFunctions(stream, lines);
    const int placed = placeBlocks(lines);
    return result != qipVLRecFile::NoError ? result : placed;
}

int ZEMFileRecord::readFunctions(FILE* stream, std::vector<uint32_t>& lines)
{
    for (uint32_t i = 0; i < _nFuncs; ++i) {
        auto* func = new (std::nothrow) ZEMFuncRecord(this);
        if (func == nullptr) {
            return qipVLRecFile::OutOfMemory;
        }
        const int result = func->readLines(stream, lines);
        if (func->_funcname == nullptr) {
            delete func; // nothing of it could be read
            return result;
        }
        const int before = _funcList.length();
        if (_funcList.append(func) == before) {
            delete func;
            return qipVLRecFile::OutOfMemory;
        }
        if (result != qipVLRecFile::NoError) {
            return result;
        }
    }
    return qipVLRecFile::NoError;
}

int ZEMFileRecord::placeBlocks(const std::vector<uint32_t>& lines)
{
    _blocks = lines.empty() ? nullptr : new (std::nothrow) ZEMBlkRecord[lines.size()];
    const bool noMemory = _blocks == nullptr && !lines.empty();
    size_t next = 0;
    ListIterator<ZEMFuncRecord*> funcs(_funcList);
    while (ZEMFuncRecord* func = funcs.next()) {
        if (noMemory) {
            func->_nBlocks = 0;
        }
        func->setBlocks(_blocks + next, lines.data() + next);
        next += func->_nBlocks;
    }
    _nPlaced = next;
    return noMemory ? qipVLRecFile::OutOfMemory : qipVLRecFile::NoError;
}

std::ostream& operator<<(std::ostream& out, ZEMFileRecord& file)
{
    out << "        filename : " << qipVisibleText(file._filename) << "\n";
    ListIterator<ZEMFuncRecord*> funcs(file._funcList);
    while (ZEMFuncRecord* func = funcs.next()) {
        out << *func << "\n";
    }
    return out;
}
