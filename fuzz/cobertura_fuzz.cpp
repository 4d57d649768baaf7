// SPDX-License-Identifier: MIT
//
// Imports the bytes as the importer of "zem-import cobertura" does.
#include "fuzz/MemoryFile.h"
#include "fuzz/fuzzTarget.h"
#include "fuzz/importAndCheck.h"
#include "tools/import/cobertura/CoberturaImporter.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const MemoryFile file(data, size);
    CoberturaImporter importer;
    importer.input(file.path().c_str());
    importAndCheck(importer);
    return 0;
}
