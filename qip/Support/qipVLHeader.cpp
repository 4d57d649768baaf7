// SPDX-License-Identifier: MIT
#include "qip/Support/qipVLHeader.h"

#include "qip/Support/qipEndian.h"
#include "qip/Support/qipVLRecFile.h"

#include <cstring>
#include <ostream>

namespace {

constexpr int PadOffset = 28;

} // namespace

qipVLHeader::qipVLHeader(int userHeaderSz)
    : _magic(Magic), _nTotal(0), _nRecords(0), _userHeaderSz(static_cast<uint32_t>(userHeaderSz)),
      _firstOffset(0), _lastOffset(0), _version(Version), _pad{}
{}

qipVLHeader::~qipVLHeader() = default;

int qipVLHeader::read(FILE* stream)
{
    if (stream == nullptr) {
        return qipVLRecFile::OpenFailed;
    }
    unsigned char bytes[Size];
    if (std::fread(bytes, sizeof bytes, 1, stream) != 1) {
        return qipVLRecFile::FileCorrupt;
    }
    _magic = qipGetBig32(bytes);
    _nTotal = qipGetBig32(bytes + 4);
    _nRecords = qipGetBig32(bytes + 8);
    _userHeaderSz = qipGetBig32(bytes + 12);
    _firstOffset = qipGetBig32(bytes + 16);
    _lastOffset = qipGetBig32(bytes + 20);
    _version = qipGetBig32(bytes + 24);
    std::memcpy(_pad, bytes + PadOffset, sizeof _pad);
    return qipVLRecFile::NoError;
}

int qipVLHeader::write(FILE* stream)
{
    if (stream == nullptr) {
        return qipVLRecFile::ShutDown;
    }
    unsigned char bytes[Size];
    qipPutBig32(bytes, _magic);
    qipPutBig32(bytes + 4, _nTotal);
    qipPutBig32(bytes + 8, _nRecords);
    qipPutBig32(bytes + 12, _userHeaderSz);
    qipPutBig32(bytes + 16, _firstOffset);
    qipPutBig32(bytes + 20, _lastOffset);
    qipPutBig32(bytes + 24, _version);
    std::memcpy(bytes + PadOffset, _pad, sizeof _pad);
    const int written = static_cast<int>(std::fwrite(bytes, sizeof bytes, 1, stream));
    return written == -1 ? qipVLRecFile::WriteFailed : qipVLRecFile::NoError;
}

std::ostream& operator<<(std::ostream& out, const qipVLHeader& header)
{
    return out << " qipVLHeader: \n"
               << "                    magic : 0x" << std::hex << header._magic << std::dec << "\n"
               << "                   nTotal : " << header._nTotal << "\n"
               << "        number of records : " << header._nRecords << "\n"
               << "         user header size : " << header._userHeaderSz << "\n"
               << "             first offset : " << header._firstOffset << "\n"
               << "              last offset : " << header._lastOffset << "\n"
               << "                  version : " << header._version << "\n";
}
