// SPDX-License-Identifier: MIT
#include "zem/Data/ZEMMapHeader.h"

#include <ostream>

ZEMMapHeader::ZEMMapHeader() : ZEMHeader(Magic), _mapMajor(FormatVersion), _pad{} {}

int ZEMMapHeader::read(FILE* stream)
{
    return readWords(stream, Magic, _mapMajor, _pad);
}

std::ostream& operator<<(std::ostream& out, const ZEMMapHeader& header)
{
    header.dump(out, " ZEMMapHeader: ", "         Map File version : ", header._mapMajor);
    return out << "\n";
}
