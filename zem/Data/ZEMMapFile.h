// SPDX-License-Identifier: MIT
//
// A map file: what instrumented code is made of. A record file (qipVLRecFile.h) with a 64-byte user
// header (ZEMMapHeader.h); each record describes one source file (ZEMFileRecord.h).
//
//   tag 100, and 0    a source file
//   any other         reported on the standard error stream and skipped
//
// docs/formats/map.md explains the format and dissects a sample.
#pragma once

#include "qip/Support/List.h"
#include "qip/Support/qipMessages.h"
#include "qip/Support/qipVLRecFile.h"
#include "zem/Data/ZEMFileRecord.h"
#include "zem/Data/ZEMMapHeader.h"

class ZEMMapFile : public qipVLRecFile
{
public:
    static constexpr unsigned int FileTag = 100; // on disk

    ZEMMapFile();
    // Leaves the file records alone: whoever takes them from toc() owns them, and whoever loads
    // without taking them deletes them.
    ~ZEMMapFile() override;

    // The number of records; see qipVLRecFile::load(). A payload that cannot be parsed is -9; the
    // records before it are in toc().
    [[nodiscard]] int load() override;

    // Opens with a user header of 64 bytes whatever the third argument says. On top of the codes of
    // qipVLRecFile::open(): -5 and -6 from the map header.
    [[nodiscard]] int open(const char* filename, Mode mode, int userHeaderSz = 0) override;

    // The number of records that there are, and with each record the number that the header states.
    void dump(std::ostream& out) override;

    // The file records in record order.
    List<ZEMFileRecord*>& toc() { return _toc; }

    // How many records load() passed over, as their tag is unknown.
    long unknownRecords() const { return _nUnknown; }

protected:
    int readHeader() override;
    int writeHeader() override;
    int processRecord(unsigned int tag, unsigned int size, unsigned int realSize) override;

private:
    ZEMMapHeader _mapHeader;
    List<ZEMFileRecord*> _toc;
    long _nUnknown = 0;
    qipMessages _messages; // of a load, written at its end
};

// Writes what dump() writes.
std::ostream& operator<<(std::ostream& out, ZEMMapFile& file);
