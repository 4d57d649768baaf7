// SPDX-License-Identifier: MIT
#include "tools/common/MapWriter.h"

#include "qip/Support/qipEndian.h"
#include "tools/common/RecordPayload.h"
#include "zem/Data/ZEMMapFile.h"

#include <ostream>

int MapWriter::create(const char* filename)
{
    return open(filename, WRITE, HeaderSize);
}

int MapWriter::add(const CovFile& file)
{
    constexpr size_t HeadSize = 16; // of a file or function, and the zero behind its name
    size_t blocks = 0;
    size_t size = HeadSize + file._path.size();
    for (const CovFunction& function : file._functions) {
        blocks += function._blocks.size();
        size += HeadSize + function._storedName.size();
    }
    RecordPayload payload;
    payload.reserve(size + 4 * blocks);
    payload.text(file._path);
    payload.word32(file._timeModified);
    payload.word32(static_cast<uint32_t>(blocks));
    payload.word32(static_cast<uint32_t>(file._functions.size()));
    std::vector<uint32_t> lines; // of each block both in one word
    for (const CovFunction& function : file._functions) {
        payload.text(function._storedName);
        payload.word32(function._startLine);
        payload.word32(function._endLine);
        payload.word32(static_cast<uint32_t>(function._blocks.size()));
        lines.clear();
        for (const CovBlock& block : function._blocks) {
            lines.push_back(uint32_t{block._startLine} << 16 | block._stopLine);
        }
        payload.words32(lines);
    }
    if (payload.size() > UINT32_MAX) {
        return WriteFailed;
    }
    return newRecord(ZEMMapFile::FileTag, payload.data(),
                     static_cast<unsigned int>(payload.size()));
}

int MapWriter::writeHeader()
{
    unsigned char bytes[HeaderSize] = {};
    qipPutBig32(bytes, ZEMMapHeader::Magic);
    qipPutBig32(bytes + 12, ZEMMapHeader::FormatVersion);
    return std::fwrite(bytes, sizeof(bytes), 1, _fp) == 1 ? NoError : WriteFailed;
}

// A writer meets no records.
int MapWriter::processRecord(unsigned int, unsigned int, unsigned int)
{
    return BadParameter;
}

void MapWriter::dump(std::ostream& out)
{
    out << _header;
}
