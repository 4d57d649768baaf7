// SPDX-License-Identifier: MIT
//
// A log file: how often each block ran in one run. A record file (qipVLRecFile.h) with a 64-byte
// user header (ZEMLogHeader.h); each record has the counts of one source file
// (ZEMLogFileRecord.h).
//
//   tag 101, and 0    counts of a source file
//   any other         reported on the standard error stream and skipped
//
// docs/formats/log.md explains the format and dissects a sample.
#pragma once

#include "qip/Support/List.h"
#include "qip/Support/qipMessages.h"
#include "qip/Support/qipVLRecFile.h"
#include "zem/Data/ZEMLogFileRecord.h"
#include "zem/Data/ZEMLogHeader.h"

#include <cstddef>
#include <memory_resource>

class ZEMLogFile : public qipVLRecFile
{
public:
    static constexpr unsigned int ResultsTag = 101; // on disk

    ZEMLogFile();
    // Keeps its records in the `size` bytes at `buffer`, borrowed, as far as they reach: who loads
    // one log after the other need not take fresh memory for each.
    ZEMLogFile(void* buffer, size_t size);
    // Frees its records.
    ~ZEMLogFile() override;

    // The number of records; see qipVLRecFile::load(). A payload that cannot be parsed is -9; the
    // records before it are in toc().
    [[nodiscard]] int load() override;

    // Opens with a user header of 64 bytes whatever the third argument says. On top of the codes of
    // qipVLRecFile::open(): -5 and -6 from the log header.
    [[nodiscard]] int open(const char* filename, Mode mode, int userHeaderSz = 0) override;

    // The number of records that there are, and with each record the number that the header states.
    void dump(std::ostream& out) override;

    // The records in file order. They and the list's nodes are the file's: nothing may be taken
    // out.
    List<ZEMLogFileRecord*>& toc() { return _toc; }

    // How many records load() passed over, as their tag is unknown.
    long unknownRecords() const { return _nUnknown; }

protected:
    int readHeader() override;
    int writeHeader() override;
    int processRecord(unsigned int tag, unsigned int size, unsigned int realSize) override;

private:
    dLinkT<ZEMLogFileRecord*>* makeNode();

    ZEMLogHeader _logHeader;
    std::pmr::monotonic_buffer_resource _memory; // of all records
    List<ZEMLogFileRecord*> _toc;
    long _nUnknown = 0;
    qipMessages _messages; // of a load, written at its end
};

// Writes what dump() writes.
std::ostream& operator<<(std::ostream& out, ZEMLogFile& file);
