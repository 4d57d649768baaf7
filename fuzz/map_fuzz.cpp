// SPDX-License-Identifier: MIT
//
// Loads a map file and prints it, which touches every name and block.
#include "fuzz/MemoryFile.h"
#include "fuzz/fuzzTarget.h"
#include "qip/Support/ListIterator.h"
#include "zem/Data/ZEMMapFile.h"

#include <sstream>

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const MemoryFile input(data, size);
    ZEMMapFile file;
    if (file.open(input.path().c_str(), qipVLRecFile::READ) == qipVLRecFile::NoError) {
        (void)file.load(); // any code will do
        std::ostringstream text;
        text << file;
    }
    ListIterator<ZEMFileRecord*> files(file.toc());
    while (const ZEMFileRecord* record = files.next()) {
        delete record;
    }
    return 0;
}
