// SPDX-License-Identifier: MIT
//
// Imports a program and its profile as the importer of "zem-import llvm" does. In the input stand
// three bytes with the length of the program, the program, the profile.
#include "fuzz/MemoryFile.h"
#include "fuzz/fuzzTarget.h"
#include "fuzz/importAndCheck.h"
#include "tools/import/llvm/LlvmImporter.h"

#include <algorithm>
#include <string>

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 3) {
        return 0;
    }
    const size_t rest = size - 3;
    const size_t length =
        std::min<size_t>(rest, size_t(data[0]) << 16 | size_t(data[1]) << 8 | data[2]);
    const MemoryFile program(data + 3, length);
    const MemoryFile profile(data + 3 + length, rest - length);
    LlvmImporter importer;
    // What is of an unknown version would start other programs.
    std::string option = "--llvm-profdata";
    std::string nothing = "/nowhere/llvm-profdata";
    char* words[] = {option.data(), nothing.data(), nullptr};
    (void)importer.option(words);
    importer.input(program.path().c_str());
    importer.input(profile.path().c_str());
    importAndCheck(importer);
    return 0;
}
