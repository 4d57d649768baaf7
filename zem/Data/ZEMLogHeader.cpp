// SPDX-License-Identifier: MIT
#include "zem/Data/ZEMLogHeader.h"

#include "qip/Support/qipEndian.h"

#include <cstring>
#include <ostream>

ZEMLogHeader::ZEMLogHeader() : ZEMHeader(Magic), _logMajor(FormatVersion), _executionTime(0), _pad{}
{}

int ZEMLogHeader::read(FILE* stream)
{
    // A header that is cut short leaves the fields as they are.
    unsigned char rest[RestSize];
    qipPutBig32(rest, _executionTime);
    std::memcpy(rest + 4, _pad, sizeof _pad);
    const int result = readWords(stream, Magic, _logMajor, rest);
    _executionTime = qipGetBig32(rest);
    std::memcpy(_pad, rest + 4, sizeof _pad);
    return result;
}

std::ostream& operator<<(std::ostream& out, const ZEMLogHeader& header)
{
    header.dump(out, " ZEMLogHeader: ", "         Log File version : ", header._logMajor);
    return out;
}
