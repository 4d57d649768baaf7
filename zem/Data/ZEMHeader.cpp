// SPDX-License-Identifier: MIT
#include "zem/Data/ZEMHeader.h"

#include "qip/Support/qipEndian.h"
#include "qip/Support/qipVLRecFile.h"

#include <cstring>
#include <ostream>

ZEMHeader::ZEMHeader(uint32_t magic) : _magic(magic), _qzlMajor(0), _qzlMinor(0) {}

int ZEMHeader::readWords(FILE* stream, uint32_t magic, uint32_t& version,
                         unsigned char (&rest)[RestSize])
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
    version = qipGetBig32(bytes + 12);
    std::memcpy(rest, bytes + 16, sizeof rest);
    if (_magic != magic) {
        return qipVLRecFile::BadMagic;
    }
    return version == FormatVersion ? qipVLRecFile::NoError : qipVLRecFile::BadVersion;
}

int ZEMHeader::write(FILE*)
{
    return qipVLRecFile::NoError;
}

void ZEMHeader::dump(std::ostream& out, const char* title, const char* versionLabel,
                     uint32_t version) const
{
    out << title << "\n"
        << "                    magic : 0x" << std::hex << _magic << std::dec << "\n"
        << versionLabel << version << "\n"
        << "          Quenzil version : " << _qzlMajor << "." << _qzlMinor << "\n";
}
