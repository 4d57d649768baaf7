// SPDX-License-Identifier: MIT
//
// zem-import: turns the coverage that other tools write into a map file and a log file.
#include "qip/Support/qipVLRecFile.h"
#include "tools/common/finishCoverage.h"
#include "tools/common/parallel.h"
#include "tools/common/writeCoverage.h"
#include "tools/import/gcc/GccImporter.h"

#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>

namespace {

std::unique_ptr<Importer> makeGcc()
{
    return std::make_unique<GccImporter>();
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
    {"gcc", "BUILD_DIR...", "read the .gcno and .gcda files of a build made with g++ --coverage",
     makeGcc},
};

constexpr int ExitGood = 0;
constexpr int ExitBad = 1;

struct Output
{
    const char* folder = ".";
    const char* name = "coverage";

    std::string stem() const { return std::string(folder) + "/" + name; }
};

void usage(std::ostream& out)
{
    out << "Usage: zem-import KIND [options] INPUT...\n"
           "Write a map file and a log file that zem shows, from the coverage of another tool.\n";
    for (const Subcommand& subcommand : subcommands) {
        out << "\nzem-import " << subcommand.name << " [options] " << subcommand.inputs << "\n  "
            << subcommand.purpose << "\n";
        subcommand.make()->usage(out);
    }
    out << "\nAll kinds:\n"
           "  -o DIR           where to write (default: the current folder)\n"
           "  --name NAME      write NAME.map, NAME.log and NAME.losses (default: coverage)\n"
           "  --help           print this text\n"
           "  --version        print the version\n";
}

int misuse(const char* problem, const char* word)
{
    std::cerr << "zem-import: " << problem << word << "\nTry zem-import --help.\n";
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

// Returns how many words it took, 0 for none.
int commonOption(char** words, Output& output)
{
    if (words[1] == nullptr) {
        return 0;
    }
    if (std::strcmp(words[0], "-o") == 0) {
        output.folder = words[1];
        return 2;
    }
    if (std::strcmp(words[0], "--name") == 0) {
        output.name = words[1];
        return 2;
    }
    return 0;
}

void summarise(const CoverageModel& model, const ImportLosses& losses, const std::string& stem)
{
    size_t functions = 0;
    size_t blocks = 0;
    for (const CovFile& file : model._files) {
        functions += file._functions.size();
        for (const CovFunction& function : file._functions) {
            blocks += function._blocks.size();
        }
    }
    std::cout << "zem-import: " << stem << ".map and .log: " << model._files.size() << " files, "
              << functions << " functions, " << blocks << " blocks";
    const std::string text = losses.text();
    std::cout << (text.empty() ? "" : "; ") << text << std::endl;
}

int importAndWrite(Importer& importer, const Output& output)
{
    CoverageModel model;
    ImportLosses losses;
    if (!importer.import(model, losses, coreCount())) {
        return ExitBad;
    }
    finishCoverage(model, losses, coreCount());
    if (model._files.empty()) {
        const std::string text = losses.text();
        std::cerr << "zem-import: nothing to write: no function is left"
                  << (text.empty() ? "" : " (") << text << (text.empty() ? "" : ")") << '\n';
        return ExitBad;
    }
    std::error_code ignored; // what is not there shows when the files are created
    std::filesystem::create_directories(output.folder, ignored);
    std::string failure;
    const int result = writeCoverage(model, losses, output.stem(), failure);
    if (result != qipVLRecFile::NoError) {
        std::cerr << "zem-import: cannot write " << failure << ": " << qipVLRecFile::error(result)
                  << '\n';
        return ExitBad;
    }
    summarise(model, losses, output.stem());
    return losses._failedUnits == 0 ? ExitGood : ExitBad;
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
            std::cout << "zem-import " ZEM_VERSION << std::endl;
            return ExitGood;
        }
    }
    const Subcommand* subcommand = findSubcommand(argv[1]);
    if (subcommand == nullptr) {
        return misuse("unknown kind of coverage: ", argv[1]);
    }
    const std::unique_ptr<Importer> importer = subcommand->make();
    Output output;
    bool hasInput = false;
    for (int i = 2; i < argc;) {
        if (argv[i][0] != '-') {
            importer->input(argv[i++]);
            hasInput = true;
            continue;
        }
        int taken = commonOption(argv + i, output);
        taken = taken != 0 ? taken : importer->option(argv + i);
        if (taken == 0) {
            return misuse("unknown option, or its value is missing: ", argv[i]);
        }
        i += taken;
    }
    if (!hasInput) {
        return misuse("what to read is missing: ", subcommand->inputs);
    }
    if (std::strchr(output.name, '/') != nullptr || output.name[0] == '\0') {
        return misuse("not the name of a file: ", output.name);
    }
    return importAndWrite(*importer, output);
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return runProgram(argc, argv);
    } catch (const std::exception& problem) {
        // Memory that cannot be had; the files of an earlier import are still whole.
        std::cerr << "zem-import: " << problem.what() << '\n';
        return ExitBad;
    }
}
