// SPDX-License-Identifier: MIT
//
// Loads a log file, touches every count and prints the file.
#include "fuzz/MemoryFile.h"
#include "fuzz/fuzzTarget.h"
#include "qip/Support/ListIterator.h"
#include "zem/Data/ZEMLogFile.h"

#include <sstream>

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const MemoryFile input(data, size);
    ZEMLogFile file;
    if (file.open(input.path().c_str(), qipVLRecFile::READ) == qipVLRecFile::NoError) {
        (void)file.load(); // any code will do
        std::ostringstream text;
        text << file;
        uint64_t sum = 0;
        ListIterator<ZEMLogFileRecord*> records(file.toc());
        while (const ZEMLogFileRecord* record = records.next()) {
            for (uint32_t i = 0; i < record->_nBlocks; ++i) {
                sum += record->_hits[i];
            }
        }
        text << sum;
    }
    return 0;
}
