// SPDX-License-Identifier: MIT
//
// Writes a log file: its own 64-byte user header and one record of counts for each source file. The
// reader is ZEMLogFile; docs/formats/log.md explains the format.
//
// Life cycle:  create() > add() for each file > close()
#pragma once

#include "qip/Support/qipVLRecFile.h"
#include "tools/common/CoverageModel.h"
#include "tools/common/RecordPayload.h"

class LogWriter : public qipVLRecFile
{
public:
    // Truncates `filename`. `executionTime` is in seconds since the epoch, 0 when it is not known.
    // Returns 0 or a code of qipVLRecFile::open().
    [[nodiscard]] int create(const char* filename, uint32_t executionTime);

    // Appends the counts of `file`, one for each of its blocks in map order. `mapPath` names the
    // map file that describes it. REQUIRES: names within the bounds that finishCoverage() keeps.
    // Returns 0, or -3 when the file cannot take the bytes or the record is past 4 GiB.
    [[nodiscard]] int add(const CovFile& file, const std::vector<uint32_t>& counts,
                          const std::string& mapPath, bool isBoolean);

    void dump(std::ostream& out) override;

protected:
    int writeHeader() override;
    int processRecord(unsigned int tag, unsigned int size, unsigned int realSize) override;

private:
    static constexpr int HeaderSize = 64; // bytes

    uint32_t _executionTime = 0;
    RecordPayload _payload; // one memory for all
};
