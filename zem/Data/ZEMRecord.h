// SPDX-License-Identifier: MIT
//
// Base of the coverage model: each record knows the record that contains it.
//
//   record          owned by              owns
//   ZEMFileRecord   the ZEMRepository     its functions, and the array of all their blocks
//   ZEMFuncRecord   its file              its name
//   ZEMBlkRecord    its file's array      nothing; a function's blocks are a slice of that array
//
// Rows of a report and the source viewer only point at records.
#pragma once

class ZEMRecord
{
public:
    ZEMRecord() : _owner(nullptr) {}
    explicit ZEMRecord(ZEMRecord* owner) : _owner(owner) {}

    // Others point at a record by its address.
    ZEMRecord(const ZEMRecord&) = delete;
    ZEMRecord& operator=(const ZEMRecord&) = delete;

    ZEMRecord* _owner; // null for a file
};
