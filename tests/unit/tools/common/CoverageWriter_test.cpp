// SPDX-License-Identifier: MIT
#include "tools/common/CoverageWriter.h"

#include "tests/support/DataFiles.h"
#include "tests/support/KeptFolder.h"
#include "tests/unit/tools/common/CovSampleTest.h"
#include "tools/common/ContentDigest.h"
#include "tools/common/LogWriter.h"
#include "tools/common/MapWriter.h"
#include "tools/common/countRun.h"
#include "tools/common/finishCoverage.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class CoverageWriterTest : public CovSampleTest
{
protected:
    std::string bytes(RecFileBuilder builder, const char* name)
    {
        builder.write(_dir.path(name));
        return TempDir::read(_dir.path(name));
    }

    void addOneFile()
    {
        addFile("/s/a.cc", {function("f", 2, 2, {{2, 2, 1}})});
        finishCoverage(_model, NameStyle(), _losses, 1);
    }

    // The counts of a run, with `more` added to each.
    CoverageCounts counts(int64_t more = 0)
    {
        std::vector<int64_t> all = _counts;
        for (int64_t& count : all) {
            count += more;
        }
        CoverageCounts result;
        countRun(_model, all, result, _losses, 1);
        result._executionTime = _executionTime;
        return result;
    }

    // An import of one run.
    bool write(const char* name, int64_t more = 0)
    {
        _output._name = name;
        CoverageWriter writer(_model, _output);
        const bool isWritten =
            writer.open() && writer.add(name, counts(more), _losses) && writer.finish();
        _map = writer.map();
        _problem = writer.problem();
        return isWritten;
    }

    CoverageOutput _output{_dir.path(), "run", false};
    uint32_t _executionTime = 0;
    std::string _map;
    std::string _problem;
};

TEST_F(CoverageWriterTest, WritesTheBytesOfAMapAndALog)
{
    const std::string path = _dir.write("a b.cc", "text\n");
    addFile(path, {function("main", 1, 9, {{1, 4, 3}, {5, 9, 0}})});
    addFile("/s/z.cc", {function("f", 2, 2, {{2, 2, 1}})});
    _executionTime = 77;
    finishCoverage(_model, NameStyle(), _losses, 2);
    ASSERT_TRUE(write("run")) << _problem;

    const uint32_t time = _model._files[1]._timeModified == 0 ? _model._files[0]._timeModified
                                                              : _model._files[1]._timeModified;
    const std::string map = _map;
    const bool isFirst = _model._files[0]._path == path;
    std::vector<MapSource> sources = {{"/s/z.cc", {{"f", 2, 2, {{2, 2}}}}, 0}};
    std::vector<LogSource> results = {{"/s/z.cc", map, {1}, 0, 0}};
    sources.insert(isFirst ? sources.begin() : sources.end(),
                   {path, {{"main", 1, 9, {{1, 4}, {5, 9}}}}, time});
    results.insert(isFirst ? results.begin() : results.end(), {path, map, {3, 0}, time, 0});
    EXPECT_EQ(TempDir::read(map), bytes(mapFile(sources), "expected.map"));

    std::string log = bytes(logFile(results), "expected.log");
    log.replace(64, 64, logHeader(0x6703, 2, 77));
    EXPECT_EQ(TempDir::read(_dir.path("run.log")), log);
}

TEST_F(CoverageWriterTest, FlagSaysThatCountsAreOnlyRanOrNot)
{
    addOneFile();
    _model._isBoolean = true;
    ASSERT_TRUE(write("run"));
    EXPECT_EQ(TempDir::read(_dir.path("run.log")),
              bytes(logFile({{"/s/a.cc", _map, {1}, 0, 1}}), "expected.log"));
}

TEST_F(CoverageWriterTest, MapIsNamedAfterItsContent)
{
    addOneFile();
    ASSERT_TRUE(write("run"));
    const std::string map = TempDir::read(_map);
    ContentDigest digest;
    digest.add(reinterpret_cast<const unsigned char*>(map.data()), map.size());
    EXPECT_EQ(_map, _dir.path("run-" + digest.text().substr(0, 32) + ".map"));
}

// The content is read in pieces.
TEST_F(CoverageWriterTest, LargeMapIsNamedAfterAllOfItsContent)
{
    for (int i = 0; i < 400; ++i) {
        const std::string symbol = "f" + std::to_string(i) + std::string(300, 'x');
        addFile("/s/" + std::to_string(i) + ".cc", {function(symbol.c_str(), 2, 2, {{2, 2, 1}})});
    }
    finishCoverage(_model, NameStyle(), _losses, 1);
    ASSERT_TRUE(write("run"));
    const std::string map = TempDir::read(_map);
    ASSERT_GT(map.size(), 70000u);
    ContentDigest digest;
    digest.add(reinterpret_cast<const unsigned char*>(map.data()), map.size());
    EXPECT_EQ(_map, _dir.path("run-" + digest.text().substr(0, 32) + ".map"));
}

TEST_F(CoverageWriterTest, RunsOfOneBuildShareAMapAndBuildsHaveTheirOwn)
{
    addOneFile();
    ASSERT_TRUE(write("run"));
    const std::string map = _map;
    struct stat before = {};
    ASSERT_EQ(stat(map.c_str(), &before), 0);
    ASSERT_TRUE(write("run", 8));
    EXPECT_EQ(_map, map);
    struct stat after = {};
    ASSERT_EQ(stat(map.c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino); // not even replaced by its like

    const std::string bytes = TempDir::read(map);
    _model._files[0]._functions[0]._endLine = 3;
    ASSERT_TRUE(write("run"));
    EXPECT_NE(_map, map);
    EXPECT_EQ(TempDir::read(map), bytes);
}

TEST_F(CoverageWriterTest, OtherBytesUnderTheMapsNameAreNotOverwritten)
{
    addOneFile();
    ASSERT_TRUE(write("run"));
    const std::string map = _map;
    const std::string log = TempDir::read(_dir.path("run.log"));
    for (const std::string& other : {std::string("other"), TempDir::read(map) + "x"}) {
        std::ofstream(map) << other;
        EXPECT_FALSE(write("run"));
        EXPECT_EQ(_problem.find("cannot write " + map + ": "), 0u) << _problem;
        EXPECT_EQ(TempDir::read(map), other);
        EXPECT_EQ(TempDir::read(_dir.path("run.log")), log);
    }
}

TEST_F(CoverageWriterTest, RelativeLogNamesTheMapFromTheCurrentFolder)
{
    addOneFile();
    fs::create_directory(_dir.path("out"));
    const KeptFolder kept;
    ASSERT_EQ(chdir(_dir.path().c_str()), 0);
    _output._isRelative = true;
    _output._folder = "out/../out";
    ASSERT_TRUE(write("run"));
    EXPECT_EQ(_map.find("out/run-"), 0u) << _map;
    EXPECT_EQ(TempDir::read("out/run.log"),
              bytes(logFile({{"/s/a.cc", _map, {1}, 0, 0}}), "expected.log"));
}

TEST_F(CoverageWriterTest, FolderIsTheOneThatTheSystemTakes)
{
    addOneFile();
    fs::create_directories(_dir.path("far/away"));
    fs::create_directory_symlink("far/away", _dir.path("link"));
    _output._folder = _dir.path("link/..");
    ASSERT_TRUE(write("run"));
    EXPECT_TRUE(fs::exists(_dir.path("far/run.log")));
    EXPECT_EQ(_map.find(_dir.path("far/run-")), 0u) << _map;
    _output._folder = _dir.path("new/and newer/");
    ASSERT_TRUE(write("run"));
    EXPECT_TRUE(fs::exists(_dir.path("new/and newer/run.log")));
}

TEST_F(CoverageWriterTest, EmptyModelLeavesNoFile)
{
    EXPECT_FALSE(write("run"));
    EXPECT_TRUE(fs::is_empty(_dir.path()));
}

TEST_F(CoverageWriterTest, FolderThatCannotBeMadeIsNamedWithTheReason)
{
    addOneFile();
    _output._folder = _dir.write("file", "") + "/run";
    EXPECT_FALSE(write("run"));
    EXPECT_EQ(_problem, "cannot write into " + _dir.path("file/run") + ": Not a directory");
}

TEST_F(CoverageWriterTest, NameThatIsTooLongIsTold)
{
    addOneFile();
    EXPECT_FALSE(write(std::string(240, 'n').c_str()));
    EXPECT_NE(_problem.find(".map: File name too long"), std::string::npos) << _problem;
    EXPECT_TRUE(fs::is_empty(_dir.path()));
}

TEST_F(CoverageWriterTest, FolderInThePlaceOfAFileIsToldBeforeAnythingIsWritten)
{
    addOneFile();
    for (const char* name : {"run.log", "run.losses"}) {
        fs::create_directory(_dir.path(name));
        EXPECT_FALSE(write("run"));
        EXPECT_EQ(_problem, "cannot write " + _dir.path(name) + ": Is a directory");
        fs::remove(_dir.path(name));
        EXPECT_TRUE(fs::is_empty(_dir.path()));
    }
}

TEST_F(CoverageWriterTest, FullDiskLeavesTheOldFiles)
{
    addOneFile();
    ASSERT_TRUE(write("run"));
    const std::string map = _map;
    const std::string log = TempDir::read(_dir.path("run.log"));
    _model._files[0]._functions[0]._endLine = 70;
    std::signal(SIGXFSZ, SIG_IGN);
    for (const rlim_t bytes : {0, 64, 100, 128, 150, 200}) {
        const rlimit sizes = {bytes, RLIM_INFINITY};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &sizes), 0);
        const bool isWritten = write("run");
        const rlimit all = {RLIM_INFINITY, RLIM_INFINITY};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &all), 0);
        EXPECT_FALSE(isWritten) << bytes;
        EXPECT_NE(_problem.find(": File too large"), std::string::npos) << _problem;
        EXPECT_EQ(TempDir::read(_dir.path("run.log")), log);
        EXPECT_EQ(std::distance(fs::directory_iterator(_dir.path()), fs::directory_iterator()), 3)
            << bytes;
    }
    EXPECT_TRUE(fs::exists(map));
}

TEST_F(CoverageWriterTest, WhatDeadImportsLeftIsRemoved)
{
    addOneFile();
    const std::string left = _dir.write(".zem-import-0123456789abcdef.new", "half a map");
    ASSERT_TRUE(write("run"));
    EXPECT_FALSE(fs::exists(left));
}

TEST_F(CoverageWriterTest, RecordsAreNotReadByWriters)
{
    addFile("/s/a.cc", {function("f", 2, 2, {{2, 2, 1}})});
    finishCoverage(_model, NameStyle(), _losses, 1);
    MapWriter map;
    ASSERT_EQ(map.create(_dir.path("x.map").c_str()), 0);
    ASSERT_EQ(map.add(_model._files[0]), 0);
    EXPECT_LT(map.load(), 0);
    LogWriter log;
    ASSERT_EQ(log.create(_dir.path("x.log").c_str(), 0), 0);
    ASSERT_EQ(log.add(_model._files[0], {1}, "x.map", false), 0);
    EXPECT_LT(log.load(), 0);
}

// More runs than take their names at once.
TEST_F(CoverageWriterTest, RunsOfOneImportShareTheMapAndHaveALogEach)
{
    addOneFile();
    CoverageWriter writer(_model, _output);
    ASSERT_TRUE(writer.open());
    for (int run = 0; run < 40; ++run) {
        ImportLosses losses;
        losses._unitsNotRun = static_cast<uint64_t>(run);
        ASSERT_TRUE(writer.add("run" + std::to_string(run), counts(run), losses));
        EXPECT_LE(writer.runsPlaced(), static_cast<size_t>(run) + 1);
    }
    ASSERT_TRUE(writer.finish());
    EXPECT_EQ(writer.runsPlaced(), 40u);
    for (uint32_t run = 0; run < 40; ++run) {
        const std::string name = _dir.path("run" + std::to_string(run));
        EXPECT_EQ(TempDir::read(name + ".log"),
                  bytes(logFile({{"/s/a.cc", writer.map(), {1 + run}, 0, 0}}), "expected.log"));
        const std::string units = std::to_string(run) + " units that never ran\n";
        EXPECT_EQ(TempDir::read(name + ".losses"), run == 0 ? "" : units);
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(_dir.path()), fs::directory_iterator()),
              1 + 2 * 40 + 1); // and expected.log
}

TEST_F(CoverageWriterTest, RunThatCannotBeWrittenLeavesTheOthersAndItsOldFiles)
{
    addOneFile();
    ASSERT_TRUE(write("b"));
    const std::string log = TempDir::read(_dir.path("b.log"));
    fs::create_directory(_dir.path("c.log"));
    {
        CoverageWriter writer(_model, _output);
        ASSERT_TRUE(writer.open());
        ASSERT_TRUE(writer.add("a", counts(5), _losses));
        ASSERT_TRUE(writer.add("b", counts(5), _losses));
        EXPECT_FALSE(writer.add("c", counts(5), _losses));
        EXPECT_EQ(writer.problem(), "cannot write " + _dir.path("c.log") + ": Is a directory");
        EXPECT_EQ(writer.runsPlaced(), 0u);
    }
    EXPECT_EQ(TempDir::read(_dir.path("b.log")), log);
    EXPECT_FALSE(fs::exists(_dir.path("a.log")));
}

TEST_F(CoverageWriterTest, ImportWithoutRunsLeavesNoMap)
{
    addOneFile();
    {
        CoverageWriter writer(_model, _output);
        ASSERT_TRUE(writer.open());
        ASSERT_TRUE(writer.finish());
    }
    EXPECT_TRUE(fs::is_empty(_dir.path()));
}

} // namespace
