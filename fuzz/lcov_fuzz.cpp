// SPDX-License-Identifier: MIT
//
// Imports the bytes as the importer of "zem-import lcov" does.
#include "fuzz/MemoryFile.h"
#include "fuzz/fuzzTarget.h"
#include "fuzz/importAndCheck.h"
#include "tools/import/lcov/LcovImporter.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const MemoryFile file(data, size);
    LcovImporter importer;
    importer.input(file.path().c_str());
    importAndCheck(importer);
    return 0;
}
