// SPDX-License-Identifier: MIT
#include "zem/Data/ZEMLogFileRecord.h"

#include "qip/Support/qipVLRecFile.h"
#include "qip/Support/qipVisibleText.h"
#include "zem/Data/RecordReader.h"

#include <ostream>

ZEMLogFileRecord::ZEMLogFileRecord(std::pmr::memory_resource& memory)
    : _filename(nullptr), _mapfile(nullptr), _timeModified(0), _isBoolean(0), _nBlocks(0),
      _hits(nullptr), _memory(memory)
{}

int ZEMLogFileRecord::read(FILE* stream)
{
    if (stream == nullptr) {
        return qipVLRecFile::ShutDown;
    }
    int result = readPath(stream, _filename);
    if (result == qipVLRecFile::NoError) {
        result = readPath(stream, _mapfile);
    }
    uint32_t words[3];
    if (result == qipVLRecFile::NoError) {
        result = RecordReader::words(stream, words, 3);
    }
    if (result != qipVLRecFile::NoError) {
        return result;
    }
    _timeModified = words[0];
    _isBoolean = words[1];
    _nBlocks = words[2];
    return RecordReader::array(stream, _memory, _nBlocks, _hits);
}

// A path that was cut short is worth nothing: no file has that name.
int ZEMLogFileRecord::readPath(FILE* stream, char*& path)
{
    const int result = RecordReader::name(stream, _memory, path);
    if (result != qipVLRecFile::NoError) {
        path = nullptr;
    }
    return result;
}

std::ostream& operator<<(std::ostream& out, ZEMLogFileRecord& record)
{
    return out << "        filename : " << qipVisibleText(record._filename) << "\n"
               << "         mapfile : " << qipVisibleText(record._mapfile) << "\n";
}
