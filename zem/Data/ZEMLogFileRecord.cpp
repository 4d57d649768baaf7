// SPDX-License-Identifier: MIT
#include "zem/Data/ZEMLogFileRecord.h"

#include "qip/Support/qipVLRecFile.h"
#include "zem/Data/RecordReader.h"

#include <ostream>

namespace {

// A path that was cut short is worth nothing: no file has that name.
int readPath(FILE* stream, char*& path)
{
    const int result = RecordReader::name(stream, path);
    if (result != qipVLRecFile::NoError) {
        delete[] path;
        path = nullptr;
    }
    return result;
}

} // namespace

ZEMLogFileRecord::ZEMLogFileRecord()
    : _filename(nullptr), _mapfile(nullptr), _timeModified(0), _isBoolean(0), _nBlocks(0),
      _hits(nullptr)
{}

ZEMLogFileRecord::~ZEMLogFileRecord()
{
    delete[] _filename;
    delete[] _mapfile;
}

int ZEMLogFileRecord::read(FILE* stream)
{
    if (stream == nullptr) {
        return qipVLRecFile::ShutDown;
    }
    int result = readPath(stream, _filename);
    if (result != qipVLRecFile::NoError) {
        return result;
    }
    result = readPath(stream, _mapfile);
    if (result != qipVLRecFile::NoError) {
        return result;
    }
    uint32_t words[3];
    result = RecordReader::words(stream, words, 3);
    if (result != qipVLRecFile::NoError) {
        return result;
    }
    _timeModified = words[0];
    _isBoolean = words[1];
    _counts.clear();
    result = RecordReader::array(stream, words[2], _counts);
    _nBlocks = static_cast<uint32_t>(_counts.size());
    _hits = _counts.empty() ? nullptr : _counts.data();
    return result;
}

std::ostream& operator<<(std::ostream& out, ZEMLogFileRecord& record)
{
    return out << "        filename : " << (record._filename == nullptr ? "" : record._filename)
               << "\n"
               << "         mapfile : " << (record._mapfile == nullptr ? "" : record._mapfile)
               << "\n";
}
