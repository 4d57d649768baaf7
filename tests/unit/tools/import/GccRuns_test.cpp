// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GccRuns.h"

#include "tests/support/StdErr.h"
#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/GcovBuilder.h"
#include "tools/import/gcc/GccImporter.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>

namespace {

class GccRunsTest : public ::testing::Test
{
protected:
    GccRunsTest()
    {
        _dir.write("build/one.gcno", sampleNotes(12));
        _dir.write("build/two.gcno", sampleNotes(12));
    }

    void addCounters(const std::string& run, const char* unit)
    {
        _dir.write(run + _dir.path() + "/build/" + unit + ".gcda", sampleCounters(12));
    }

    // Reads the build with these runs. `words` are further options.
    bool read(const std::vector<std::string>& runs, const std::vector<std::string>& words)
    {
        for (const std::string& run : runs) {
            _words.emplace_back("--run");
            _words.push_back(_dir.path(run));
        }
        _words.insert(_words.end(), words.begin(), words.end());
        std::vector<char*> vector;
        for (std::string& word : _words) {
            vector.push_back(word.data());
        }
        vector.push_back(nullptr);
        for (size_t i = 0; i < _words.size();) {
            i += static_cast<size_t>(_importer.option(&vector[i]));
        }
        _build = _dir.path("build");
        _importer.input(_build.c_str());
        return _importer.readBuild(_imported, _losses, 2);
    }

    // The counts of a run by line, as "1=10 3=4"; the message when it cannot be read.
    std::string run(size_t number)
    {
        _result = ImportedRun();
        _runLosses = ImportLosses();
        if (!_importer.readRun(number, _result, _runLosses, 2)) {
            return "not read";
        }
        EXPECT_EQ(_result._counts.size(), _imported._nCounts);
        std::map<uint32_t, int64_t> lines;
        for (const FunctionCopy& copy : _imported._copies) {
            for (const CopyLine& line : copy._lines) {
                lines[line._line] += _result._counts[copy._firstCount + line._block];
            }
        }
        std::string text;
        for (const auto& line : lines) {
            text += (text.empty() ? "" : " ") + std::to_string(line.first) + "=" +
                    std::to_string(line.second);
        }
        return text;
    }

    const TempDir _dir;
    SourceFilter _filter;
    ImportedBuild _imported{_filter};
    GccImporter _importer;
    ImportLosses _losses;
    ImportLosses _runLosses;
    ImportedRun _result;
    std::vector<std::string> _words;
    std::string _build;
};

const char once[] = "1=10 2=10 3=4 4=6 5=6 6=10";
const char twice[] = "1=20 2=20 3=8 4=12 5=12 6=20";

TEST_F(GccRunsTest, EachRunHasItsOwnCounts)
{
    addCounters("a", "one");
    addCounters("a", "two");
    addCounters("b", "one");
    ASSERT_TRUE(read({"a", "b", "b/../a/."}, {"--each-run"}));
    ASSERT_EQ(_importer.runs(), 3u);
    EXPECT_EQ(_losses._unitsNotRun, 0u);
    EXPECT_EQ(run(0), twice); // in two units
    EXPECT_EQ(_result._name, "a");
    EXPECT_NE(_result._executionTime, 0u);
    EXPECT_EQ(_runLosses._unitsNotRun, 0u);
    EXPECT_EQ(run(1), once);
    EXPECT_EQ(_result._name, "b");
    EXPECT_EQ(_runLosses._unitsNotRun, 1u);
    EXPECT_EQ(_runLosses._mostRuns, 3u);
    EXPECT_EQ(run(2), twice);
    EXPECT_EQ(_result._name, "a");
}

// One of the functions that the run counted is not in the notes.
TEST_F(GccRunsTest, RunsOfOtherFunctionsAreAnErrorOfTheirUnit)
{
    addCounters("a", "one");
    GcovBuilder other(12);
    other.countersHead(SampleStamp);
    other.ran(7, 8, 9);
    other.counters({10, 4});
    other.ran(6, 8, 9);
    other.counters({10, 4});
    other.word(0);
    _dir.write("b" + _dir.path() + "/build/one.gcda", other.bytes());
    ASSERT_TRUE(read({"a", "b"}, {"--each-run"}));
    EXPECT_EQ(run(0), once);
    EXPECT_EQ(_runLosses._failedUnits, 0u);
    EXPECT_EQ(run(1), "1=0 2=0 3=0 4=0 5=0 6=0");
    EXPECT_EQ(_runLosses._failedUnits, 1u);
}

TEST_F(GccRunsTest, EachUnitThatCannotBeReadIsNamed)
{
    _dir.write("build/one.gcno", "damaged");
    _dir.write("build/two.gcno", "damaged");
    StdErr err;
    EXPECT_TRUE(read({}, {}));
    const std::string text = err.text();
    EXPECT_NE(text.find("build/one.gcno: "), std::string::npos) << text;
    EXPECT_NE(text.find("build/two.gcno: "), std::string::npos) << text;
    EXPECT_EQ(_losses._failedUnits, 2u);
}

TEST_F(GccRunsTest, RunsAreAddedUpOtherwise)
{
    _dir.write("build/three.gcno", sampleNotes(12));
    addCounters("a", "one");
    addCounters("b", "one");
    addCounters("b", "two");
    ASSERT_TRUE(read({"a", "b"}, {}));
    ASSERT_EQ(_importer.runs(), 1u);
    EXPECT_EQ(run(0), "1=30 2=30 3=12 4=18 5=18 6=30");
    EXPECT_EQ(_result._name, "");
    EXPECT_NE(_result._executionTime, 0u);
    EXPECT_EQ(_losses._unitsNotRun, 1u); // in none of the runs
    EXPECT_EQ(_losses._mostRuns, 6u);    // the samples say three
    EXPECT_EQ(_losses._failedUnits, 0u);
}

// What the map of a build is made of, as read for each run.
void expectSameForEachRun(const std::string& build, const std::string& run,
                          const ImportedBuild& expected, const ImportLosses& expectedLosses)
{
    GccImporter each;
    std::string words[] = {"--run", run, "--each-run"};
    char* vector[] = {words[0].data(), words[1].data(), words[2].data(), nullptr};
    ASSERT_EQ(each.option(vector), 2);
    ASSERT_EQ(each.option(vector + 2), 1);
    each.input(build.c_str());
    SourceFilter filter;
    ImportedBuild other(filter);
    ImportLosses losses;
    ASSERT_TRUE(each.readBuild(other, losses, 1));
    ASSERT_EQ(other._copies.size(), expected._copies.size());
    for (size_t i = 0; i < other._copies.size(); ++i) {
        EXPECT_EQ(other._copies[i]._lines, expected._copies[i]._lines);
        EXPECT_EQ(other._copies[i]._startLine, expected._copies[i]._startLine);
        EXPECT_EQ(other._copies[i]._endLine, expected._copies[i]._endLine);
    }
    EXPECT_EQ(losses._blocksWithoutLine, expectedLosses._blocksWithoutLine);
}

TEST_F(GccRunsTest, StructureIsThatOfOneRun)
{
    addCounters("a", "one");
    ASSERT_TRUE(read({"a"}, {}));
    EXPECT_EQ(run(0), once);
    expectSameForEachRun(_build, _dir.path("a"), _imported, _losses);
}

// Their notes do not say where a function ends.
TEST_F(GccRunsTest, StructureOfClangsFilesIsThatOfOneRun)
{
    _dir.write("build/one.gcno", sampleNotes(GcovBuilder::Clang));
    _dir.write("build/two.gcno", sampleNotes(GcovBuilder::Clang));
    _dir.write("a" + _dir.path() + "/build/one.gcda", sampleCounters(GcovBuilder::Clang));
    ASSERT_TRUE(read({"a"}, {}));
    EXPECT_EQ(run(0), once);
    ASSERT_EQ(_imported._copies.size(), 1u);
    EXPECT_EQ(_imported._copies[0]._endLine, 6u);
    expectSameForEachRun(_build, _dir.path("a"), _imported, _losses);
}

TEST_F(GccRunsTest, CountersThatDoNotFitAreNotUsedAndNamed)
{
    addCounters("a", "one");
    GcovBuilder other(12);
    other.countersHead(SampleStamp + 1);
    other.word(0);
    _dir.write("a" + _dir.path() + "/build/two.gcda", other.bytes());
    addCounters("b", "two");
    const std::string cut = sampleCounters(12);
    _dir.write("b" + _dir.path() + "/build/one.gcda", cut.substr(0, cut.size() - 4));
    ASSERT_TRUE(read({"a", "b"}, {"--each-run"}));
    StdErr err;
    EXPECT_EQ(run(0), once);
    EXPECT_EQ(_runLosses._failedUnits, 1u);
    EXPECT_EQ(run(1), once);
    EXPECT_EQ(_runLosses._failedUnits, 1u);
    const std::string told = err.text();
    EXPECT_NE(told.find("two.gcno: the .gcda file belongs to another build"), std::string::npos);
    EXPECT_NE(told.find("or delete " + _dir.path("a") + _dir.path() + "/build/two.gcda"),
              std::string::npos);
    EXPECT_NE(told.find("one.gcno: the .gcda file is damaged or ends early"), std::string::npos);
}

TEST_F(GccRunsTest, RunWithoutCountersIsToldAndTheOthersAreRead)
{
    addCounters("a", "one");
    std::filesystem::create_directory(_dir.path("empty"));
    _dir.write("strange/other.gcda", sampleCounters(12));
    ASSERT_TRUE(read({"empty", "strange", "a"}, {"--each-run"}));
    StdErr err;
    EXPECT_EQ(run(0), "not read");
    EXPECT_EQ(run(1), "not read");
    EXPECT_EQ(run(2), once);
    EXPECT_NE(err.text().find("no .gcda file in the run folder"), std::string::npos);
    EXPECT_NE(err.text().find("no .gcda file of the run " + _dir.path("strange")),
              std::string::npos);
}

TEST_F(GccRunsTest, UnitWithDamagedNotesIsInNoRun)
{
    _dir.write("build/two.gcno", sampleNotes(12).substr(0, 60));
    addCounters("a", "one");
    addCounters("a", "two");
    ASSERT_TRUE(read({"a"}, {"--each-run"}));
    EXPECT_EQ(_losses._failedUnits, 1u);
    EXPECT_EQ(run(0), once);
    EXPECT_EQ(_runLosses._failedUnits, 0u); // it was told
}

TEST_F(GccRunsTest, EachRunWantsRuns)
{
    StdErr err;
    EXPECT_FALSE(read({}, {"--each-run"}));
    EXPECT_NE(err.text().find("--each-run wants the folders of runs: --run DIR"),
              std::string::npos);
}

TEST_F(GccRunsTest, BuildIsRecognisedByItsNotes)
{
    _dir.write("other/deep/one.gcda", "");
    EXPECT_TRUE(_importer.recognises(_dir.path("build").c_str()));
    EXPECT_TRUE(_importer.recognises(_dir.path().c_str()));
    EXPECT_FALSE(_importer.recognises(_dir.path("other").c_str()));
    EXPECT_FALSE(_importer.recognises(_dir.path("build/one.gcno").c_str()));
    EXPECT_FALSE(_importer.recognises(_dir.path("none").c_str()));
}

} // namespace
