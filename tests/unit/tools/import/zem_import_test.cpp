// SPDX-License-Identifier: MIT
//
// The whole way on a real build: tests/data/gcc-coverage is built with the g++ that is installed,
// run, and imported by the built zem-import.
#include "qip/Support/ListIterator.h"
#include "qip/Support/qipVLRecFile.h"
#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/GcovCounts.h"
#include "tools/import/gcc/FlowSolver.h"
#include "tools/import/gcc/GcdaFile.h"
#include "tools/import/gcc/GcovLines.h"
#include "zem/Data/ZEMMapFile.h"
#include "zem/Repository/ZEMRepository.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
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

    const TempDir _dir;
};

// What gcov and the solved graphs say about each line of a unit, system headers included.
void compareLines(const std::string& notesPath, const std::string& countersPath)
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
    GcovCounts own;
    own.addUnit(functions, counts);

    std::string json;
    ASSERT_TRUE(runGcov("gcov", {notesPath, countersPath}, json));
    GcovLines gcov;
    ASSERT_TRUE(gcov.parse(json));
    std::map<std::string, std::map<uint32_t, int64_t>> compilers;
    for (const GcovLineFunction& entry : gcov.functions()) {
        for (const CopyLine& line : entry._copy._lines) {
            compilers[entry._file][line._line] += entry._copy._hits[line._block];
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

TEST_F(ZemImportTest, MapHoldsFilesFunctionsAndNames)
{
    ASSERT_EQ(run("build/work"), 0);
    ASSERT_EQ(import("gcc -o out.d --name first build"), 0) << output();
    const std::string text = mapText(_dir.path("out.d/first.map"));
    for (const char* name :
         {"jobs and shapes.cc\n", "main.cc\n", "shapes.h\n", "  main\n", "  larger<...>\n",
          "  Shape::operator<__FRC5Shape\n", "  neverCalled__Fi\n",
          "  jobs::total__Fi\n", "  (anonymous namespace)::counted__Fv\n",
          "  jobs::Square::Square__Fi\n"}) {
        const size_t at = text.find(name);
        EXPECT_NE(at, std::string::npos) << name << text;
        // A header's function stands once, whatever number of units include it.
        EXPECT_EQ(text.find(name, at + 1), std::string::npos) << name << text;
    }
    EXPECT_EQ(text.find("vector.tcc"), std::string::npos);
    EXPECT_NE(output().find("zem-import: out.d/first.map and .log: 3 files, "), std::string::npos);
    EXPECT_EQ(output().find('\n'), output().size() - 1) << output();
}

TEST_F(ZemImportTest, AnotherRunGivesTheSameMapAndALogThatMerges)
{
    ASSERT_EQ(run("GCOV_PREFIX=$PWD/run1 build/work && GCOV_PREFIX=$PWD/run2 build/work 40"), 0);
    ASSERT_EQ(import("gcc --run run1 --name one build"), 0) << output();
    ASSERT_EQ(import("gcc --run run2 --name two build"), 0) << output();
    ASSERT_EQ(import("gcc --name none build"), 0) << output();
    const std::string map = TempDir::read(_dir.path("one.map"));
    EXPECT_EQ(map, TempDir::read(_dir.path("two.map")));
    EXPECT_EQ(map, TempDir::read(_dir.path("none.map")));
    EXPECT_NE(TempDir::read(_dir.path("one.log")).substr(128),
              TempDir::read(_dir.path("two.log")).substr(128));

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

TEST_F(ZemImportTest, LinesRoadGivesTheSameFilesAndSaysSo)
{
    ASSERT_EQ(run("build/work"), 0);
    ASSERT_EQ(import("gcc --lines --name lines build"), 0) << output();
    EXPECT_NE(output().find("2 units taken as lines from gcov"), std::string::npos) << output();
    const std::string text = mapText(_dir.path("lines.map"));
    EXPECT_NE(text.find("jobs and shapes.cc\n"), std::string::npos);
    EXPECT_NE(text.find("  larger<...>\n"), std::string::npos) << text;
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
        const std::string line = "cd '" + _dir.path() + "' && " ZEM_BINARY_DIR "/bin/zem-import " +
                                 words + " > out 2> err";
        const int status = std::system(line.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string out() const { return TempDir::read(_dir.path("out")); }
    std::string err() const { return TempDir::read(_dir.path("err")); }

    const TempDir _dir;
};

TEST_F(ZemImportWordsTest, TreesWithoutNotesAreAnError)
{
    EXPECT_EQ(import("gcc ."), 1);
    EXPECT_EQ(err(), "zem-import: no .gcno file found; was it built with g++ --coverage?\n");
    EXPECT_EQ(import("gcc none"), 1);
    EXPECT_EQ(err(), "zem-import: cannot read the folder none\n");
    EXPECT_FALSE(fs::exists(_dir.path("coverage.map")));
}

TEST_F(ZemImportWordsTest, NothingLeftIsAnErrorAndLeavesNoFile)
{
    _dir.write("a.gcno", "not notes");
    EXPECT_EQ(import("gcc ."), 1);
    EXPECT_EQ(err(), "zem-import: " + fs::canonical(_dir.path()).string() +
                         "/a.gcno: the .gcno file holds no notes\n"
                         "zem-import: nothing to write: no function is left (1 units with an "
                         "error)\n");
    EXPECT_FALSE(fs::exists(_dir.path("coverage.map")));
}

TEST_F(ZemImportWordsTest, MisuseNamesTheWord)
{
    EXPECT_EQ(import(""), 1);
    EXPECT_NE(err().find("Usage: zem-import"), std::string::npos);
    EXPECT_EQ(import("fortran ."), 1);
    EXPECT_NE(err().find("unknown kind of coverage: fortran"), std::string::npos);
    EXPECT_EQ(import("gcc"), 1);
    EXPECT_NE(err().find("BUILD_DIR"), std::string::npos);
    EXPECT_EQ(import("gcc --none ."), 1);
    EXPECT_NE(err().find("--none"), std::string::npos);
    EXPECT_EQ(import("gcc . --run"), 1);
    EXPECT_NE(err().find("--run"), std::string::npos);
    EXPECT_EQ(import("gcc --name a/b ."), 1);
    EXPECT_NE(err().find("a/b"), std::string::npos);
}

TEST_F(ZemImportWordsTest, HelpAndVersionGoToTheStandardOutput)
{
    EXPECT_EQ(import("--help"), 0);
    EXPECT_NE(out().find("--exclude GLOB"), std::string::npos);
    EXPECT_EQ(import("gcc --help"), 0);
    EXPECT_EQ(err(), "");
    EXPECT_EQ(import("--version"), 0);
    EXPECT_EQ(out(), "zem-import 3.1\n");
}

} // namespace
