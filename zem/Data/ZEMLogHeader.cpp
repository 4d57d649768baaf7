// SPDX-License-Identifier: MIT
#include "zem/Data/ZEMLogHeader.h"

#include "qip/Support/qipEndian.h"
#include "qip/Support/qipVLRecFile.h"

#include <cstring>
#include <ostream>

ZEMLogHeader::ZEMLogHeader()
    : _magic(Magic), _qzlMajor(0), _qzlMinor(0), _logMajor(FormatVersion), _executionTime(0), _pad{}
{}

int ZEMLogHeader::read(FILE* stream)
{
    if (stream == nullptr) {
        return qipVLRecFile::ShutDown;
    }
    unsigned char bytes[Size];
    if (std::fread(bytes, sizeof bytes, 1, stream) != 1) {
        return qipVLRecFile::FileCorrupt;
    }
    _magic = qipGetBig32(bytes);
    _qzlMajor = qipGetBig32(bytes + 4);
    _qzlMinor = qipGetBig32(bytes + 8);
    _logMajor = qipGetBig32(bytes + 12);
    _executionTime = qipGetBig32(bytes + 16);
    std::memcpy(_pad, bytes + 20, sizeof _pad);
    if (_magic != Magic) {
        return qipVLRecFile::BadMagic;
    }
    return _logMajor == FormatVersion ? qipVLRecFile::NoError : qipVLRecFile::BadVersion;
}

int ZEMLogHeader::write(FILE*)
{
    return qipVLRecFile::NoError;
}

std::ostream& operator<<(std::ostream& out, const ZEMLogHeader& header)
{
    return out << " ZEMLogHeader: \n"
               << "                    magic : 0x" << std::hex << header._magic << std::dec << "\n"
               << "         Log File version : " << header._logMajor << "\n"
               << "          Quenzil version : " << header._qzlMajor << "." << header._qzlMinor
               << "\n";
}
