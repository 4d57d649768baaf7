// SPDX-License-Identifier: MIT
#include "qip/Support/qipVLFailure.h"

#include "qip/Support/qipVLRecFile.h"

#include <ostream>

qipVLFailure::qipVLFailure()
    : _cause(qipVLRecFile::NoError), _isChanging(false), _reason(nullptr), _record(0), _offset(0)
{}

const char* qipVLFailure::advice() const
{
    if (_isChanging) {
        return "read it again when nobody writes to it any more";
    }
    switch (_cause) {
    case qipVLRecFile::OpenFailed:
        return "check that the file is there and that you may read it";
    case qipVLRecFile::ReadFailed:
        return "check that it is a file and that its disk is well";
    case qipVLRecFile::BadMagic:
        return "give the file of coverage that belongs here";
    case qipVLRecFile::BadVersion:
        return "write the file again with tools of this version";
    case qipVLRecFile::OutOfMemory:
        return "give the program more memory or fewer files";
    default:
        return "write the file again";
    }
}

std::ostream& operator<<(std::ostream& out, const qipVLFailure& failure)
{
    out << qipVLRecFile::error(failure._cause);
    if (failure._reason != nullptr) {
        out << ": " << failure._reason;
    }
    if (failure._record > 0) {
        out << " (record " << failure._record << " at byte " << failure._offset << ")";
    }
    return out;
}
