// SPDX-License-Identifier: MIT
#include "tools/import/ImportJob.h"

#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/FakeImporter.h"
#include "zem/Data/ZEMLogFile.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <sstream>

namespace {

namespace fs = std::filesystem;

class ImportJobTest : public ::testing::Test
{
protected:
    ImportJobTest() { _options._output._folder = _dir.path("out"); }

    bool run(const std::vector<const char*>& inputs)
    {
        for (const char* input : inputs) {
            _importer.input(input);
        }
        return ImportJob(_importer, _options, _out, _err).run();
    }

    // The files written: "name.log=count" for a log, maps without their digits; sorted.
    std::string files() const
    {
        std::set<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(_dir.path("out"))) {
            const std::string name = entry.path().filename().string();
            if (entry.path().extension() != ".log") {
                names.insert(name.substr(0, name.find('-')));
                continue;
            }
            ZEMLogFile log;
            EXPECT_EQ(log.open(entry.path().c_str(), qipVLRecFile::READ, 0), 0);
            EXPECT_EQ(log.load(), 1);
            names.insert(name + "=" + std::to_string(log.toc().first()->_hits[0]));
        }
        std::string text;
        for (const std::string& name : names) {
            text += (text.empty() ? "" : " ") + name;
        }
        return text;
    }

    const TempDir _dir;
    FakeImporter _importer{""};
    ImportOptions _options;
    std::ostringstream _out;
    std::ostringstream _err;
};

TEST_F(ImportJobTest, RunWithoutANameHasThatOfTheImport)
{
    _options._output._name = "mine";
    EXPECT_TRUE(run({"one"}));
    EXPECT_EQ(files(), "mine mine.log=1 mine.losses");
    EXPECT_EQ(_out.str().find("zem-import: " + _dir.path("out") + "/mine.log of map mine-"), 0u);
    EXPECT_NE(_out.str().find(".map: 1 files, 1 functions, 2 blocks; 5 system functions, 1 sources "
                              "not found\n"),
              std::string::npos)
        << _out.str();
}

TEST_F(ImportJobTest, EachRunHasALogAndAllHaveOneMap)
{
    EXPECT_TRUE(run({"a/b=3", "a b=4", "two=5", "coverage=6", "unnamed"}));
    EXPECT_EQ(files(), "a_b a_b-2.log=4 a_b.log=3 a_b.losses coverage coverage-2.log=1 "
                       "coverage.log=6 coverage.losses two.log=5 two.losses");
    const std::string losses = TempDir::read(_dir.path("out/two.losses"));
    EXPECT_NE(losses.find("5 system functions\n"), std::string::npos) << losses;
    EXPECT_NE(losses.find("2 units that never ran\n"), std::string::npos) << losses;
    const std::string told = _out.str();
    EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 5);
}

TEST_F(ImportJobTest, RunThatCannotBeReadIsLeftOutAndTold)
{
    EXPECT_FALSE(run({"a=3", "b=bad", "c=4"}));
    EXPECT_EQ(files(), "a.log=3 a.losses c.log=4 c.losses coverage");
}

TEST_F(ImportJobTest, RunThatIsNotWholeIsWrittenAndTold)
{
    _importer._failedUnits = 1;
    EXPECT_FALSE(run({"a=3"}));
    EXPECT_EQ(files(), "a.log=3 a.losses coverage");
}

TEST_F(ImportJobTest, BuildThatCannotBeReadLeavesNothing)
{
    _importer._isReadable = false;
    EXPECT_FALSE(run({"a=3"}));
    EXPECT_FALSE(fs::exists(_dir.path("out")));
}

TEST_F(ImportJobTest, LogThatCannotBeWrittenIsTold)
{
    fs::create_directories(_dir.path("out/b.log"));
    EXPECT_FALSE(run({"a=3", "b=4"}));
    EXPECT_EQ(_err.str().find("zem-import: 1 sources not found"), 0u) << _err.str();
    EXPECT_NE(_err.str().find("cannot write " + _dir.path("out/b.log") + ": Is a directory"),
              std::string::npos)
        << _err.str();
    EXPECT_FALSE(fs::exists(_dir.path("out/a.log")));
}

TEST_F(ImportJobTest, MarkersAreObeyedUnlessTheyAreNot)
{
    _importer._source = _dir.write("a.cc", "1\n2 LCOV_EXCL_LINE\n3\n4\n");
    EXPECT_TRUE(run({"a=3"}));
    EXPECT_NE(_out.str().find(" 1 blocks; 5 system functions, 1 blocks excluded by markers\n"),
              std::string::npos)
        << _out.str();
    _options._obeysMarkers = false;
    EXPECT_TRUE(run({}));
    EXPECT_NE(_out.str().find(" 2 blocks; 5 system functions\n"), std::string::npos) << _out.str();
}

TEST_F(ImportJobTest, ImportOfWhichNothingIsLeftSaysWhy)
{
    _importer._source = _dir.write("a.cc", "LCOV_EXCL_START\n2\n3\n4\n5\nLCOV_EXCL_STOP\n");
    EXPECT_FALSE(run({"a=3"}));
    EXPECT_NE(_err.str().find("nothing to write: no function is left (5 system functions, 1 "
                              "functions excluded by markers, 2 blocks excluded by markers)"),
              std::string::npos)
        << _err.str();
}

TEST_F(ImportJobTest, MovedSourcesAreFound)
{
    _importer._source = "/ci/a.cc";
    _dir.write("a.cc", "1\n");
    ASSERT_TRUE(_options._moves.add("/ci=" + _dir.path()));
    EXPECT_TRUE(run({"a=3"}));
    EXPECT_EQ(_err.str(), "");
}

} // namespace
