// SPDX-License-Identifier: MIT
#include "zem/Data/ZEMMapHeader.h"

#include "qip/Support/qipEndian.h"
#include "qip/Support/qipVLRecFile.h"

#include <cstring>
#include <ostream>

ZEMMapHeader::ZEMMapHeader()
    : _magic(Magic), _qzlMajor(0), _qzlMinor(0), _mapMajor(FormatVersion), _pad{}
{}

int ZEMMapHeader::read(FILE* stream)
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
    _mapMajor = qipGetBig32(bytes + 12);
    std::memcpy(_pad, bytes + 16, sizeof _pad);
    if (_magic != Magic) {
        return qipVLRecFile::BadMagic;
    }
    return _mapMajor == FormatVersion ? qipVLRecFile::NoError : qipVLRecFile::BadVersion;
}

int ZEMMapHeader::write(FILE*)
{
    return qipVLRecFile::NoError;
}

std::ostream& operator<<(std::ostream& out, const ZEMMapHeader& header)
{
    return out << " ZEMMapHeader: \n"
               << "                    magic : 0x" << std::hex << header._magic << std::dec << "\n"
               << "         Map File version : " << header._mapMajor << "\n"
               << "          Quenzil version : " << header._qzlMajor << "." << header._qzlMinor
               << "\n\n";
}
