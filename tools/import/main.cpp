// SPDX-License-Identifier: MIT
//
// zem-import: turns the coverage that other tools write into a map file and a log file.
#include "qip/Support/qipVisibleText.h"
#include "qip/Support/standardStreams.h"
#include "tools/common/cleanMaps.h"
#include "tools/import/ImportJob.h"
#include "tools/import/ImportOptions.h"
#include "tools/import/cobertura/CoberturaImporter.h"
#include "tools/import/gcc/GccImporter.h"
#include "tools/import/gcov/GcovImporter.h"
#include "tools/import/lcov/LcovImporter.h"

#include <cstring>
#include <exception>
#include <iostream>
#include <memory>
#include <new>
#include <string>

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

// The kinds of coverage that the program reads. An importer of another tool's files is one more
// row.
struct Subcommand
{
    const char* name;
    const char* inputs;
    const char* purpose;
    std::unique_ptr<Importer> (*make)();
};

const Subcommand subcommands[] = {
    {"gcc", "BUILD_DIR...", "read the .gcno and .gcda files of a build made with --coverage",
     makeGcc},
    {"lcov", "FILE|DIR...", "read tracefiles of lcov, and of the tools that write its form",
     makeLcov},
    {"cobertura", "FILE|DIR...", "read Cobertura documents, which gcovr and others write",
     makeCobertura},
    {"gcov", "FILE|DIR...", "read what gcov --json-format wrote", makeGcov},
};

constexpr int ExitGood = 0;
constexpr int ExitBad = 1;

void usage(std::ostream& out)
{
    out << "Usage: zem-import KIND [options] INPUT...\n"
           "Write a map file and a log file that zem shows, from the coverage of another tool.\n";
    for (const Subcommand& subcommand : subcommands) {
        out << "\nzem-import " << subcommand.name << " [options] " << subcommand.inputs << "\n  "
            << subcommand.purpose << "\n";
        subcommand.make()->usage(out);
    }
    out << "\nAll kinds:\n";
    ImportOptions::usage(out);
    out << "  --help           print this text\n"
           "  --version        print the version\n"
           "\nzem-import --clean DIR\n"
           "  remove the maps in DIR that no log there names\n";
}

int misuse(const char* problem, const char* word)
{
    std::cerr << "zem-import: " << problem << qipVisibleText(word) << "\nTry zem-import --help.\n";
    return ExitBad;
}

const Subcommand* findSubcommand(const char* name)
{
    for (const Subcommand& subcommand : subcommands) {
        if (std::strcmp(subcommand.name, name) == 0) {
            return &subcommand;
        }
    }
    return nullptr;
}

int clean(const char* folder)
{
    CleanedMaps result;
    const bool isGood = cleanMaps(folder, result);
    for (const std::string& name : result._removed) {
        std::cout << "zem-import: removed " << qipVisibleText(name.c_str()) << '\n';
    }
    if (!isGood) {
        std::cerr << "zem-import: cannot clean " << qipVisibleText(folder) << ": "
                  << qipVisibleText(result._problem.c_str()) << '\n';
        return ExitBad;
    }
    std::cout << "zem-import: " << result._removed.size() << " maps removed, " << result._kept
              << " that logs name are kept\n";
    return ExitGood;
}

int importKind(const Subcommand& subcommand, char** words)
{
    const std::unique_ptr<Importer> importer = subcommand.make();
    ImportOptions options;
    while (*words != nullptr) {
        if (words[0][0] != '-') {
            importer->input(*words);
            options._inputs.emplace_back(*words++);
            continue;
        }
        int taken = options.take(words);
        taken = taken != 0 ? taken : importer->option(words);
        if (taken == 0) {
            return misuse("unknown option, or its value is missing: ", *words);
        }
        words += taken;
    }
    if (options._inputs.empty()) {
        return misuse("what to read is missing: ", subcommand.inputs);
    }
    const std::string problem = options.problem();
    if (!problem.empty()) {
        return misuse("", problem.c_str());
    }
    return ImportJob(*importer, options, std::cout, std::cerr).run() ? ExitGood : ExitBad;
}

int runProgram(int argc, char** argv)
{
    if (argc < 2) {
        usage(std::cerr);
        return ExitBad;
    }
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0) {
            usage(std::cout);
            return ExitGood;
        }
        if (std::strcmp(argv[i], "--version") == 0) {
            std::cout << "zem-import " ZEM_VERSION << '\n';
            return ExitGood;
        }
    }
    if (std::strcmp(argv[1], "--clean") == 0) {
        return argc == 3 ? clean(argv[2]) : misuse("one folder is wanted behind ", argv[1]);
    }
    const Subcommand* subcommand = findSubcommand(argv[1]);
    if (subcommand == nullptr) {
        return misuse("unknown kind of coverage: ", argv[1]);
    }
    return importKind(*subcommand, argv + 2);
}

} // namespace

int main(int argc, char** argv)
{
    guardStandardStreams();
    int status = ExitBad;
    try {
        status = runProgram(argc, argv);
    } catch (const std::bad_alloc&) {
        std::cerr << "zem-import: out of memory\n";
    } catch (const std::exception& problem) {
        std::cerr << "zem-import: " << qipVisibleText(problem.what()) << '\n';
    }
    return finishStandardOutput("zem-import") ? status : ExitBad;
}
