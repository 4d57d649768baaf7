// SPDX-License-Identifier: MIT
#include "zem/Data/ZEMMapFile.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/qipVisibleText.h"

#include <memory>
#include <new>
#include <ostream>

ZEMMapFile::ZEMMapFile() = default;

ZEMMapFile::~ZEMMapFile() = default;

int ZEMMapFile::load()
{
    const int result = qipVLRecFile::load();
    _messages.flush();
    return result;
}

int ZEMMapFile::open(const char* filename, Mode mode, int)
{
    return qipVLRecFile::open(filename, mode, ZEMMapHeader::Size);
}

int ZEMMapFile::readHeader()
{
    return _mapHeader.read(_fp);
}

int ZEMMapFile::writeHeader()
{
    return _mapHeader.write(_fp);
}

int ZEMMapFile::processRecord(unsigned int tag, unsigned int size, unsigned int realSize)
{
    if (tag != FileTag && tag != 0) {
        _messages << " *** ZEMMapFile::processRecord: unknown tag " << tag << '\n';
        ++_nUnknown;
        return NoError;
    }
    std::unique_ptr<ZEMFileRecord> file(new (std::nothrow) ZEMFileRecord);
    if (!file) {
        return OutOfMemory;
    }
    const int result = file->read(_fp);
    if (result != NoError) {
        return result == OutOfMemory ? failed(FileCorrupt, OutOfMemory) : FileCorrupt;
    }
    if (size < realSize) {
        _messages << " *** ZEMMapFile::processRecord: size mismatch(" << size << "<" << realSize
                  << ")\n"
                  << "     while processing: " << qipVisibleText(_filename) << ":"
                  << qipVisibleText(file->_filename) << '\n';
    }
    const int before = _toc.length();
    if (_toc.append(file.get()) == before) {
        return OutOfMemory;
    }
    (void)file.release(); // the list has it
    return NoError;
}

void ZEMMapFile::dump(std::ostream& out)
{
    out << "\n" << _mapHeader << " Number of records : " << _toc.length() << "\n";
    int number = 0;
    ListIterator<ZEMFileRecord*> files(_toc);
    while (ZEMFileRecord* file = files.next()) {
        out << "     Record " << ++number << "/" << _header._nRecords << "\n"
            << *file << "\n"
            << "     --------------------------\n";
    }
}

std::ostream& operator<<(std::ostream& out, ZEMMapFile& file)
{
    file.dump(out);
    return out;
}
