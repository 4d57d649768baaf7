// SPDX-License-Identifier: MIT
#include "qip/Support/qipVLRecord.h"

#include "qip/Support/qipEndian.h"
#include "qip/Support/qipVLRecFile.h"

#include <ostream>

qipVLRecord::qipVLRecord() : _nextRec(0), _size(0), _realSize(0), _tag(0), _data(nullptr) {}

int qipVLRecord::read(FILE* stream)
{
    unsigned char bytes[HeaderSize];
    // A header cut short has the code of a file that is not there.
    if (stream == nullptr || std::fread(bytes, sizeof bytes, 1, stream) != 1) {
        return qipVLRecFile::OpenFailed;
    }
    _nextRec = qipGetBig32(bytes);
    _size = qipGetBig32(bytes + 4);
    _realSize = qipGetBig32(bytes + 8);
    _tag = qipGetBig32(bytes + 12);
    return qipVLRecFile::NoError;
}

int qipVLRecord::write(FILE* stream) const
{
    unsigned char bytes[HeaderSize];
    qipPutBig32(bytes, _nextRec);
    qipPutBig32(bytes + 4, _size);
    qipPutBig32(bytes + 8, _realSize);
    qipPutBig32(bytes + 12, _tag);
    return std::fwrite(bytes, 4, 4, stream) == 4 ? qipVLRecFile::NoError
                                                 : qipVLRecFile::WriteFailed;
}

std::ostream& operator<<(std::ostream& out, const qipVLRecord& record)
{
    return out << "                    tag : " << record._tag << "\n"
               << "                   size : " << record._size << "\n"
               << "              real size : " << record._realSize << "\n"
               << "         next record at : " << record._nextRec << "\n";
}
