// SPDX-License-Identifier: MIT
//
// zem-import: turns the coverage that other tools write into a map file and a log file.
#include "qip/Support/qipVisibleText.h"
#include "qip/Support/standardStreams.h"
#include "tools/common/PendingFile.h"
#include "tools/common/RelativePath.h"
#include "tools/common/cleanMaps.h"
#include "tools/common/finishCoverage.h"
#include "tools/common/missingSources.h"
#include "tools/common/parallel.h"
#include "tools/common/writeCoverage.h"
#include "tools/import/gcc/GccImporter.h"

#include <cstring>
#include <exception>
#include <iostream>
#include <memory>
#include <new>
#include <string>
#include <vector>

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

// What the words common to all kinds ask for.
struct Request
{
    CoverageOutput output;
    NameStyle names;
    std::vector<std::string> inputs;
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
           "  --name NAME      write NAME-<digest>.map, NAME.log and NAME.losses (default: "
           "coverage)\n"
           "  --relative       write paths as seen from the current folder\n"
           "  --full-names     do not shorten long names\n"
           "  --help           print this text\n"
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

// Returns how many words it took, 0 for none.
int commonOption(char** words, Request& request)
{
    if (std::strcmp(words[0], "--relative") == 0) {
        request.output._isRelative = true;
        return 1;
    }
    if (std::strcmp(words[0], "--full-names") == 0) {
        request.names._isFull = true;
        return 1;
    }
    if (words[1] == nullptr) {
        return 0;
    }
    if (std::strcmp(words[0], "-o") == 0) {
        request.output._folder = words[1];
        return 2;
    }
    if (std::strcmp(words[0], "--name") == 0) {
        request.output._name = words[1];
        return 2;
    }
    return 0;
}

void summarise(const CoverageModel& model, const ImportLosses& losses, const Request& request,
               const std::string& map)
{
    size_t functions = 0;
    size_t blocks = 0;
    for (const CovFile& file : model._files) {
        functions += file._functions.size();
        for (const CovFunction& function : file._functions) {
            blocks += function._blocks.size();
        }
    }
    std::cout << "zem-import: " << qipVisibleText(request.output._folder.c_str()) << "/"
              << qipVisibleText(request.output._name.c_str()) << ".log of map "
              << qipVisibleText(map.c_str() + (map.rfind('/') + 1)) << ": " << model._files.size()
              << " files, " << functions << " functions, " << blocks << " blocks";
    const std::string text = losses.text();
    std::cout << (text.empty() ? "" : "; ") << text << '\n';
}

void makeRelative(CoverageModel& model)
{
    const RelativePath relative;
    for (CovFile& file : model._files) {
        file._path = relative.of(file._path);
    }
}

int importAndWrite(Importer& importer, const Request& request)
{
    CoverageModel model;
    ImportLosses losses;
    if (!importer.import(model, losses, coreCount())) {
        return ExitBad;
    }
    finishCoverage(model, request.names, losses, coreCount());
    if (model._files.empty()) {
        const std::string text = losses.text();
        std::cerr << "zem-import: nothing to write: no function is left"
                  << (text.empty() ? "" : " (") << text << (text.empty() ? "" : ")") << '\n';
        return ExitBad;
    }
    const std::string missing = missingSources(model, request.inputs);
    if (!missing.empty()) {
        std::cerr << "zem-import: " << qipVisibleText(missing.c_str()) << '\n';
    }
    if (request.output._isRelative) {
        makeRelative(model);
    }
    PendingFile::removeOnSignals();
    CoverageResult result;
    if (!writeCoverage(model, losses, request.output, result)) {
        std::cerr << "zem-import: " << qipVisibleText(result._problem.c_str()) << '\n';
        return ExitBad;
    }
    summarise(model, losses, request, result._map);
    return losses.isIncomplete() ? ExitBad : ExitGood;
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
    Request request;
    while (*words != nullptr) {
        if (words[0][0] != '-') {
            importer->input(*words);
            request.inputs.emplace_back(*words++);
            continue;
        }
        int taken = commonOption(words, request);
        taken = taken != 0 ? taken : importer->option(words);
        if (taken == 0) {
            return misuse("unknown option, or its value is missing: ", *words);
        }
        words += taken;
    }
    if (request.inputs.empty()) {
        return misuse("what to read is missing: ", subcommand.inputs);
    }
    const std::string& name = request.output._name;
    if (name.find('/') != std::string::npos || name.empty()) {
        return misuse("not the name of a file: ", name.c_str());
    }
    if (request.output._folder.empty()) {
        return misuse("the folder to write into has no name: -o ", "''");
    }
    return importAndWrite(*importer, request);
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
