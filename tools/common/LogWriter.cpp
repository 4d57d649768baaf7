// SPDX-License-Identifier: MIT
#include "tools/common/LogWriter.h"

#include "qip/Support/qipEndian.h"
#include "zem/Data/ZEMLogFile.h"

#include <ostream>

int LogWriter::create(const char* filename, uint32_t executionTime)
{
    _executionTime = executionTime;
    return open(filename, WRITE, HeaderSize);
}

int LogWriter::add(const CovFile& file, const std::vector<uint32_t>& counts,
                   const std::string& mapPath, bool isBoolean)
{
    _payload.clear();
    _payload.text(file._path);
    _payload.text(mapPath);
    _payload.word32(file._timeModified);
    _payload.word32(isBoolean ? 1 : 0);
    _payload.word32(static_cast<uint32_t>(counts.size()));
    _payload.words32(counts);
    if (_payload.size() > UINT32_MAX) {
        return WriteFailed;
    }
    return newRecord(ZEMLogFile::ResultsTag, _payload.data(),
                     static_cast<unsigned int>(_payload.size()));
}

int LogWriter::writeHeader()
{
    unsigned char bytes[HeaderSize] = {};
    qipPutBig32(bytes, ZEMLogHeader::Magic);
    qipPutBig32(bytes + 12, ZEMLogHeader::FormatVersion);
    qipPutBig32(bytes + 16, _executionTime);
    return std::fwrite(bytes, sizeof(bytes), 1, _fp) == 1 ? NoError : WriteFailed;
}

// A writer meets no records.
int LogWriter::processRecord(unsigned int, unsigned int, unsigned int)
{
    return BadParameter;
}

void LogWriter::dump(std::ostream& out)
{
    out << _header;
}
