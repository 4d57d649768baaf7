// SPDX-License-Identifier: MIT
#include "tools/import/llvm/LlvmImporter.h"

#include "tests/support/StdErr.h"
#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/LinksInFolder.h"
#include "tests/unit/tools/import/llvm/LlvmBuilder.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>

namespace {

const std::vector<std::string> files = {"/w", "a.cc"};

// A function of three lines with one counter, and what is different of it.
LlvmFunction function(const std::string& name, uint32_t line, uint64_t hash,
                      const std::vector<uint64_t>& counters = {})
{
    return {name, hash, plainMapping({{counterNumber(0), line, 1, line + 2, 2}}), counters};
}

LlvmFunction dummy(const std::string& name, uint32_t line)
{
    return {name, 0, plainMapping({{0, line, 1, line + 2, 2}})};
}

class LlvmImporterTest : public ::testing::Test
{
protected:
    std::string write(const std::string& name, const std::string& bytes)
    {
        // Some file systems wait for the disk when a file is written over.
        std::filesystem::remove(_dir.path(name));
        return _dir.write(name, bytes);
    }

    // Reads a build and all its runs from these words.
    bool import(const std::vector<std::string>& words)
    {
        _importer = std::make_unique<LlvmImporter>();
        _words = words;
        for (size_t i = 0; i < _words.size(); ++i) {
            char* next = i + 1 < _words.size() ? _words[i + 1].data() : nullptr;
            char* pair[] = {_words[i].data(), next, nullptr};
            if (_words[i][0] != '-') {
                _importer->input(_words[i].c_str());
            } else {
                const int taken = _importer->option(pair);
                EXPECT_EQ(taken, _words[i] == "--run" ? 2 : 1);
                i += taken == 2 ? 1 : 0;
            }
        }
        _build = std::make_unique<ImportedBuild>(_filter);
        _losses = ImportLosses();
        _runs.clear();
        _failedRuns = 0;
        const StdErr errors;
        const bool isRead = _importer->readBuild(*_build, _losses, 2);
        for (FunctionCopy& copy : _build->_copies) {
            copy.spreadLines();
        }
        for (size_t run = 0; isRead && run < _importer->runs(); ++run) {
            _runs.emplace_back();
            _failedRuns += _importer->readRun(run, _runs.back(), _losses, 2) ? 0 : 1;
        }
        _errors = errors.text();
        return isRead;
    }

    // "a.cc:f 1-3 {1} = 5; ..." of a run: file, symbol, range, the lines of each block and its
    // count.
    std::string text(size_t run = 0) const
    {
        std::vector<std::string> all;
        for (const FunctionCopy& copy : _build->_copies) {
            const std::string path = _build->_sources.paths()[copy._file];
            std::ostringstream one;
            one << path.substr(path.rfind('/') + 1) << ":" << copy._symbol << " " << copy._startLine
                << "-" << copy._endLine;
            for (size_t i = 0; i < copy._lines.size(); ++i) {
                const CopyLine& line = copy._lines[i];
                const bool isNew = i == 0 || copy._lines[i - 1]._block != line._block;
                one << (isNew ? " {" : ",") << line._line;
                if (i + 1 == copy._lines.size() || copy._lines[i + 1]._block != line._block) {
                    one << "}=" << _runs[run]._counts[copy._firstCount + line._block];
                }
            }
            all.push_back(one.str());
        }
        std::sort(all.begin(), all.end());
        std::string result;
        for (const std::string& one : all) {
            result += (result.empty() ? "" : "; ") + one;
        }
        return result;
    }

    const TempDir _dir;
    LlvmTarget _target;
    SourceFilter _filter;
    std::vector<std::string> _words;
    std::unique_ptr<LlvmImporter> _importer;
    std::unique_ptr<ImportedBuild> _build;
    ImportLosses _losses;
    std::vector<ImportedRun> _runs;
    size_t _failedRuns = 0;
    std::string _errors;
};

TEST_F(LlvmImporterTest, ReadsEveryLayoutOfProgramAndProfile)
{
    for (const uint32_t map : {3, 4, 5, 6}) {
        for (int bits = 0; bits < 8; ++bits) {
            _target._mapVersion = map;
            _target._is64 = (bits & 1) == 0;
            _target._isBigEndian = (bits & 2) != 0;
            _target._isPacked = (bits & 4) != 0;
            const std::vector<LlvmFunction> all = {function("f", 1, 5, {4}),
                                                   function("a.cc:_ZL1gv", 5, 0, {0})};
            const std::string program = write("program", llvmProgram(_target, files, all));
            const std::string profile = write("x.profraw", rawProfile(_target, all));
            ASSERT_TRUE(import({program, profile})) << _errors;
            EXPECT_EQ(text(), "a.cc:_ZL1gv 5-7 {5,6,7}=0; a.cc:f 1-3 {1,2,3}=4");
            EXPECT_EQ(_errors, "");
            const std::string path = _build->_sources.paths()[0];
            EXPECT_TRUE(map < 5 || path == "/w/a.cc") << path; // the folder stands first since 5
            EXPECT_FALSE(_build->_isBoolean);
            EXPECT_EQ(_build->_nCounts, 2u);
        }
    }
}

TEST_F(LlvmImporterTest, KeepsRunsApartAndAddsThemUpWhenAsked)
{
    const std::string program =
        write("p/program", llvmProgram(_target, files, {function("f", 1, 5)}));
    write("p/one.profraw", rawProfile(_target, {function("f", 1, 5, {4})}));
    write("p/deep/two.profraw", rawProfile(_target, {function("f", 1, 5, {UINT64_MAX - 5})}));
    write("p/notes.txt", "nothing");
    ASSERT_TRUE(import({_dir.path("p")})) << _errors;
    ASSERT_EQ(_runs.size(), 2u);
    EXPECT_EQ(_runs[0]._name, "two");
    EXPECT_EQ(_runs[1]._name, "one");
    EXPECT_GT(_runs[0]._executionTime, 0u);
    EXPECT_EQ(text(0), "a.cc:f 1-3 {1,2,3}=" + std::to_string(INT64_MAX));
    EXPECT_EQ(text(1), "a.cc:f 1-3 {1,2,3}=4");

    // A file that is named twice counts once.
    ASSERT_TRUE(import({"--merge", _dir.path("p"), _dir.path("p/../p/one.profraw"), program}));
    ASSERT_EQ(_runs.size(), 1u);
    EXPECT_EQ(_runs[0]._name, "");
    EXPECT_EQ(_losses._mostRuns, 2u);

    // One run has the name of the import.
    ASSERT_TRUE(import({program, _dir.path("p/one.profraw")}));
    EXPECT_EQ(_runs[0]._name, "");
}

// The objects of a build are read where there is no program: else each function came twice.
TEST_F(LlvmImporterTest, LeavesObjectsBesideAProgram)
{
    write("p/program", llvmProgram(_target, files, {function("f", 1, 5)}));
    std::string object = llvmProgram(_target, files, {function("g", 11, 6)});
    object.replace(16, 2, LlvmNumbers().u16(1).bytes());
    write("p/a.o", object);
    write("p/one.profraw", rawProfile(_target, {function("f", 1, 5, {4})}));
    ASSERT_TRUE(import({_dir.path("p")})) << _errors;
    EXPECT_EQ(text(), "a.cc:f 1-3 {1,2,3}=4");
    EXPECT_EQ(_losses._failedUnits, 0u);
    EXPECT_EQ(_errors, "");
}

// Another link of the program may have them in another order.
TEST_F(LlvmImporterTest, OrderOfTheRecordsOfAProfileIsFree)
{
    const std::string program =
        write("program", llvmProgram(_target, files, {function("f", 1, 5), function("g", 11, 6)}));
    const std::string one = write(
        "one.profraw", rawProfile(_target, {function("f", 1, 5, {4}), function("g", 11, 6, {7})}));
    const std::string two = write(
        "two.profraw", rawProfile(_target, {function("g", 11, 6, {2}), function("f", 1, 5, {3})}));
    ASSERT_TRUE(import({program, one, two})) << _errors;
    EXPECT_EQ(text(0), "a.cc:f 1-3 {1,2,3}=4; a.cc:g 11-13 {11,12,13}=7");
    EXPECT_EQ(text(1), "a.cc:f 1-3 {1,2,3}=3; a.cc:g 11-13 {11,12,13}=2");
}

// The profiles of a run's processes are one log; a folder may be named in any way and twice.
TEST_F(LlvmImporterTest, EachFolderOfARunIsALogOrAllAreOne)
{
    const std::string program =
        write("program", llvmProgram(_target, files, {function("f", 1, 5)}));
    write("a/1.profraw", rawProfile(_target, {function("f", 1, 5, {4})}));
    write("a/deep/2.profraw", rawProfile(_target, {function("f", 1, 5, {3})}));
    write("b/1.profraw", rawProfile(_target, {function("f", 1, 5, {2})}));
    std::filesystem::create_directory(_dir.path("none"));
    const std::string a = _dir.path("a");
    ASSERT_TRUE(import({program, "--each-run", "--run", a, "--run", _dir.path("b"), "--run",
                        _dir.path("none"), "--run", _dir.path("b/../a/.")}))
        << _errors;
    ASSERT_EQ(_runs.size(), 4u);
    EXPECT_EQ(_runs[0]._name, "a");
    EXPECT_EQ(_runs[1]._name, "b");
    EXPECT_EQ(_runs[3]._name, "a");
    EXPECT_EQ(text(0), "a.cc:f 1-3 {1,2,3}=7");
    EXPECT_EQ(text(1), "a.cc:f 1-3 {1,2,3}=2");
    EXPECT_EQ(text(3), "a.cc:f 1-3 {1,2,3}=7");
    EXPECT_EQ(_failedRuns, 1);
    EXPECT_NE(_errors.find(_dir.path("none") + ": no .profraw file in the run folder"),
              std::string::npos)
        << _errors;

    ASSERT_TRUE(import({program, "--run", a, "--run", _dir.path("b")}));
    ASSERT_EQ(_runs.size(), 1u);
    EXPECT_EQ(_runs[0]._name, "");
    EXPECT_EQ(text(0), "a.cc:f 1-3 {1,2,3}=9");

    EXPECT_FALSE(import({program, "--each-run"}));
    EXPECT_NE(_errors.find("--each-run wants the folders of runs"), std::string::npos) << _errors;
    EXPECT_FALSE(import({program, "--run", _dir.path("none")}));
    EXPECT_NE(_errors.find("no .profraw file in the run folder"), std::string::npos) << _errors;
}

// The first record of a name counts, but for one that stands for a function that was not made.
TEST_F(LlvmImporterTest, TakesOneRecordOfEachName)
{
    const std::string program = write(
        "program", llvmProgram(_target, files,
                               {dummy("f", 1), function("f", 1, 5, {4}), function("f", 11, 6, {9}),
                                dummy("g", 21), dummy("g", 31), function("h", 41, 0, {3})}));
    const std::string profile = write(
        "x.profraw", rawProfile(_target, {function("f", 1, 5, {4}), function("h", 41, 0, {3})}));
    ASSERT_TRUE(import({program, profile}));
    EXPECT_EQ(text(), "a.cc:f 1-3 {1,2,3}=4; a.cc:g 21-23 {21,22,23}=0; a.cc:h 41-43 {41,42,43}=3");
}

// A static function of a header: one unit made it, another only saw it.
TEST_F(LlvmImporterTest, LeavesOutWhatIsMadeElsewhere)
{
    const std::string program =
        write("program", llvmProgram(_target, files,
                                     {dummy("b.cc:_ZL1fv", 1), function("a.cc:_ZL1fv", 1, 5),
                                      dummy("onlySeen", 11), dummy("moved", 51)}));
    const std::string library =
        write("library.so", llvmProgram(_target, files,
                                        {function("onlySeen", 11, 3), function("moved", 61, 9),
                                         dummy("c.cc:_ZL1fv", 1)}));
    const std::string profile =
        write("x.profraw", rawProfile(_target, {function("a.cc:_ZL1fv", 1, 5, {2}),
                                                function("onlySeen", 11, 3, {8})}));
    ASSERT_TRUE(import({program, library, profile}));
    EXPECT_EQ(text(), "a.cc:_ZL1fv 1-3 {1,2,3}=2; a.cc:moved 61-63 {61,62,63}=0; "
                      "a.cc:onlySeen 11-13 {11,12,13}=8");
}

// As a process that forks leaves it: one profile for each process.
TEST_F(LlvmImporterTest, SaysHowManyRunsAFileAddsUp)
{
    const std::vector<LlvmFunction> all = {function("f", 1, 5, {4})};
    const std::string program = write("program", llvmProgram(_target, files, all));
    const std::string one = rawProfile(_target, all);
    const std::string profile = write("x.profraw", one + one + one);
    ASSERT_TRUE(import({program, profile}));
    EXPECT_EQ(text(), "a.cc:f 1-3 {1,2,3}=12");
    EXPECT_EQ(_losses._mostRuns, 3u);
}

TEST_F(LlvmImporterTest, UnitesProgramsAndLibraries)
{
    const std::vector<std::string> other = {"/w", "b.cc"};
    const std::string program =
        write("program", llvmProgram(_target, files,
                                     {function("shared", 1, 5), function("u.cc:_ZL1lv", 5, 6)}));
    const std::string library =
        write("library.so", llvmProgram(_target, files, {function("shared", 1, 5)}));
    const std::string third =
        write("third", llvmProgram(_target, other, {function("u.cc:_ZL1lv", 5, 6)}));
    // Both have the inline function; a profile for each stands in the file.
    const std::string profile = write(
        "x.profraw",
        rawProfile(_target, {function("shared", 1, 5, {2}), function("u.cc:_ZL1lv", 5, 6, {3})}) +
            rawProfile(_target, {function("shared", 1, 5, {40})}));
    ASSERT_TRUE(import({program, library, third, profile}));
    EXPECT_EQ(text(), "a.cc:_ZL1lv 5-7 {5,6,7}=3; a.cc:shared 1-3 {1,2,3}=42; "
                      "b.cc:_ZL1lv 5-7 {5,6,7}=3");
    EXPECT_EQ(_losses._sharedCounters, 1u);
}

TEST_F(LlvmImporterTest, CountsWhatWasCompiledOtherwise)
{
    const std::string program =
        write("program", llvmProgram(_target, files, {function("f", 1, 5), function("g", 11, 6)}));
    const std::string profile = write(
        "x.profraw", rawProfile(_target, {function("f", 1, 999, {2}), function("g", 11, 6, {7})}));
    ASSERT_TRUE(import({program, profile}));
    EXPECT_EQ(text(), "a.cc:f 1-3 {1,2,3}=0; a.cc:g 11-13 {11,12,13}=7");
    EXPECT_EQ(_losses._staleFunctions, 1u);

    // A counter that the profile does not have.
    LlvmFunction large = function("g", 11, 6);
    large._mapping = plainMapping({{counterNumber(9), 11, 1, 13, 2}});
    write("program", llvmProgram(_target, files, {large}));
    ASSERT_TRUE(import({program, profile}));
    EXPECT_EQ(text(), "a.cc:g 11-13 {11,12,13}=0");
    EXPECT_EQ(_losses._staleFunctions, 1u);
}

TEST_F(LlvmImporterTest, TakesOnlyProfilesOfTheseBuilds)
{
    _target._buildId = "build one";
    const std::string program =
        write("program", llvmProgram(_target, files, {function("f", 1, 5)}));
    const std::string good = write("good.profraw", rawProfile(_target, {function("f", 1, 5, {2})}));
    LlvmTarget later = _target;
    later._buildId = "build two";
    const std::string stale = write("stale.profraw", rawProfile(later, {function("f", 1, 5, {9})}));
    const std::string mixed =
        write("mixed.profraw", TempDir::read(good) + rawProfile(later, {function("f", 1, 5, {9})}));
    ASSERT_TRUE(import({program, good}));
    EXPECT_EQ(text(), "a.cc:f 1-3 {1,2,3}=2");
    ASSERT_TRUE(import({program, mixed}));
    EXPECT_EQ(text(), "a.cc:f 1-3 {1,2,3}=2");
    EXPECT_EQ(_losses._profilesOfOthers, 1u);
    ASSERT_TRUE(import({program, stale}));
    EXPECT_EQ(_failedRuns, 1u);
    EXPECT_NE(_errors.find("stale.profraw: was written by another build"), std::string::npos);
    EXPECT_TRUE(_losses.isIncomplete());

    // Without a number in the program nobody can tell.
    _target._buildId = "";
    write("program", llvmProgram(_target, files, {function("f", 1, 5)}));
    ASSERT_TRUE(import({program, stale}));
    EXPECT_EQ(text(), "a.cc:f 1-3 {1,2,3}=9");
}

TEST_F(LlvmImporterTest, LeavesTheTextOfLambdasToThem)
{
    LlvmFunction lambda = function("_ZZ1fvENKUlvE_clEv", 5, 7, {0});
    lambda._mapping = plainMapping({{counterNumber(0), 5, 10, 7, 6}});
    LlvmFunction outer = function("_Z1fv", 1, 5, {3});
    outer._mapping = plainMapping({{counterNumber(0), 1, 1, 9, 2}});
    const std::string program = write("program", llvmProgram(_target, files, {outer, lambda}));
    const std::string profile = write("x.profraw", rawProfile(_target, {outer, lambda}));
    ASSERT_TRUE(import({program, profile}));
    EXPECT_EQ(text(), "a.cc:_Z1fv 1-9 {1,2,3,4,5,8,9}=3; a.cc:_ZZ1fvENKUlvE_clEv 5-7 {5,6,7}=0");
}

// The longest region with text is the body, wherever it stands.
TEST_F(LlvmImporterTest, LeavesTheTextOfLambdasInALaterRegionToThem)
{
    LlvmFunction lambda = function("_ZZ1fvENKUlvE_clEv", 5, 7, {0});
    lambda._mapping = plainMapping({{counterNumber(0), 23, 10, 25, 6}});
    LlvmFunction outer = function("_Z1fv", 1, 5, {3});
    outer._mapping =
        plainMapping({{counterNumber(0), 10, 1, 12, 2}, {counterNumber(0), 20, 1, 30, 2}});
    const std::string program = write("program", llvmProgram(_target, files, {outer, lambda}));
    const std::string profile = write("x.profraw", rawProfile(_target, {outer, lambda}));
    ASSERT_TRUE(import({program, profile}));
    EXPECT_EQ(text(), "a.cc:_Z1fv 10-30 {10,11,12,20,21,22,23,26,27,28,29,30}=3; "
                      "a.cc:_ZZ1fvENKUlvE_clEv 23-25 {23,24,25}=0");
}

// Instances of a template have the same lines, and none of them lies in another.
TEST_F(LlvmImporterTest, LeavesTheTextOfLambdasToThemInEachInstance)
{
    std::vector<LlvmFunction> all;
    for (const std::string type : {"i", "l"}) {
        all.push_back(function("_Z1fI" + type + "EvT_", 1, 5, {all.empty() ? 3u : 4u}));
        all.back()._mapping = plainMapping({{counterNumber(0), 1, 1, 9, 2}});
        all.push_back(function("_ZZ1fI" + type + "EvT_ENKUlvE_clEv", 5, 7, {all.size()}));
        all.back()._mapping = plainMapping({{counterNumber(0), 5, 10, 7, 6}});
    }
    const std::string program = write("program", llvmProgram(_target, files, all));
    const std::string profile = write("x.profraw", rawProfile(_target, all));
    ASSERT_TRUE(import({program, profile}));
    EXPECT_EQ(text(),
              "a.cc:_Z1fIiEvT_ 1-9 {1,2,3,4,5,8,9}=3; a.cc:_Z1fIlEvT_ 1-9 {1,2,3,4,5,8,9}=4; "
              "a.cc:_ZZ1fIiEvT_ENKUlvE_clEv 5-7 {5,6,7}=1; "
              "a.cc:_ZZ1fIlEvT_ENKUlvE_clEv 5-7 {5,6,7}=3");
}

// The use of a macro is a block; its text is not. What is included inside is the function's text.
TEST_F(LlvmImporterTest, TellsMacrosFromIncludedText)
{
    const std::vector<std::string> three = {"/w", "a.cc", "m.h", "b.inc"};
    LlvmFunction f = function("f", 1, 5, {3, 2, 1});
    f._mapping = lebs({3,
                       1,
                       2,
                       3,
                       0,
                       3,
                       counterNumber(0),
                       1,
                       1,
                       8,
                       2, // body
                       1 << 3 | 4,
                       2,
                       3,
                       0,
                       9, // a macro on line 3
                       2 << 3 | 4,
                       3,
                       10,
                       0,
                       17, // an include on line 6
                       1,
                       counterNumber(1),
                       4,
                       15,
                       1,
                       3, // m.h 4-5
                       2,
                       counterNumber(2),
                       1,
                       1,
                       3,
                       1, // b.inc 1-4
                       counterNumber(1),
                       1,
                       5,
                       0,
                       8});
    const std::string program = write("program", llvmProgram(_target, three, {f}));
    const std::string profile = write("x.profraw", rawProfile(_target, {f}));
    ASSERT_TRUE(import({program, profile}));
    EXPECT_EQ(text(), "a.cc:f 1-9 {1,2,3,4,5,6,7,8,9}=3 {3,2}=2 {6,1,2,3}=1");
    EXPECT_EQ(_losses._regionsOfMacros, 1u);
}

TEST_F(LlvmImporterTest, MarksRunsThatOnlySayWhatRan)
{
    _target._rawVersion = 10;
    _target._isSingleByte = true;
    const std::vector<LlvmFunction> all = {function("f", 1, 5, {4})};
    const std::string program = write("program", llvmProgram(_target, files, all));
    const std::string profile = write("x.profraw", rawProfile(_target, all));
    ASSERT_TRUE(import({program, profile}));
    EXPECT_TRUE(_build->_isBoolean);
    EXPECT_EQ(text(), "a.cc:f 1-3 {1,2,3}=1");
}

// A file of debug information has the map and no names.
TEST_F(LlvmImporterTest, TakesNamesFromTheProfile)
{
    const std::vector<LlvmFunction> all = {function("f", 1, 5, {4})};
    const std::string program = write(
        "program.debug", elfFile(_target, {{"__llvm_prf_names", "", 8},
                                           {"__llvm_covmap", mapSection(_target, files)},
                                           {"__llvm_covfun", recordSection(_target, files, all)}}));
    const std::string profile = write("x.profraw", rawProfile(_target, all));
    ASSERT_TRUE(import({program, profile})) << _errors;
    EXPECT_EQ(text(), "a.cc:f 1-3 {1,2,3}=4");
}

// Damage inside one record costs that function, and the import says so.
TEST_F(LlvmImporterTest, LeavesOutDamagedFunctions)
{
    LlvmFunction ring = function("ring", 11, 5);
    ring._mapping = lebs({1, 1, 1, 3, 0, 1, 3, 1, 1, 2, 2}); // an expression that needs itself
    LlvmFunction huge = function("huge", 21, 5);
    huge._mapping = lebs({1, 1, 0, 1, 1, 1, 1, UINT32_MAX - 9, 2}); // four billion lines
    LlvmFunction cut = function("cut", 31, 5);
    cut._mapping.pop_back();
    const std::string program =
        write("program", llvmProgram(_target, files, {function("f", 1, 5), ring, huge, cut}));
    const std::string profile = write("x.profraw", rawProfile(_target, {function("f", 1, 5, {2})}));
    ASSERT_TRUE(import({program, profile}));
    EXPECT_EQ(text(), "a.cc:f 1-3 {1,2,3}=2");
    EXPECT_EQ(_losses._damagedFunctions, 3u);
    EXPECT_TRUE(_losses.isIncomplete());
}

TEST_F(LlvmImporterTest, SaysWhatIsMissingAndWhatToDo)
{
    const std::vector<LlvmFunction> all = {function("f", 1, 5, {4})};
    const std::string program = write("program", llvmProgram(_target, files, all));
    const std::string profile = write("x.profraw", rawProfile(_target, all));
    const std::string plain = write("plain", elfFile(_target, {{".text", "x"}}));
    const std::string stripped = write("stripped", elfFile(_target, {{"__llvm_prf_names", "x"}}));
    const std::string empty = write("empty.profraw", "");
    const std::string other =
        write("other.profraw", rawProfile(_target, {function("g", 1, 5, {4})}));
    const std::string cut = write("cut.profraw", TempDir::read(profile).substr(0, 130));
    struct
    {
        std::vector<std::string> words;
        const char* problem;
    } const cases[] = {
        {{program},
         "no .profraw file among the inputs: run the program with LLVM_PROFILE_FILE=NAME.profraw "
         "and name that file or its folder\n"},
        {{profile}, "no program among the inputs"},
        {{plain, profile}, "plain: was not built with clang++ -fprofile-instr-generate"},
        {{stripped, profile}, "stripped: has no coverage map"},
        {{program, _dir.path("nowhere")}, "nowhere: No such file or directory"},
        {{program, write("lib.a", "!<arch>\n")},
         "lib.a: is an archive of objects: name the program that was linked with it\n"},
        {{program, empty}, "empty.profraw: is empty: the program did not write its profile"},
        {{program, other}, "other.profraw: none of its functions is in the programs"},
        {{program, cut}, "cut.profraw: is damaged or cut short"},
        {{program, write("text", "hello")}, "text: is no profile"},
    };
    for (const auto& one : cases) {
        const bool isRead = import(one.words);
        EXPECT_NE(_errors.find(one.problem), std::string::npos) << one.problem << "\n" << _errors;
        EXPECT_TRUE(!isRead || _failedRuns == 1) << one.problem;
    }
    // In a folder files of other kinds are nobody's fault.
    write("d/plain", TempDir::read(plain));
    write("d/program", TempDir::read(program));
    write("d/x.profraw", TempDir::read(profile));
    // Nor does what CMake compiled to try the compiler belong to the project.
    const std::string probe = write("d/CMakeFiles/3.25.1/CompilerIdCXX/a.out",
                                    llvmProgram(_target, files, {function("probe", 1, 5, {4})}));
    EXPECT_TRUE(import({_dir.path("d")}));
    EXPECT_EQ(_errors, "");
    EXPECT_EQ(text(0).find("probe"), std::string::npos) << text(0);
    EXPECT_TRUE(import({_dir.path("d"), probe}));
    EXPECT_NE(text(0).find("probe"), std::string::npos) << text(0);
    // Of several runs the good ones are read all the same.
    ASSERT_TRUE(import({program, empty, profile}));
    EXPECT_EQ(_failedRuns, 1u);
    EXPECT_EQ(text(1), "a.cc:f 1-3 {1,2,3}=4");
}

// A program has any name, so that of a link which leads nowhere nobody knows what it stood for.
TEST_F(LlvmImporterTest, WhatAFolderLacksIsCountedAndTold)
{
    const std::vector<LlvmFunction> all = {function("f", 1, 5, {4})};
    addLinks(_dir, "in/a.profraw", "in/b.profraw", rawProfile(_target, all));
    std::filesystem::create_symlink("gone", _dir.path("in/program"));
    const std::string program = write("other", llvmProgram(_target, files, all));
    const std::string problems = problemsOfLinks(_dir, "in", "in/b.profraw");
    for (const bool isRun : {false, true}) {
        const std::vector<std::string> run = {program, "--run", _dir.path("in")};
        EXPECT_TRUE(import(isRun ? run : std::vector<std::string>{program, _dir.path("in")}));
        EXPECT_EQ(_errors, problems);
        EXPECT_EQ(_losses._unreadFolders, 1u);
        EXPECT_EQ(_losses._linkedFolders, 1u);
    }
}

TEST_F(LlvmImporterTest, KnowsItsOwnFiles)
{
    const std::vector<LlvmFunction> all = {function("f", 1, 5, {4})};
    const LlvmImporter importer;
    const std::string program = write("d/program", llvmProgram(_target, files, all));
    EXPECT_TRUE(importer.recognises(program.c_str()));
    // Its tests have not run yet.
    write("e/notes", "text");
    write("e/plain", elfFile(_target, {{".text", "x"}}));
    write("e/CMakeFiles/3.25.1/CompilerIdCXX/a.out", llvmProgram(_target, files, all));
    EXPECT_TRUE(importer.recognises(_dir.path("d").c_str()));
    EXPECT_FALSE(importer.recognises(_dir.path("e").c_str()));
    std::filesystem::remove(program);
    const std::string profile = write("d/x.profraw", rawProfile(_target, all));
    EXPECT_TRUE(importer.recognises(profile.c_str()));
    EXPECT_TRUE(importer.recognises(_dir.path("d").c_str()));
    const std::string plain = write("plain", elfFile(_target, {{".text", "x"}}));
    EXPECT_FALSE(importer.recognises(plain.c_str()));
    EXPECT_FALSE(importer.recognises(_dir.path("nowhere").c_str()));
    EXPECT_FALSE(importer.recognises("/dev/zero"));
}

// Whatever a byte of a program is, the import ends, and no number is wrong without a word.
TEST_F(LlvmImporterTest, SurvivesEveryCutAndEveryByteOfAProgram)
{
    const std::vector<LlvmFunction> all = {function("f", 1, 5, {4}), function("g", 11, 6, {2})};
    for (const bool isPacked : {false, true}) {
        _target._isPacked = isPacked;
        const std::string whole = llvmProgram(_target, files, all);
        const std::string path = _dir.path("program");
        for (size_t size = 0; size < whole.size(); ++size) {
            write("program", whole.substr(0, size));
            CoverageImage image;
            EXPECT_NE(image.read(path), CoverageImage::Ok) << size;
        }
        const std::string profile = write("x.profraw", rawProfile(_target, all));
        for (size_t at = 0; at < whole.size(); ++at) {
            std::string changed = whole;
            changed[at] = static_cast<char>(changed[at] ^ 0x55);
            write("program", changed);
            (void)import({path, profile});
        }
    }
}

} // namespace
