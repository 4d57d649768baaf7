// SPDX-License-Identifier: MIT
//
// The coverage record of a source file, made from lines of the test.
#pragma once

#include "zem/Data/ZEMFileRecord.h"

#include <cstdint>
#include <cstring>
#include <deque>
#include <memory>
#include <string>
#include <vector>

struct SourceBlock
{
    int start;
    int stop;
    uint32_t hits;
};

class SourceRecord
{
public:
    explicit SourceRecord(const std::string& filename)
    {
        _file._filename = new char[filename.size() + 1];
        std::strcpy(_file._filename, filename.c_str());
    }

    void addFunction(const std::vector<SourceBlock>& blocks)
    {
        auto* func = new ZEMFuncRecord(&_file);
        func->_nBlocks = static_cast<uint32_t>(blocks.size());
        _maps.push_back(std::make_unique<ZEMBlkRecord[]>(blocks.size()));
        func->_blockMap = _maps.back().get();
        for (size_t i = 0; i < blocks.size(); ++i) {
            func->_blockMap[i]._startLine = static_cast<uint16_t>(blocks[i].start);
            func->_blockMap[i]._stopLine = static_cast<uint16_t>(blocks[i].stop);
            func->_blockMap[i]._nHits = blocks[i].hits;
        }
        _file._funcList.append(func);
    }

    const ZEMFileRecord& file() const { return _file; }

private:
    ZEMFileRecord _file;
    std::deque<std::unique_ptr<ZEMBlkRecord[]>> _maps; // the functions point at these
};
