// SPDX-License-Identifier: MIT
//
// zem-import: turns the coverage that other tools write into a map file and log files.
#include "qip/Support/endWithoutMemory.h"
#include "qip/Support/qipVisibleText.h"
#include "qip/Support/standardStreams.h"
#include "tools/common/WorkOn.h"
#include "tools/import/CleanEnd.h"
#include "tools/import/ImportCommand.h"
#include "tools/import/cobertura/CoberturaImporter.h"
#include "tools/import/gcc/GccImporter.h"
#include "tools/import/gcov/GcovImporter.h"
#include "tools/import/lcov/LcovImporter.h"
#include "tools/import/llvm/LlvmImporter.h"

#include <exception>
#include <iostream>
#include <memory>
#include <new>
#include <vector>

namespace {

std::unique_ptr<Importer> makeGcc()
{
    return std::make_unique<GccImporter>();
}

std::unique_ptr<Importer> makeLcov()
{
    return std::make_unique<LcovImporter>();
}

std::unique_ptr<Importer> makeCobertura()
{
    return std::make_unique<CoberturaImporter>();
}

std::unique_ptr<Importer> makeGcov()
{
    return std::make_unique<GcovImporter>();
}

std::unique_ptr<Importer> makeLlvm()
{
    return std::make_unique<LlvmImporter>();
}

// The kinds of coverage that the program reads. An importer of another tool's files is one more
// row.
std::vector<ImportKind> knownKinds()
{
    return {
        {"gcc", "BUILD_DIR...", "read the .gcno and .gcda files of a build made with --coverage",
         makeGcc},
        {"llvm", "PROGRAM... PROFILE...",
         "read programs built with clang++ -fprofile-instr-generate -fcoverage-mapping and the "
         ".profraw\n"
         "  files that they left, or folders that hold both",
         makeLlvm},
        {"lcov", "FILE|DIR...", "read tracefiles of lcov, and of the tools that write its form",
         makeLcov},
        {"cobertura", "FILE|DIR...", "read Cobertura documents, which gcovr and others write",
         makeCobertura},
        {"gcov", "FILE|DIR...", "read what gcov --json-format wrote", makeGcov},
    };
}

int runProgram(char** words)
{
    int status = 1;
    try {
        const std::vector<ImportKind> kinds = knownKinds();
        status = ImportCommand(kinds, ZEM_VERSION, std::cout, std::cerr).run(words);
    } catch (const std::bad_alloc&) {
        const char* work = WorkOn::interrupted();
        std::cerr << "zem-import: out of memory" << (work[0] == '\0' ? "" : " while ")
                  << qipVisibleText(work) << "; give the program more, or import less at once\n";
    } catch (const std::exception& problem) {
        std::cerr << "zem-import: " << qipVisibleText(problem.what()) << '\n';
    }
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    endWithoutMemory("zem-import", 1);
    guardStandardStreams();
    CleanEnd::start();
    const int status = argc == 0 ? 1 : runProgram(argv + 1);
    return finishStandardOutput("zem-import") ? status : 1;
}
