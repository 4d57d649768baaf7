// SPDX-License-Identifier: MIT
#include "tools/common/writeCoverage.h"

#include "qip/Support/qipVLRecFile.h"
#include "tests/support/DataFiles.h"
#include "tests/support/TempDir.h"
#include "tools/common/LogWriter.h"
#include "tools/common/MapWriter.h"
#include "tools/common/finishCoverage.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

class WriteCoverageTest : public ::testing::Test
{
protected:
    CovFunction function(const char* symbol, uint32_t start, uint32_t end,
                         const std::vector<CovBlock>& blocks)
    {
        CovFunction result;
        result._symbol = symbol;
        result._startLine = start;
        result._endLine = end;
        result._blocks = blocks;
        return result;
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

    const TempDir _dir;
    CoverageModel _model;
    ImportLosses _losses;
};

TEST_F(WriteCoverageTest, WritesTheBytesOfAMapAndALog)
{
    const std::string path = _dir.write("a b.cc", "text\n");
    addFile(path, {function("main", 1, 9, {{1, 4, 3}, {5, 9, 0}})});
    addFile("/s/z.cc", {function("f", 2, 2, {{2, 2, 1}})});
    _model._executionTime = 77;
    finishCoverage(_model, _losses, 2);
    std::string failure;
    ASSERT_EQ(writeCoverage(_model, _losses, _dir.path("run"), failure), 0);

    const uint32_t time = _model._files[1]._timeModified == 0 ? _model._files[0]._timeModified
                                                              : _model._files[1]._timeModified;
    const std::string map = _dir.path("run.map");
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
    addFile("/s/a.cc", {function("f", 2, 2, {{2, 2, 1}})});
    _model._isBoolean = true;
    finishCoverage(_model, _losses, 1);
    std::string failure;
    ASSERT_EQ(writeCoverage(_model, _losses, _dir.path("run"), failure), 0);
    EXPECT_EQ(TempDir::read(_dir.path("run.log")),
              bytes(logFile({{"/s/a.cc", _dir.path("run.map"), {1}, 0, 1}}), "expected.log"));
}

TEST_F(WriteCoverageTest, EmptyModelLeavesNoFile)
{
    std::string failure;
    EXPECT_EQ(writeCoverage(_model, _losses, _dir.path("run"), failure),
              qipVLRecFile::BadParameter);
    EXPECT_TRUE(std::filesystem::is_empty(_dir.path()));
}

TEST_F(WriteCoverageTest, FolderThatIsNotThereNamesTheFile)
{
    addFile("/s/a.cc", {function("f", 2, 2, {{2, 2, 1}})});
    finishCoverage(_model, _losses, 1);
    std::string failure;
    EXPECT_EQ(writeCoverage(_model, _losses, _dir.path("none/run"), failure),
              qipVLRecFile::OpenFailed);
    EXPECT_EQ(failure, _dir.path("none/run.map"));
}

TEST_F(WriteCoverageTest, NameThatCannotBeTakenLeavesNoTemporaryFile)
{
    addFile("/s/a.cc", {function("f", 2, 2, {{2, 2, 1}})});
    finishCoverage(_model, _losses, 1);
    std::filesystem::create_directory(_dir.path("run.log"));
    _dir.write("run.log/full", "");
    std::string failure;
    EXPECT_NE(writeCoverage(_model, _losses, _dir.path("run"), failure), 0);
    EXPECT_EQ(failure, _dir.path("run.log"));
    for (const auto& entry : std::filesystem::directory_iterator(_dir.path())) {
        EXPECT_EQ(entry.path().string().find(".new."), std::string::npos) << entry.path();
    }
}

TEST_F(WriteCoverageTest, RecordsAreNotReadByWriters)
{
    addFile("/s/a.cc", {function("f", 2, 2, {{2, 2, 1}})});
    finishCoverage(_model, _losses, 1);
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
