// SPDX-License-Identifier: MIT
#include "tools/common/writeCoverage.h"

#include "tests/support/DataFiles.h"
#include "tests/support/TempDir.h"
#include "tests/unit/tools/common/CovSample.h"
#include "tools/common/ContentDigest.h"
#include "tools/common/LogWriter.h"
#include "tools/common/MapWriter.h"
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

class WriteCoverageTest : public ::testing::Test
{
protected:
    CovFunction function(const char* symbol, uint32_t start, uint32_t end,
                         const std::vector<CovBlock>& blocks)
    {
        return covFunction(symbol, start, end, blocks);
    }

    void addFile(const std::string& path, const std::vector<CovFunction>& functions)
    {
        _model._files.emplace_back();
        _model._files.back()._path = path;
        _model._files.back()._functions = functions;
    }

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

    bool write(const char* name)
    {
        _output._name = name;
        _result = CoverageResult();
        return writeCoverage(_model, _losses, _output, _result);
    }

    const TempDir _dir;
    CoverageModel _model;
    ImportLosses _losses;
    CoverageOutput _output{_dir.path(), "run", false};
    CoverageResult _result;
};

TEST_F(WriteCoverageTest, WritesTheBytesOfAMapAndALog)
{
    const std::string path = _dir.write("a b.cc", "text\n");
    addFile(path, {function("main", 1, 9, {{1, 4, 3}, {5, 9, 0}})});
    addFile("/s/z.cc", {function("f", 2, 2, {{2, 2, 1}})});
    _model._executionTime = 77;
    finishCoverage(_model, NameStyle(), _losses, 2);
    ASSERT_TRUE(write("run")) << _result._problem;

    const uint32_t time = _model._files[1]._timeModified == 0 ? _model._files[0]._timeModified
                                                              : _model._files[1]._timeModified;
    const std::string map = _result._map;
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

TEST_F(WriteCoverageTest, FlagSaysThatCountsAreOnlyRanOrNot)
{
    addOneFile();
    _model._isBoolean = true;
    ASSERT_TRUE(write("run"));
    EXPECT_EQ(TempDir::read(_dir.path("run.log")),
              bytes(logFile({{"/s/a.cc", _result._map, {1}, 0, 1}}), "expected.log"));
}

TEST_F(WriteCoverageTest, MapIsNamedAfterItsContent)
{
    addOneFile();
    ASSERT_TRUE(write("run"));
    const std::string map = TempDir::read(_result._map);
    ContentDigest digest;
    digest.add(reinterpret_cast<const unsigned char*>(map.data()), map.size());
    EXPECT_EQ(_result._map, _dir.path("run-" + digest.text().substr(0, 32) + ".map"));
}

TEST_F(WriteCoverageTest, RunsOfOneBuildShareAMapAndBuildsHaveTheirOwn)
{
    addOneFile();
    ASSERT_TRUE(write("run"));
    const std::string map = _result._map;
    struct stat before = {};
    ASSERT_EQ(stat(map.c_str(), &before), 0);
    _model._files[0]._functions[0]._blocks[0]._hits = 9;
    ASSERT_TRUE(write("run"));
    EXPECT_EQ(_result._map, map);
    struct stat after = {};
    ASSERT_EQ(stat(map.c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino); // not even replaced by its like

    const std::string bytes = TempDir::read(map);
    _model._files[0]._functions[0]._endLine = 3;
    ASSERT_TRUE(write("run"));
    EXPECT_NE(_result._map, map);
    EXPECT_EQ(TempDir::read(map), bytes);
}

TEST_F(WriteCoverageTest, OtherBytesUnderTheMapsNameAreNotOverwritten)
{
    addOneFile();
    ASSERT_TRUE(write("run"));
    const std::string map = _result._map;
    const std::string log = TempDir::read(_dir.path("run.log"));
    for (const std::string& other : {std::string("other"), TempDir::read(map) + "x"}) {
        std::ofstream(map) << other;
        EXPECT_FALSE(write("run"));
        EXPECT_EQ(_result._problem.find("cannot write " + map + ": "), 0u) << _result._problem;
        EXPECT_EQ(TempDir::read(map), other);
        EXPECT_EQ(TempDir::read(_dir.path("run.log")), log);
    }
}

TEST_F(WriteCoverageTest, RelativeLogNamesTheMapFromTheCurrentFolder)
{
    addOneFile();
    fs::create_directory(_dir.path("out"));
    ASSERT_EQ(chdir(_dir.path().c_str()), 0);
    _output._isRelative = true;
    _output._folder = "out/../out";
    ASSERT_TRUE(write("run"));
    EXPECT_EQ(_result._map.find("out/run-"), 0u) << _result._map;
    EXPECT_EQ(TempDir::read("out/run.log"),
              bytes(logFile({{"/s/a.cc", _result._map, {1}, 0, 0}}), "expected.log"));
    ASSERT_EQ(chdir("/"), 0);
}

TEST_F(WriteCoverageTest, FolderIsTheOneThatTheSystemTakes)
{
    addOneFile();
    fs::create_directories(_dir.path("far/away"));
    fs::create_directory_symlink("far/away", _dir.path("link"));
    _output._folder = _dir.path("link/..");
    ASSERT_TRUE(write("run"));
    EXPECT_TRUE(fs::exists(_dir.path("far/run.log")));
    EXPECT_EQ(_result._map.find(_dir.path("far/run-")), 0u) << _result._map;
    _output._folder = _dir.path("new/and newer/");
    ASSERT_TRUE(write("run"));
    EXPECT_TRUE(fs::exists(_dir.path("new/and newer/run.log")));
}

TEST_F(WriteCoverageTest, EmptyModelLeavesNoFile)
{
    EXPECT_FALSE(write("run"));
    EXPECT_TRUE(fs::is_empty(_dir.path()));
}

TEST_F(WriteCoverageTest, FolderThatCannotBeMadeIsNamedWithTheReason)
{
    addOneFile();
    _output._folder = _dir.write("file", "") + "/run";
    EXPECT_FALSE(write("run"));
    EXPECT_EQ(_result._problem, "cannot write into " + _dir.path("file/run") + ": Not a directory");
}

TEST_F(WriteCoverageTest, NameThatIsTooLongIsTold)
{
    addOneFile();
    EXPECT_FALSE(write(std::string(240, 'n').c_str()));
    EXPECT_NE(_result._problem.find(".map: File name too long"), std::string::npos)
        << _result._problem;
    EXPECT_TRUE(fs::is_empty(_dir.path()));
}

TEST_F(WriteCoverageTest, FolderInThePlaceOfAFileIsToldBeforeAnythingIsWritten)
{
    addOneFile();
    for (const char* name : {"run.log", "run.losses"}) {
        fs::create_directory(_dir.path(name));
        EXPECT_FALSE(write("run"));
        EXPECT_EQ(_result._problem, "cannot write " + _dir.path(name) + ": Is a directory");
        fs::remove(_dir.path(name));
        EXPECT_TRUE(fs::is_empty(_dir.path()));
    }
}

TEST_F(WriteCoverageTest, FullDiskLeavesTheOldFiles)
{
    addOneFile();
    ASSERT_TRUE(write("run"));
    const std::string map = _result._map;
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
        EXPECT_NE(_result._problem.find(": File too large"), std::string::npos) << _result._problem;
        EXPECT_EQ(TempDir::read(_dir.path("run.log")), log);
        EXPECT_EQ(std::distance(fs::directory_iterator(_dir.path()), fs::directory_iterator()), 3)
            << bytes;
    }
    EXPECT_TRUE(fs::exists(map));
}

TEST_F(WriteCoverageTest, WhatDeadImportsLeftIsRemoved)
{
    addOneFile();
    const std::string left = _dir.write(".zem-import-0123456789abcdef.new", "half a map");
    ASSERT_TRUE(write("run"));
    EXPECT_FALSE(fs::exists(left));
}

TEST_F(WriteCoverageTest, RecordsAreNotReadByWriters)
{
    addFile("/s/a.cc", {function("f", 2, 2, {{2, 2, 1}})});
    finishCoverage(_model, NameStyle(), _losses, 1);
    MapWriter map;
    ASSERT_EQ(map.create(_dir.path("x.map").c_str()), 0);
    ASSERT_EQ(map.add(_model._files[0]), 0);
    EXPECT_LT(map.load(), 0);
    LogWriter log;
    ASSERT_EQ(log.create(_dir.path("x.log").c_str(), 0), 0);
    ASSERT_EQ(log.add(_model._files[0], "x.map", false), 0);
    EXPECT_LT(log.load(), 0);
}

} // namespace
