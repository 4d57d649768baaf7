// SPDX-License-Identifier: MIT
//
// Writes a map file: its own 64-byte user header and one record for each source file. The reader is
// ZEMMapFile; docs/formats/map.md explains the format.
//
// Life cycle:  create() > add() for each file > close()
#pragma once

#include "qip/Support/qipVLRecFile.h"
#include "tools/common/CoverageModel.h"

class MapWriter : public qipVLRecFile
{
public:
    // Truncates `filename`. Returns 0 or a code of qipVLRecFile::open().
    [[nodiscard]] int create(const char* filename);

    // Appends the record of `file`. REQUIRES: names no longer than RecordPayload::LongestText and
    // block lines up to 65535, as finishCoverage() leaves them.
    // Returns 0, or -3 when the file cannot take the bytes or the record is past 4 GiB.
    [[nodiscard]] int add(const CovFile& file);

    void dump(std::ostream& out) override;

protected:
    int writeHeader() override;
    int processRecord(unsigned int tag, unsigned int size, unsigned int realSize) override;

private:
    static constexpr int HeaderSize = 64; // bytes
};
