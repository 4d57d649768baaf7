// SPDX-License-Identifier: MIT
#include "zem/Data/ZEMLogFile.h"

#include "qip/Support/ListIterator.h"

#include <iostream>
#include <memory>
#include <new>

ZEMLogFile::ZEMLogFile() = default;

ZEMLogFile::~ZEMLogFile()
{
    ListIterator<ZEMLogFileRecord*> records(_toc);
    while (const ZEMLogFileRecord* record = records.next()) {
        delete record;
    }
}

int ZEMLogFile::load()
{
    return qipVLRecFile::load();
}

int ZEMLogFile::open(const char* filename, Mode mode, int)
{
    return qipVLRecFile::open(filename, mode, ZEMLogHeader::Size);
}

int ZEMLogFile::readHeader()
{
    return _logHeader.read(_fp);
}

int ZEMLogFile::writeHeader()
{
    return _logHeader.write(_fp);
}

int ZEMLogFile::processRecord(unsigned int tag, unsigned int size, unsigned int realSize)
{
    if (tag != ResultsTag && tag != 0) {
        std::cerr << " *** ZEMLogFile::processRecord: unknown tag " << tag << std::endl;
        return NoError;
    }
    // Warned about before the payload is read and in other words than the map file's.
    if (size < realSize) {
        std::cerr << " *** ZEMLogFile::processRecord: size mismatch: " << size << " < " << realSize
                  << std::endl;
    }
    std::unique_ptr<ZEMLogFileRecord> record(new (std::nothrow) ZEMLogFileRecord);
    if (!record) {
        return OutOfMemory;
    }
    if (record->read(_fp) != NoError) {
        return FileCorrupt;
    }
    const int before = _toc.length();
    if (_toc.append(record.get()) == before) {
        return OutOfMemory;
    }
    (void)record.release(); // the list has it
    return NoError;
}

void ZEMLogFile::dump(std::ostream& out)
{
    out << "\n" << _logHeader << " Number of records : " << _header._nRecords << "\n";
    int number = 0;
    ListIterator<ZEMLogFileRecord*> records(_toc);
    while (ZEMLogFileRecord* record = records.next()) {
        out << "     Record " << ++number << "/" << _header._nRecords << "\n"
            << *record << "\n"
            << "     --------------------------\n";
    }
}

std::ostream& operator<<(std::ostream& out, ZEMLogFile& file)
{
    file.dump(out);
    return out;
}
