// SPDX-License-Identifier: MIT
#include "zem/Data/ZEMFuncRecord.h"

#include "qip/Support/qipVLRecFile.h"
#include "qip/Support/qipVisibleText.h"
#include "zem/Data/RecordReader.h"
#include "zem/Data/ZEMFileRecord.h"

#include <new>
#include <ostream>

ZEMFuncRecord::ZEMFuncRecord(ZEMFileRecord* owner)
    : ZEMRecord(owner), _funcname(nullptr), _startLine(0), _endLine(0), _nBlocks(0),
      _blockMap(nullptr), _ownBlocks(nullptr)
{}

ZEMFuncRecord::~ZEMFuncRecord()
{
    delete[] _funcname;
    delete[] _ownBlocks;
}

int ZEMFuncRecord::read(FILE* stream)
{
    if (stream == nullptr) {
        return qipVLRecFile::ShutDown;
    }
    std::vector<uint32_t> lines;
    const int result = readLines(stream, lines);
    delete[] _ownBlocks;
    _ownBlocks = nullptr;
    if (_nBlocks > 0) {
        _ownBlocks = new (std::nothrow) ZEMBlkRecord[_nBlocks];
        if (_ownBlocks == nullptr) {
            _nBlocks = 0;
            setBlocks(nullptr, nullptr);
            return qipVLRecFile::OutOfMemory;
        }
    }
    setBlocks(_ownBlocks, lines.data());
    return result;
}

int ZEMFuncRecord::readLines(FILE* stream, std::vector<uint32_t>& lines)
{
    _nBlocks = 0;
    int result = RecordReader::name(stream, _funcname);
    if (result != qipVLRecFile::NoError) {
        return result;
    }
    uint32_t words[3] = {_startLine, _endLine, 0};
    result = RecordReader::words(stream, words, 3);
    _startLine = words[0];
    _endLine = words[1];
    if (result != qipVLRecFile::NoError) {
        return result;
    }
    const size_t before = lines.size();
    result = RecordReader::array(stream, words[2], lines);
    _nBlocks = static_cast<uint32_t>(lines.size() - before);
    return result;
}

void ZEMFuncRecord::setBlocks(ZEMBlkRecord* blocks, const uint32_t* lines)
{
    _blockMap = _nBlocks > 0 ? blocks : nullptr;
    for (uint32_t i = 0; i < _nBlocks; ++i) {
        blocks[i]._owner = this;
        blocks[i]._startLine = static_cast<uint16_t>(lines[i] >> 16);
        blocks[i]._stopLine = static_cast<uint16_t>(lines[i]);
    }
}

std::ostream& operator<<(std::ostream& out, ZEMFuncRecord& func)
{
    out << "        function : " << qipVisibleText(func._funcname) << "\n"
        << "                   lines: " << func._startLine << "-" << func._endLine << ", "
        << func._nBlocks << " blocks\n"
        << "                   blocks: ";
    for (uint32_t i = 0; i < func._nBlocks; ++i) {
        const ZEMBlkRecord& block = func._blockMap[i];
        out << "[" << block._startLine << "-" << block._stopLine << "]";
    }
    return out;
}
