// SPDX-License-Identifier: MIT
#include "zem/Data/ZEMLogFile.h"

#include "qip/Support/ListIterator.h"

#include <new>
#include <ostream>

ZEMLogFile::ZEMLogFile() = default;

ZEMLogFile::ZEMLogFile(void* buffer, size_t size) : _memory(buffer, size) {}

ZEMLogFile::~ZEMLogFile()
{
    _toc.abandon(); // records and nodes go with the memory that they are in
}

int ZEMLogFile::load()
{
    const int result = qipVLRecFile::load();
    _messages.flush();
    return result;
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
        _messages << " *** ZEMLogFile::processRecord: unknown tag " << tag << '\n';
        ++_nUnknown;
        return NoError;
    }
    // Warned about before the payload is read and in other words than the map file's.
    if (size < realSize) {
        _messages << " *** ZEMLogFile::processRecord: size mismatch: " << size << " < " << realSize
                  << '\n';
    }
    dLinkT<ZEMLogFileRecord*>* node = makeNode();
    if (node == nullptr) {
        return OutOfMemory;
    }
    const int result = node->_datum->read(_fp);
    if (result != NoError) {
        return result == OutOfMemory ? failed(FileCorrupt, OutOfMemory) : FileCorrupt;
    }
    _toc.append(node);
    return NoError;
}

// A list node with a record, both in the file's memory, null when there is none. They have nothing
// that a destructor would free.
dLinkT<ZEMLogFileRecord*>* ZEMLogFile::makeNode()
{
    using Node = dLinkT<ZEMLogFileRecord*>;
    try {
        void* place = _memory.allocate(sizeof(Node), alignof(Node));
        void* recordPlace = _memory.allocate(sizeof(ZEMLogFileRecord), alignof(ZEMLogFileRecord));
        return new (place) Node(new (recordPlace) ZEMLogFileRecord(_memory));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void ZEMLogFile::dump(std::ostream& out)
{
    out << "\n" << _logHeader << " Number of records : " << _toc.length() << "\n";
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
