// SPDX-License-Identifier: MIT
//
// The whole way on a real build: tests/data/gcc-coverage is built with the g++ that is installed,
// run, and imported by the built zem-import.
#include "qip/Support/ListIterator.h"
#include "qip/Support/qipVLRecFile.h"
#include "tests/support/Golden.h"
#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/GcovCounts.h"
#include "tools/import/gcc/FlowSolver.h"
#include "tools/import/gcc/GcdaFile.h"
#include "tools/import/gcc/runGcov.h"
#include "tools/import/gcov/GcovDocument.h"
#include "zem/Data/ZEMLogFile.h"
#include "zem/Data/ZEMMapFile.h"
#include "zem/Repository/ZEMRepository.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

const unsigned char* bytesOf(const std::string& text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

// A map as text without paths' folders: "file", then "  name start-end [start-stop]...".
std::string mapText(const std::string& path)
{
    ZEMMapFile map;
    if (map.open(path.c_str(), qipVLRecFile::READ) != 0 || map.load() < 0) {
        return "(not a map)";
    }
    std::string text;
    ListIterator<ZEMFileRecord*> files(map.toc());
    while (ZEMFileRecord* record = files.next()) {
        const std::unique_ptr<ZEMFileRecord> file(record);
        text += fs::path(file->_filename).filename().string() + "\n";
        ListIterator<ZEMFuncRecord*> functions(file->_funcList);
        while (const ZEMFuncRecord* function = functions.next()) {
            text += std::string("  ") + function->_funcname + "\n";
        }
    }
    return text;
}

class ZemImportTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fs::copy(ZEM_SOURCE_DIR "/tests/data/gcc-coverage", _dir.path("src"));
        fs::create_directory(_dir.path("build"));
        ASSERT_EQ(run("cd build && g++ --coverage -O0 -I../src -c ../src/main.cc && "
                      "g++ --coverage -O0 -c '../src/jobs and shapes.cc' && "
                      "g++ --coverage *.o -o work"),
                  0);
    }

    // Runs a shell command in the test's folder; its output goes into the file "out".
    int run(const std::string& command)
    {
        const std::string line = "cd '" + _dir.path() + "' && { " + command + "; } > out 2>&1";
        const int status = std::system(line.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    int import(const std::string& words) { return run(ZEM_BINARY_DIR "/bin/zem-import " + words); }

    std::string output() const { return TempDir::read(_dir.path("out")); }

    // All counts of a log.
    std::vector<uint32_t> countsOf(const std::string& name) const
    {
        ZEMLogFile log;
        EXPECT_EQ(log.open(_dir.path(name).c_str(), qipVLRecFile::READ, 0), 0);
        EXPECT_GT(log.load(), 0);
        std::vector<uint32_t> counts;
        ListIterator<ZEMLogFileRecord*> records(log.toc());
        while (const ZEMLogFileRecord* record = records.next()) {
            counts.insert(counts.end(), record->_hits, record->_hits + record->_nBlocks);
        }
        return counts;
    }

    // The only map of this name in a folder of the test's.
    std::string mapOf(const std::string& name, const std::string& folder = ".") const
    {
        std::string result;
        for (const fs::directory_entry& entry : fs::directory_iterator(_dir.path(folder))) {
            const std::string path = entry.path().string();
            if (entry.path().extension() == ".map" &&
                entry.path().filename().string().compare(0, name.size() + 1, name + "-") == 0) {
                EXPECT_EQ(result, "") << path;
                result = path;
            }
        }
        return result;
    }

    const TempDir _dir;
};

// What the solved graphs of a unit say about each line, counted as gcov does.
void countLines(const std::string& notesPath, const std::string& countersPath, GcovCounts& own)
{
    const std::string notesText = TempDir::read(notesPath);
    const std::string countersText = TempDir::read(countersPath);
    GcnoFile notes(bytesOf(notesText), notesText.size());
    ASSERT_EQ(notes.open(), GcnoFile::Ok);
    GcdaFile counters(bytesOf(countersText), countersText.size());
    ASSERT_EQ(counters.open(notes.stamp()), GcdaFile::Ok);
    std::vector<GcnoFunction> functions;
    std::vector<std::vector<int64_t>> counts;
    GcnoFunction function;
    while (notes.nextFunction(function)) {
        ASSERT_TRUE(notes.readGraph(function));
        ASSERT_TRUE(counters.fillCounters(function));
        counts.emplace_back();
        ASSERT_TRUE(solveFlow(function, counts.back())) << function._symbol;
        functions.push_back(function);
    }
    ASSERT_FALSE(notes.damaged());
    own.addUnit(functions, counts);
}

// What gcov and the solved graphs say about each line of a unit, system headers included.
void compareLines(const std::string& notesPath, const std::string& countersPath)
{
    GcovCounts own;
    countLines(notesPath, countersPath, own);

    std::string json;
    std::string problem;
    ASSERT_TRUE(runGcov("gcov", {notesPath, countersPath}, json, problem));
    std::map<std::string, std::map<uint32_t, int64_t>> compilers;
    GcovDocument gcov;
    ASSERT_TRUE(gcov.parse(json)) << gcov.problem();
    for (const GcovSource& source : gcov.sources()) {
        for (const GcovFunction& entry : source._functions) {
            for (const GcovLine& line : entry._lines) {
                compilers[source._path][line._line] += line._count;
            }
        }
    }
    for (const auto& file : own.lines()) {
        for (const auto& line : file.second) {
            const auto found = compilers[file.first].find(line.first);
            if (found != compilers[file.first].end()) {
                EXPECT_EQ(line.second, found->second) << file.first << ":" << line.first;
                compilers[file.first].erase(found);
            } else {
                // Text of a file none of whose functions surrounds it.
                EXPECT_EQ(file.first.compare(0, 5, "/usr/"), 0) << file.first << ":" << line.first;
            }
        }
        EXPECT_TRUE(compilers[file.first].empty()) << file.first;
        compilers.erase(file.first);
    }
    EXPECT_TRUE(compilers.empty());
}

TEST_F(ZemImportTest, EveryLineCountsWhatTheCompilersOwnToolSays)
{
    ASSERT_EQ(run("build/work && build/work 40"), 0) << output();
    for (const char* unit : {"main", "jobs and shapes"}) {
        const std::string stem = _dir.path("build/") + unit;
        compareLines(stem + ".gcno", stem + ".gcda");
    }
}

// One line "file:line count" for each line with code, of what `llvm-cov gcov -t` prints.
std::vector<std::string> llvmLines(const std::string& text)
{
    std::vector<std::string> result;
    std::istringstream rows(text);
    std::string file;
    for (std::string row; std::getline(rows, row);) {
        const size_t colon = row.find(':');
        const size_t second = row.find(':', colon + 1);
        if (second == std::string::npos) {
            continue;
        }
        const int line = std::atoi(row.c_str() + colon + 1);
        const std::string count = row.substr(row.find_first_not_of(' '), colon);
        if (line == 0 && row.compare(second, 8, ":Source:") == 0) {
            file = fs::path(row.substr(second + 8)).lexically_normal().string();
        } else if (line != 0 && count[0] != '-') {
            result.push_back(file + ":" + std::to_string(line) + " " +
                             std::to_string(std::atoll(count.c_str())));
        }
    }
    std::sort(result.begin(), result.end());
    return result;
}

TEST_F(ZemImportTest, EveryLineOfClangsFilesCountsWhatLlvmsToolSays)
{
    if (run("clang++ --version && llvm-cov --version") != 0) {
        GTEST_SKIP() << "no clang++ with llvm-cov";
    }
    ASSERT_EQ(run("mkdir clang && cd clang && clang++ --coverage -I../src -c ../src/main.cc "
                  "'../src/jobs and shapes.cc' && clang++ --coverage *.o -o work && ./work"),
              0)
        << output();
    for (const char* unit : {"main", "jobs and shapes"}) {
        const std::string stem = _dir.path("clang/") + unit;
        ASSERT_EQ(run("cd clang && llvm-cov gcov -t '" + std::string(unit) + ".gcda'"), 0);
        GcovCounts counts;
        countLines(stem + ".gcno", stem + ".gcda", counts);
        std::vector<std::string> own;
        for (const auto& file : counts.lines()) {
            const std::string path = fs::path(file.first).lexically_normal().string();
            for (const auto& line : file.second) {
                own.push_back(path + ":" + std::to_string(line.first) + " " +
                              std::to_string(line.second));
            }
        }
        std::sort(own.begin(), own.end());
        std::vector<std::string> llvms = llvmLines(output());
        // Clang's counters do not add up where an exception leaves a block: one arc that ends on
        // this line has a negative count, of which the two make different sums above 0.
        const auto isOdd = [](const std::string& row) {
            return row.compare(0, 18, "../src/main.cc:25 ") == 0;
        };
        own.erase(std::remove_if(own.begin(), own.end(), isOdd), own.end());
        llvms.erase(std::remove_if(llvms.begin(), llvms.end(), isOdd), llvms.end());
        EXPECT_GT(own.size(), 50u);
        EXPECT_EQ(own, llvms);
    }
    ASSERT_EQ(import("gcc --name clang clang"), 0) << output();
    EXPECT_EQ(output().find("unknown counts"), std::string::npos) << output();
    const std::string text = mapText(mapOf("clang"));
    EXPECT_NE(text.find("  larger<...>__F4auto4auto\n"), std::string::npos) << text;
    EXPECT_NE(text.find("  jobs::total__Fi\n"), std::string::npos) << text;

    // A log of its own changes nothing.
    ASSERT_EQ(run("GCOV_PREFIX=$PWD/run clang/work"), 0);
    ASSERT_EQ(import("gcc --each-run --run run -o each --name clang clang"), 0) << output();
    EXPECT_EQ(TempDir::read(mapOf("clang", "each")), TempDir::read(mapOf("clang")));
    EXPECT_EQ(countsOf("each/run.log"), countsOf("clang.log"));
}

TEST_F(ZemImportTest, MapHoldsFilesFunctionsAndNames)
{
    ASSERT_EQ(run("build/work"), 0);
    ASSERT_EQ(import("gcc -o out.d --name first build"), 0) << output();
    const std::string text = mapText(mapOf("first", "out.d"));
    for (const char* name :
         {"jobs and shapes.cc\n", "main.cc\n", "shapes.h\n", "  main\n",
          "  larger<...>__F4auto4auto\n", "  Shape::operator<__FRC5Shape\n", "  neverCalled__Fi\n",
          "  jobs::total__Fi\n", "  (anonymous namespace)::counted__Fv\n",
          "  jobs::Square::Square__Fi\n"}) {
        const size_t at = text.find(name);
        EXPECT_NE(at, std::string::npos) << name << text;
        // A header's function stands once, whatever number of units include it.
        EXPECT_EQ(text.find(name, at + 1), std::string::npos) << name << text;
    }
    EXPECT_EQ(text.find("vector.tcc"), std::string::npos);
    EXPECT_NE(output().find("zem-import: out.d/first.log of map first-"), std::string::npos);
    EXPECT_EQ(output().find('\n'), output().size() - 1) << output();
}

TEST_F(ZemImportTest, InstancesStayApartWhenAskedFor)
{
    ASSERT_EQ(run("build/work"), 0);
    ASSERT_EQ(import("gcc --instances --name each build"), 0) << output();
    const std::string text = mapText(mapOf("each"));
    EXPECT_NE(text.find("  larger<int>__Fii\n"), std::string::npos) << text;
    EXPECT_NE(text.find("  larger<long>__Fll\n"), std::string::npos) << text;
}

TEST_F(ZemImportTest, ProbesOfBuildSystemsAreLeftOutUnlessAskedFor)
{
    ASSERT_EQ(
        run("mkdir -p build/CMakeFiles/3.25.1/CompilerIdCXX build/meson-private && "
            "mv build/main.gc* build/CMakeFiles/3.25.1/CompilerIdCXX && "
            "cp build/CMakeFiles/3.25.1/CompilerIdCXX/main.gcno build/meson-private/try.gcno"),
        0);
    ASSERT_EQ(import("gcc --name some build"), 0) << output();
    EXPECT_EQ(mapText(mapOf("some")).find("main.cc"), std::string::npos);
    EXPECT_NE(output().find("2 units of build system probes"), std::string::npos) << output();
    ASSERT_EQ(import("gcc --probes --name all build"), 0) << output();
    EXPECT_NE(mapText(mapOf("all")).find("main.cc"), std::string::npos);
    EXPECT_EQ(output().find("probes"), std::string::npos) << output();
}

TEST_F(ZemImportTest, OptimisedBuildIsShownAsItRan)
{
    ASSERT_EQ(run("cd build && rm -f * && g++ --coverage -O2 -I../src -c ../src/main.cc && "
                  "g++ --coverage -O2 -c '../src/jobs and shapes.cc' && "
                  "g++ --coverage *.o -o work && ./work 40"),
              0)
        << output();
    ASSERT_EQ(import("gcc --name fast build"), 0) << output();
    EXPECT_EQ(output().find("shown as untested"), std::string::npos) << output();
}

TEST_F(ZemImportTest, AnotherRunGivesTheSameMapAndALogThatMerges)
{
    ASSERT_EQ(run("GCOV_PREFIX=$PWD/run1 build/work && GCOV_PREFIX=$PWD/run2 build/work 40"), 0);
    ASSERT_EQ(import("gcc --run run1 --name one build"), 0) << output();
    ASSERT_EQ(import("gcc --run run2 --name two build"), 0) << output();
    ASSERT_EQ(import("gcc --name none build"), 0) << output();
    const std::string map = TempDir::read(mapOf("one"));
    EXPECT_EQ(map, TempDir::read(mapOf("two")));
    EXPECT_EQ(map, TempDir::read(mapOf("none")));
    EXPECT_NE(TempDir::read(_dir.path("one.log")).substr(128),
              TempDir::read(_dir.path("two.log")).substr(128));

    // Both at once, read as what the folder is found to hold.
    ASSERT_EQ(import("--each-run --run run1 --run run2 -o each build"), 0) << output();
    EXPECT_EQ(output().find("zem-import: taking build as gcc\nzem-import: each/run1.log of map "),
              0u)
        << output();
    EXPECT_EQ(map, TempDir::read(mapOf("coverage", "each")));
    EXPECT_EQ(countsOf("each/run1.log"), countsOf("one.log"));
    EXPECT_EQ(countsOf("each/run2.log"), countsOf("two.log"));
    ASSERT_EQ(import("gcc --run run1 --run run2 --name sum build"), 0) << output();
    const std::vector<uint32_t> one = countsOf("one.log");
    const std::vector<uint32_t> two = countsOf("two.log");
    const std::vector<uint32_t> sum = countsOf("sum.log");
    ASSERT_EQ(sum.size(), one.size());
    for (size_t i = 0; i < sum.size(); ++i) {
        // Where a function's copies differ the greatest of a line counts, of each run or of both.
        EXPECT_LE(std::max(one[i], two[i]), sum[i]) << i;
        EXPECT_LE(sum[i], one[i] + two[i]) << i;
    }

    ZEMRepository repository;
    ASSERT_EQ(repository.processFile(_dir.path("one.log").c_str()), 0);
    long uncovered = 0;
    long total = 0;
    repository.coverageSummary(uncovered, total);
    EXPECT_GT(total, 50);
    EXPECT_GT(uncovered, 0);
    EXPECT_LT(uncovered, total / 2);
    ASSERT_EQ(repository.processFile(_dir.path("two.log").c_str()), 0);
    long both = 0;
    repository.coverageSummary(uncovered, both);
    EXPECT_EQ(both, 2 * total);
    ASSERT_EQ(repository.processFile(_dir.path("none.log").c_str()), 0);
    long three = 0;
    long uncoveredOfThree = 0;
    repository.coverageSummary(uncoveredOfThree, three);
    EXPECT_EQ(three, 3 * total);
    EXPECT_EQ(uncoveredOfThree, uncovered + total);
}

TEST_F(ZemImportTest, AnotherBuildLeavesTheMapOfAnOlderLog)
{
    ASSERT_EQ(run("build/work"), 0);
    ASSERT_EQ(import("gcc build"), 0) << output();
    const std::string old = mapOf("coverage");
    const std::string bytes = TempDir::read(old);
    ASSERT_EQ(run("mv coverage.log old.log && rm build/*.gc* && cd build && "
                  "g++ --coverage -O2 -I../src ../src/main.cc '../src/jobs and shapes.cc' -o work"),
              0)
        << output();
    ASSERT_EQ(import("gcc build"), 0) << output();
    EXPECT_EQ(TempDir::read(old), bytes);
    ZEMRepository repository;
    EXPECT_EQ(repository.processFile(_dir.path("old.log").c_str()), 0);

    ASSERT_EQ(import("--clean ."), 0);
    EXPECT_EQ(output(), "zem-import: 0 maps removed, 2 that logs name are kept\n");
    fs::remove(_dir.path("coverage.log"));
    ASSERT_EQ(import("--clean ."), 0);
    EXPECT_NE(output().find("1 maps removed, 1 that logs name are kept\n"), std::string::npos);
    EXPECT_EQ(mapOf("coverage"), old);
}

TEST_F(ZemImportTest, RelativePathsAreFoundFromTheFolder)
{
    ASSERT_EQ(run("build/work"), 0);
    ASSERT_EQ(import("gcc --relative -o cov --name r build"), 0) << output();
    ASSERT_EQ(
        run("mkdir far && mv src cov far && cd far && " ZEM_BINARY_DIR "/bin/zem-report cov/r.log"),
        0)
        << output();
    EXPECT_NE(output().find("src/jobs and shapes.cc"), std::string::npos) << output();
    EXPECT_EQ(output().find(_dir.path()), std::string::npos) << output();
    EXPECT_EQ(mapText(mapOf("r", "far/cov")).find("jobs and shapes.cc"), 0u);
}

TEST_F(ZemImportTest, EveryCutOfTheCountersIsAnErrorOfTheirUnit)
{
    ASSERT_EQ(run("build/work"), 0);
    const std::string path = _dir.path("build/main.gcda");
    const std::string whole = TempDir::read(path);
    for (size_t size = 0; size < whole.size(); size += 1 + size % 97) {
        _dir.write("build/main.gcda", whole.substr(0, size));
        ASSERT_EQ(import("gcc build"), 1) << size;
        EXPECT_NE(output().find("main.gcno: the .gcda file "), std::string::npos) << output();
        EXPECT_NE(output().find(": run the tests again, or delete " + path), std::string::npos);
    }
}

// Where the last function of notes begins: its record is followed by that of its blocks.
size_t lastFunction(const std::string& notes)
{
    constexpr uint32_t FunctionTag = 0x01000000;
    constexpr uint32_t BlocksTag = 0x01410000;
    const auto wordAt = [&notes](size_t at) {
        uint32_t word = 0;
        if (at < notes.size() && notes.size() - at >= sizeof word) {
            std::memcpy(&word, notes.data() + at, sizeof word);
        }
        return word;
    };
    size_t last = 0;
    for (size_t at = 4; at < notes.size(); at += 4) {
        const size_t length = wordAt(at + 4); // in bytes, in words before version 12
        if (wordAt(at) == FunctionTag &&
            (wordAt(at + 8 + length) == BlocksTag || wordAt(at + 8 + 4 * length) == BlocksTag)) {
            last = at;
        }
    }
    return last;
}

// Each record of the notes is whole, so that they alone cannot tell.
TEST_F(ZemImportTest, NotesThatLostTheirLastFunctionAreAnErrorOfTheirUnit)
{
    ASSERT_EQ(run("build/work"), 0);
    const std::string whole = TempDir::read(_dir.path("build/main.gcno"));
    ASSERT_NE(lastFunction(whole), 0u);
    _dir.write("build/main.gcno", whole.substr(0, lastFunction(whole)));
    for (const char* words : {"gcc", "gcc --system", "gcc --lines"}) {
        EXPECT_EQ(import(std::string(words) + " build"), 1) << words;
        EXPECT_NE(output().find("main.gcno: the .gcda file does not fit the unit's functions"),
                  std::string::npos)
            << words << '\n'
            << output();
    }
}

TEST_F(ZemImportTest, CountersWithoutNotesAndRunsWithoutCountersAreTold)
{
    ASSERT_EQ(run("build/work && rm build/main.gcno && mkdir run"), 0);
    EXPECT_EQ(import("gcc build"), 1);
    EXPECT_NE(output().find("main.gcda: the .gcno file of these counters is gone"),
              std::string::npos)
        << output();
    EXPECT_NE(output().find("coverage.log of map"), std::string::npos);
    EXPECT_EQ(import("gcc --name r --run run build"), 1);
    EXPECT_NE(output().find("no .gcda file in the run folder"), std::string::npos) << output();
    EXPECT_FALSE(fs::exists(_dir.path("r.log")));
    ASSERT_EQ(run("cp build/main.gcda run/other.gcda"), 0);
    EXPECT_EQ(import("gcc --name r --run run build"), 1);
    EXPECT_NE(output().find("no .gcda file of the run belongs to a unit"), std::string::npos);
    EXPECT_FALSE(fs::exists(_dir.path("r.log")));
}

TEST_F(ZemImportTest, SourcesThatMovedAreToldWithTheirNewPlace)
{
    ASSERT_EQ(run("build/work && mkdir new && mv src new"), 0);
    ASSERT_EQ(import("gcc -o new build"), 0);
    EXPECT_NE(output().find("3 sources not found: " + _dir.path("src/jobs and shapes.cc")),
              std::string::npos)
        << output();
    ASSERT_EQ(run("cd new && " ZEM_BINARY_DIR "/bin/zem-import gcc ../build"), 0);
    EXPECT_NE(output().find("3 are below " + _dir.path("new/") + " instead of " + _dir.path() +
                            "/ (--map " + _dir.path() + "=" + _dir.path("new") + " finds them)"),
              std::string::npos)
        << output();
    ASSERT_EQ(import("gcc -o new --map '" + _dir.path() + "=" + _dir.path("new") + "' build"), 0);
    EXPECT_EQ(output().find("not found"), std::string::npos) << output();
}

TEST_F(ZemImportTest, TheSummaryIsOneLineWhateverTheFolderIsCalled)
{
    ASSERT_EQ(run("build/work"), 0);
    ASSERT_EQ(import("gcc -o 'o\nut' --name 'n\x1b' build"), 0);
    EXPECT_EQ(output().find("zem-import: o\\x0aut/n\\x1b.log of map n\\x1b-"), 0U) << output();
}

TEST_F(ZemImportTest, SummaryThatCannotBeWrittenIsAnError)
{
    ASSERT_EQ(run("build/work"), 0);
    EXPECT_EQ(import("gcc build >/dev/full"), 1);
    EXPECT_NE(output().find("cannot write to the standard output: No space left on device"),
              std::string::npos);
    // A file that gets the number of a closed stream gets no text.
    ASSERT_EQ(import("gcc --name whole build"), 0);
    EXPECT_EQ(import("gcc --name closed build >&- 2>&-"), 1);
    EXPECT_EQ(TempDir::read(mapOf("closed")), TempDir::read(mapOf("whole")));
    EXPECT_EQ(TempDir::read(_dir.path("closed.losses")), TempDir::read(_dir.path("whole.losses")));
}

TEST_F(ZemImportTest, LinesRoadGivesTheSameFilesAndSaysSo)
{
    ASSERT_EQ(run("build/work"), 0);
    ASSERT_EQ(import("gcc --lines --name lines build"), 0) << output();
    EXPECT_NE(output().find("2 units taken as lines from gcov"), std::string::npos) << output();
    const std::string text = mapText(mapOf("lines"));
    EXPECT_NE(text.find("jobs and shapes.cc\n"), std::string::npos);
    EXPECT_NE(text.find("  larger<...>__F4auto4auto\n"), std::string::npos) << text;
}

TEST_F(ZemImportTest, CountersOfAnotherBuildAreAnErrorOfTheirUnit)
{
    ASSERT_EQ(run("build/work"), 0);
    ASSERT_EQ(run("cp build/main.gcda 'build/jobs and shapes.gcda'"), 0);
    EXPECT_EQ(import("gcc --name stale build"), 1);
    EXPECT_NE(output().find("jobs and shapes.gcno: the .gcda file belongs to another build"),
              std::string::npos)
        << output();
    EXPECT_NE(output().find("1 units with an error"), std::string::npos);
    EXPECT_TRUE(fs::exists(_dir.path("stale.log")));
}

class ZemImportWordsTest : public ::testing::Test
{
protected:
    int import(const std::string& words)
    {
        const std::string line = "cd '" + _dir.path() +
                                 "' && { " ZEM_BINARY_DIR "/bin/zem-import " + words +
                                 "; } > out 2> err";
        const int status = std::system(line.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string out() const { return TempDir::read(_dir.path("out")); }
    std::string err() const { return TempDir::read(_dir.path("err")); }

    const TempDir _dir;
};

TEST_F(ZemImportWordsTest, TreesWithNothingButProbesAreToldApart)
{
    _dir.write("CMakeFiles/CMakeTmp/a.gcno", "");
    EXPECT_EQ(import("gcc ."), 1);
    EXPECT_EQ(err(), "zem-import: only probes of a build system found: --probes keeps them\n");
}

TEST_F(ZemImportWordsTest, TreesWithoutNotesAreAnError)
{
    EXPECT_EQ(import("gcc ."), 1);
    EXPECT_EQ(err(), "zem-import: no .gcno file found; was it built with --coverage?\n");
    EXPECT_EQ(import("gcc none"), 1);
    EXPECT_EQ(err(), "zem-import: cannot read the folder " + fs::canonical(_dir.path()).string() +
                         "/none: No such file or directory\n");
    EXPECT_FALSE(fs::exists(_dir.path("coverage.log")));
}

TEST_F(ZemImportWordsTest, NothingLeftIsAnErrorAndLeavesNoFile)
{
    _dir.write("a.gcno", "not notes");
    EXPECT_EQ(import("gcc ."), 1);
    EXPECT_EQ(err(), "zem-import: " + fs::canonical(_dir.path()).string() +
                         "/a.gcno: the .gcno file holds no notes: compile the unit again, or "
                         "delete the file\n"
                         "zem-import: nothing to write: no function is left (1 units with an "
                         "error)\n");
    EXPECT_FALSE(fs::exists(_dir.path("coverage.log")));
}

TEST_F(ZemImportWordsTest, MisuseNamesTheWord)
{
    EXPECT_EQ(import(""), 1);
    EXPECT_NE(err().find("Usage: zem-import"), std::string::npos);
    EXPECT_EQ(import("fortran ."), 1);
    EXPECT_NE(err().find("nor a kind of coverage"), std::string::npos);
    EXPECT_NE(err().find("fortran"), std::string::npos);
    EXPECT_EQ(import("gcc"), 1);
    EXPECT_NE(err().find("BUILD_DIR"), std::string::npos);
    EXPECT_EQ(import("gcc --none ."), 1);
    EXPECT_NE(err().find("--none"), std::string::npos);
    EXPECT_EQ(import("gcc . --run"), 1);
    EXPECT_NE(err().find("--run"), std::string::npos);
    EXPECT_EQ(import("gcc --name a/b ."), 1);
    EXPECT_NE(err().find("a/b"), std::string::npos);
    EXPECT_EQ(import("gcc -o '' ."), 1);
    EXPECT_NE(err().find("-o ''"), std::string::npos);
    EXPECT_EQ(import("--clean"), 1);
    EXPECT_NE(err().find("--clean"), std::string::npos);
    EXPECT_EQ(import("--clean none"), 1);
    EXPECT_EQ(err(), "zem-import: cannot clean none: none: No such file or directory\n");
}

// A name with a newline and a terminal's command, as the shell and the messages write it.
TEST_F(ZemImportWordsTest, NamesCannotForgeAMessageOrSteerTheTerminal)
{
    const std::string name = "a\x1b[31m\nzem-import";
    const std::string word = "'" + name + "'";
    const std::string shown = "a\\x1b[31m\\x0azem-import";
    const std::string here = fs::canonical(_dir.path()).string();
    fs::create_directory(_dir.path(name));
    _dir.write(name + "/a.gcno", "not notes");
    EXPECT_EQ(import("gcc " + word), 1);
    EXPECT_EQ(err(), "zem-import: " + here + "/" + shown +
                         "/a.gcno: the .gcno file holds no notes: compile the unit again, or "
                         "delete the file\n"
                         "zem-import: nothing to write: no function is left (1 units with an "
                         "error)\n");
    EXPECT_EQ(import("gcc " + word + "/none"), 1);
    EXPECT_EQ(err(), "zem-import: cannot read the folder " + here + "/" + shown +
                         "/none: No such file or directory\n");
    EXPECT_EQ(import("--clean " + word + "/none"), 1);
    EXPECT_EQ(err(), "zem-import: cannot clean " + shown + "/none: " + shown +
                         "/none: No such file or directory\n");
    EXPECT_EQ(import(word), 1); // its kind is guessed
    EXPECT_NE(out().find(shown), std::string::npos) << out();
    EXPECT_EQ(out().find('\x1b'), std::string::npos);
    EXPECT_NE(err().find(here + "/" + shown + "/a.gcno: "), std::string::npos) << err();
    EXPECT_EQ(import(word + "none"), 1);
    EXPECT_NE(err().find(": " + shown + "none\n"), std::string::npos) << err();
}

TEST_F(ZemImportWordsTest, HelpAndVersionGoToTheStandardOutput)
{
    EXPECT_EQ(import("--help"), 0);
    EXPECT_TRUE(matchesGolden("zem-import/usage.txt", out()));
    EXPECT_EQ(import("gcc --help"), 0);
    EXPECT_EQ(err(), "");
    EXPECT_EQ(import("--version"), 0);
    EXPECT_EQ(out(), "zem-import 3.1\n");
    for (const char* words : {"--help", "--version"}) {
        EXPECT_EQ(import(std::string(words) + " >/dev/full"), 1) << words;
        EXPECT_EQ(import(std::string(words) + " >&-"), 1) << words;
        EXPECT_EQ(err(), "zem-import: cannot write to the standard output: Bad file descriptor\n");
    }
}

} // namespace
