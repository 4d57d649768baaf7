// SPDX-License-Identifier: MIT
//
// compare-gcov: compares a map and log that zem-import wrote of a coverage build with what the
// compiler's gcov says of it. script/compare-gcov imports and runs it.
#include "qip/Support/qipVLRecFile.h"
#include "tools/common/parallel.h"
#include "tools/compare/CoverageComparison.h"
#include "tools/compare/GcovFacts.h"
#include "tools/compare/GraphFacts.h"
#include "tools/import/gcc/GccTree.h"
#include "tools/import/gcc/runGcov.h"
#include "tools/import/isBuildProbe.h"
#include "zem/Repository/ZEMRepository.h"

#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <mutex>

namespace {

enum ExitStatus { Agreed = 0, Disagreed = 1, Misused = 2 };

struct Options
{
    const char* log = nullptr;
    std::vector<const char*> builds;
    std::vector<const char*> runs;
    const char* gcov = "gcov";
    SourceFilter filter;
    bool keepsProbes = false;
    size_t nExamples = 1;
    std::vector<const char*> allowed;
    std::vector<const char*> known;
};

void usage(std::ostream& out)
{
    out << "Usage: compare-gcov [options] LOG BUILD_DIR...\n"
           "Compare what zem shows of LOG, imported from BUILD_DIR, with what gcov says of it.\n"
           "  --gcov PROGRAM   the gcov to ask (default: gcov)\n"
           "  --examples N     print N examples of each class of disagreement (default: 1)\n"
           "  --allow CLASS    a disagreement of this class is none\n"
           "  --known FILE     likewise each class that FILE lists: CLASS [MOST] # reason\n"
           "  --exclude GLOB, --only DIR, --system, --probes, --run DIR\n"
           "                   as LOG was imported\n"
           "Exit status: 0 when all classes that occur are allowed, 1 when not, 2 for an error.\n"
           "\nClasses:\n";
    Findings::writeClasses(out);
}

bool takeOption(const char* word, const char* value, Options& options)
{
    const std::string name = word;
    if (name == "--gcov") {
        options.gcov = value;
    } else if (name == "--examples") {
        options.nExamples = static_cast<size_t>(std::strtoul(value, nullptr, 10));
    } else if (name == "--allow") {
        options.allowed.push_back(value);
    } else if (name == "--known") {
        options.known.push_back(value);
    } else if (name == "--exclude") {
        options.filter.exclude(value);
    } else if (name == "--only") {
        options.filter.only(value);
    } else if (name == "--run") {
        options.runs.push_back(value);
    } else {
        return false;
    }
    return true;
}

bool takeWords(int argc, char** argv, Options& options)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--system") == 0) {
            options.filter.keepSystem();
        } else if (std::strcmp(argv[i], "--probes") == 0) {
            options.keepsProbes = true;
        } else if (argv[i][0] == '-') {
            if (i + 1 == argc || !takeOption(argv[i], argv[i + 1], options)) {
                std::cerr << "compare-gcov: unknown option, or its value is missing: " << argv[i]
                          << '\n';
                return false;
            }
            ++i;
        } else if (options.log == nullptr) {
            options.log = argv[i];
        } else {
            options.builds.push_back(argv[i]);
        }
    }
    return !options.builds.empty();
}

bool findUnits(const Options& options, std::vector<GccUnitFiles>& units)
{
    GccTree tree;
    bool isRead = true;
    for (const char* build : options.builds) {
        isRead = tree.addBuild(build) && isRead;
    }
    for (const char* run : options.runs) {
        isRead = tree.addRun(run) && isRead;
    }
    for (const GccUnitFiles& unit : tree.units()) {
        if (options.keepsProbes || !isBuildProbe(unit._notes)) {
            units.push_back(unit);
        }
    }
    return isRead && !units.empty();
}

std::string textOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Asks gcov about each unit and reads its graphs; each item is one unit.
class FactsJob : public ParallelJob
{
public:
    FactsJob(const Options& options, const std::vector<GccUnitFiles>& units, BuildFacts& facts)
        : _options(options), _units(units), _facts(facts)
    {}

    void run(size_t item) override
    {
        const GccUnitFiles& unit = _units[item];
        BuildFacts facts;
        std::string json;
        std::string problem;
        if (!runGcov(_options.gcov, unit, json, problem) ||
            !addGcovFacts(json, _options.filter, facts)) {
            facts._failures.push_back(unit._notes + ": " + _options.gcov + " gave no lines");
        } else if (!addGraphFacts(textOf(unit._notes),
                                  unit._counters.empty() ? "" : textOf(unit._counters),
                                  _options.filter, facts)) {
            facts._failures.push_back(unit._notes + ": notes and counters cannot be read");
        }
        const std::lock_guard<std::mutex> lock(_mutex);
        _facts.add(facts);
    }

private:
    const Options& _options;
    const std::vector<GccUnitFiles>& _units;
    BuildFacts& _facts;
    std::mutex _mutex;
};

bool takeAllowed(const Options& options, Findings& findings)
{
    for (const char* word : options.allowed) {
        if (!findings.allow(word, UINT64_MAX)) {
            std::cerr << "compare-gcov: no such class: " << word << '\n';
            return false;
        }
    }
    for (const char* path : options.known) {
        std::ifstream file(path);
        std::string problem;
        if (!file || !findings.allowListed(file, problem)) {
            std::cerr << "compare-gcov: " << path << ": " << (file ? "" : "cannot be read ")
                      << problem << '\n';
            return false;
        }
    }
    return true;
}

int compare(const Options& options)
{
    std::vector<GccUnitFiles> units;
    if (!findUnits(options, units)) {
        std::cerr << "compare-gcov: no .gcno file found\n";
        return Misused;
    }
    ZEMRepository repository;
    const int result = repository.processFile(options.log);
    if (result < 0) {
        std::cerr << "compare-gcov: " << options.log << ": " << qipVLRecFile::error(result) << '\n';
        return Misused;
    }
    BuildFacts facts;
    FactsJob job(options, units, facts);
    runParallel(job, units.size(), coreCount());

    CoverageComparison comparison(facts, options.nExamples);
    if (!takeAllowed(options, comparison.findings())) {
        return Misused;
    }
    comparison.run(repository);
    std::cout << units.size() << " units, " << facts._files.size() << " files\n";
    comparison.writeTotals(std::cout);
    comparison.findings().write(std::cout);
    return comparison.findings().isGood() ? Agreed : Disagreed;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        Options options;
        if (!takeWords(argc, argv, options)) {
            usage(std::cerr);
            return Misused;
        }
        return compare(options);
    } catch (const std::exception& problem) {
        std::cerr << "compare-gcov: " << problem.what() << '\n';
        return Misused;
    }
}
