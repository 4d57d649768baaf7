#include "zem/Repository/ZEMRepository.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/qipVLRecFile.h"
#include "tests/support/DataFiles.h"
#include "tests/support/StdErr.h"
#include "tests/support/TempDir.h"
#include "zem/Rows/ZEMView.h"

#include <filesystem>
#include <gtest/gtest.h>

#include <climits>
#include <malloc.h>
#include <sstream>
#include <string>
#include <vector>

namespace {

// One block for each line from 1 on.
MapFunc func(const std::string& name, int nBlocks)
{
    MapFunc result;
    result.name = name;
    result.startLine = 1;
    result.endLine = 90;
    for (int i = 0; i < nBlocks; ++i) {
        result.blocks.push_back({static_cast<uint32_t>(i + 1), static_cast<uint32_t>(i + 1)});
    }
    return result;
}

class ZEMRepositoryTest : public ::testing::Test
{
protected:
    std::string map(const std::string& name, const std::vector<MapSource>& sources) const
    {
        return mapFile(sources).write(_dir.path(name));
    }
    int load(const std::vector<LogSource>& sources)
    {
        return _repository.processFile(logFile(sources).write(_dir.path("run.log")).c_str());
    }

    // Rows as "label covered/total hits", one a line.
    static std::string rows(ZEMRptTable table)
    {
        std::ostringstream out;
        for (int i = 0; i < table._nItems; ++i) {
            const ZEMView& row = *table._view[i];
            out << row._label << " " << row._covBlk << "/" << row._totBlk << " " << row._hits
                << "\n";
        }
        table.deleteRows();
        return out.str();
    }

    std::string totals() const
    {
        long untested = 0;
        long total = 0;
        _repository.coverageSummary(untested, total);
        return std::to_string(untested) + " of " + std::to_string(total);
    }

    TempDir _dir;
    ZEMRepository _repository;
};

TEST_F(ZEMRepositoryTest, EmptyRepositoryHasEmptyViews)
{
    EXPECT_EQ(rows(_repository.viewByDirectory()), "");
    EXPECT_EQ(rows(_repository.viewByFile()), "");
    EXPECT_EQ(rows(_repository.viewByFunction(1)), "");
    EXPECT_EQ(rows(_repository.viewByClass()), "");
    EXPECT_EQ(_repository.viewByFile()._view, nullptr);
    EXPECT_EQ(totals(), "0 of 0");
}

TEST_F(ZEMRepositoryTest, MergesCountsByPositionThroughTheFunctions)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 2), func("g", 3)}}});
    EXPECT_EQ(load({{"src/a.c", path, {5, 0, 7, 0, 1}}}), 0);
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "f 1/2 5\ng 2/3 8\n");
    EXPECT_EQ(totals(), "2 of 5");
}

TEST_F(ZEMRepositoryTest, SourcesAreFoundInWhateverOrderALogNamesThem)
{
    const std::string path =
        map("a.map", {{"a.c", {func("a", 1)}}, {"b.c", {func("b", 1)}}, {"c.c", {func("c", 1)}}});
    EXPECT_EQ(load({{"c.c", path, {4}}, {"a.c", path, {1}}, {"b.c", path, {2}}}), 0);
    EXPECT_EQ(load({{"a.c", path, {1}}, {"c.c", path, {4}}, {"c.c", path, {4}}}), 0);
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "a 1/1 2\nb 1/1 2\nc 1/1 12\n");
}

TEST_F(ZEMRepositoryTest, OneLogMayNameSeveralMapsInTurn)
{
    const std::string one = map("1.map", {{"a.c", {func("a", 1)}}});
    const std::string two = map("2.map", {{"b.c", {func("b", 1)}}});
    EXPECT_EQ(load({{"a.c", one, {1}}, {"b.c", two, {2}}, {"a.c", one, {1}}, {"b.c", two, {2}}}),
              0);
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "a 1/1 2\nb 1/1 4\n");
}

TEST_F(ZEMRepositoryTest, TheSameLogTwiceDoublesEverything)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 3)}}});
    load({{"src/a.c", path, {5, 0, 7}}});
    load({{"src/a.c", path, {5, 0, 7}}});
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "f 2/3 24\n");
    EXPECT_EQ(totals(), "2 of 6");
}

TEST_F(ZEMRepositoryTest, TotalsAddUpForEachRecord)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 2)}}});
    load({{"src/a.c", path, {1, 0}}});
    load({{"src/a.c", path, {0, 1}}});
    EXPECT_EQ(rows(_repository.viewByFile()), "src/a.c 2/2 2\n");
    EXPECT_EQ(totals(), "2 of 4");
}

TEST_F(ZEMRepositoryTest, TheOrderOfLogsChangesNoCount)
{
    const std::string path = map("a.map", {{"a/a.c", {func("f", 3)}}, {"b/b.c", {func("g", 2)}}});
    const std::vector<std::vector<LogSource>> logs = {
        {{"a/a.c", path, {1, 0, 2}}}, {{"b/b.c", path, {0, 3}}}, {{"a/a.c", path, {0, 9, 0}}}};
    ZEMRepository other;
    for (size_t i = 0; i < logs.size(); ++i) {
        load(logs[i]);
        const std::string log = logFile(logs[logs.size() - 1 - i]).write(_dir.path("other.log"));
        EXPECT_EQ(other.processFile(log.c_str()), 0);
    }
    EXPECT_EQ(rows(other.viewByFunction(0)), rows(_repository.viewByFunction(0)));
    long untested = 0;
    long total = 0;
    other.coverageSummary(untested, total);
    EXPECT_EQ(std::to_string(untested) + " of " + std::to_string(total), totals());
}

TEST_F(ZEMRepositoryTest, ALogWithoutRecordsIsCutShort)
{
    // The reader looks for a first record behind the headers.
    EXPECT_EQ(load({}), qipVLRecFile::OpenFailed);
}

TEST_F(ZEMRepositoryTest, AnUnknownSourceChangesNothingSilently)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 1)}}});
    StdErr err;
    EXPECT_EQ(load({{"src/other.c", path, {3}}}), 0);
    EXPECT_EQ(err.text(), "");
    EXPECT_EQ(totals(), "0 of 0");
    EXPECT_EQ(rows(_repository.viewByFile()), "src/a.c 0/1 0\n");
}

TEST_F(ZEMRepositoryTest, TheFirstMapToDescribeASourceWins)
{
    const std::string first = map("1.map", {{"src/a.c", {func("first", 1)}}});
    const std::string second =
        map("2.map", {{"src/a.c", {func("second", 4)}}, {"src/b.c", {func("b", 1)}}});
    load({{"src/a.c", first, {1}}});
    StdErr err;
    load({{"src/a.c", second, {1}}, {"src/b.c", second, {2}}});
    EXPECT_EQ(err.text(), "");
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "first 1/1 2\nb 1/1 2\n");
    EXPECT_EQ(_repository.mapfiles().length(), 2);
}

TEST_F(ZEMRepositoryTest, ASourceTwiceInOneMapCountsOnce)
{
    const std::string path =
        map("a.map", {{"src/a.c", {func("f", 1)}}, {"src/a.c", {func("g", 1)}}});
    load({{"src/a.c", path, {4}}});
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "f 1/1 4\n");
}

TEST_F(ZEMRepositoryTest, AMapIsLoadedOnce)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 1)}}});
    load({{"src/a.c", path, {1}}});
    map("a.map", {{"src/b.c", {func("g", 1)}}});
    load({{"src/b.c", path, {1}}});
    EXPECT_EQ(rows(_repository.viewByFile()), "src/a.c 1/1 1\n");
}

TEST_F(ZEMRepositoryTest, AMissingMapFailsAndIsTriedAgain)
{
    const std::string path = _dir.path("late.map");
    EXPECT_EQ(load({{"src/a.c", path, {1}}}), qipVLRecFile::OpenFailed);
    EXPECT_EQ(_repository.mapfiles().length(), 0);
    EXPECT_STREQ(_repository.failedMap(), path.c_str());
    const std::string other = map("other.map", {{"src/b.c", {func("f", 1)}}});
    EXPECT_EQ(_repository.processMapFile(other.c_str()), 0);
    EXPECT_STREQ(_repository.failedMap(), "");
    map("late.map", {{"src/a.c", {func("f", 1)}}});
    EXPECT_EQ(load({{"src/a.c", path, {1}}}), 0);
    EXPECT_EQ(rows(_repository.viewByFile()), "src/b.c 0/1 0\nsrc/a.c 1/1 1\n");
}

TEST_F(ZEMRepositoryTest, WhatWasMergedBeforeAFailureStays)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 1)}}});
    EXPECT_EQ(load({{"src/a.c", path, {1}},
                    {"src/b.c", _dir.path("none.map"), {1}},
                    {"src/a.c", path, {1}}}),
              qipVLRecFile::OpenFailed);
    EXPECT_EQ(rows(_repository.viewByFile()), "src/a.c 1/1 1\n");
}

TEST_F(ZEMRepositoryTest, ADamagedMapAddsNothing)
{
    RecFileBuilder damaged = mapFile({{"src/a.c", {func("f", 1)}}, {"src/b.c", {func("g", 9)}}});
    damaged.cutAt(damaged.size() - 4);
    const std::string path = damaged.write(_dir.path("a.map"));
    EXPECT_EQ(load({{"src/a.c", path, {1}}}), qipVLRecFile::FileCorrupt);
    EXPECT_EQ(rows(_repository.viewByFile()), "");
}

TEST_F(ZEMRepositoryTest, NullAndEmptyMapPathsAreBadParameters)
{
    EXPECT_EQ(_repository.processMapFile(nullptr), qipVLRecFile::BadParameter);
    EXPECT_EQ(_repository.processMapFile(""), qipVLRecFile::BadParameter);
    EXPECT_EQ(load({{"src/a.c", "", {1}}}), qipVLRecFile::BadParameter);
}

TEST_F(ZEMRepositoryTest, ADifferentBlockCountIsReportedAndMerged)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 5)}}});
    StdErr err;
    EXPECT_EQ(load({{"src/a.c", path, {3, 0}}}), 0);
    EXPECT_EQ(err.text(), " *** ZEMRepository::processLogFile() : block count mismatch!\n"
                          "     Mapfile(src/a.c5, Logfile(src/a.c2\n");
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "f 1/5 3\n");
    EXPECT_EQ(totals(), "4 of 5");
}

TEST_F(ZEMRepositoryTest, TheStatedBlockCountIsComparedAndShownTheFunctionsBlocksAreMerged)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 2), func("g", 1)}, 0, 4},
                                           {"src/b.c", {func("h", 3)}, 0, -2}});
    StdErr err;
    // As many counts as are stated: no complaint.
    EXPECT_EQ(load({{"src/a.c", path, {1, 0, 5, 9, 9, 9, 9}}}), 0);
    EXPECT_EQ(err.text(), "");
    EXPECT_EQ(totals(), "1 of 3");
    // As many as the functions have: one.
    EXPECT_EQ(load({{"src/b.c", path, {0, 0, 1}}}), 0);
    EXPECT_EQ(err.text(), " *** ZEMRepository::processLogFile() : block count mismatch!\n"
                          "     Mapfile(src/b.c1, Logfile(src/b.c3\n");
    EXPECT_EQ(totals(), "3 of 6");
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "f 1/2 1\ng 1/1 5\nh 1/3 1\n");
    // What is stated, without the blocks that never ran.
    EXPECT_EQ(rows(_repository.viewByFile()), "src/a.c 6/7 6\nsrc/b.c -1/1 1\n");
    EXPECT_EQ(rows(_repository.viewByDirectory()), "src 5/8 7\n");
}

// What nobody may take for whole numbers.
TEST_F(ZEMRepositoryTest, RecordsThatDoNotFitAreCounted)
{
    const std::string path =
        map("a.map", {{"src/a.c", {func("f", 1), func("g", 1)}}, {"src/b.c", {func("h", 1)}}});
    ASSERT_EQ(load({{"src/a.c", path, {1, 0}}, {"src/b.c", path, {1}}}), 0);
    EXPECT_EQ(_repository.misfits(), 0);
    ASSERT_EQ(load({{"src/c.c", path, {1}}, {"src/a.c", path, {1, 1}}}), 0); // in no map
    EXPECT_EQ(_repository.misfits(), 1);
    StdErr err;
    ASSERT_EQ(load({{"src/b.c", path, {1, 1}}}), 0); // another number of blocks
    EXPECT_EQ(_repository.misfits(), 2);
    // The same files again, and one that has its functions in another order.
    const std::string same =
        map("b.map", {{"src/a.c", {func("f", 1), func("g", 1)}}, {"src/b.c", {func("h", 1)}}});
    EXPECT_EQ(_repository.processMapFile(same.c_str()), 0);
    EXPECT_EQ(_repository.misfits(), 2);
    const std::string other =
        map("c.map", {{"src/a.c", {func("g", 1), func("f", 1)}}, {"src/b.c", {func("h", 1)}}});
    EXPECT_EQ(_repository.processMapFile(other.c_str()), 0);
    EXPECT_EQ(_repository.misfits(), 3);
    const std::string more =
        map("d.map", {{"src/a.c", {func("f", 1), func("g", 1), func("i", 1)}}, {"src/b.c", {}}});
    EXPECT_EQ(_repository.processMapFile(more.c_str()), 0);
    EXPECT_EQ(_repository.misfits(), 5);
}

TEST_F(ZEMRepositoryTest, RecordsOfUnknownTagsDoNotFit)
{
    StdErr err;
    RecFileBuilder strange = mapFile({{"src/a.c", {func("f", 1)}}, {"src/b.c", {func("g", 1)}}});
    const std::string path = strange.setTag(1, 7).write(_dir.path("a.map"));
    ASSERT_EQ(load({{"src/a.c", path, {1}}}), 0);
    EXPECT_EQ(_repository.misfits(), 1);
    RecFileBuilder log = logFile({{"src/a.c", path, {1}}, {"src/a.c", path, {1}}});
    ASSERT_EQ(_repository.processFile(log.setTag(0, 7).write(_dir.path("b.log")).c_str()), 0);
    EXPECT_EQ(_repository.misfits(), 2);
}

// It was loaded once and is not loaded again; whose log comes later may be of its new code.
TEST_F(ZEMRepositoryTest, AMapThatHasOtherCodeThanWhenItWasLoadedDoesNotFit)
{
    const std::vector<MapSource> before = {{"src/a.c", {func("f", 2)}}};
    std::vector<MapSource> after = before;
    after[0].funcs[0].blocks[1] = {2, 9};
    const std::string path = map("a.map", before);
    const std::vector<LogSource> log = {{"src/a.c", path, {1, 1}}, {"src/a.c", path, {1, 1}}};
    ASSERT_EQ(load(log), 0);
    std::filesystem::remove(path);
    ASSERT_EQ(load(log), 0);
    map("a.map", before); // the same once more
    ASSERT_EQ(load(log), 0);
    EXPECT_EQ(_repository.misfits(), 0);
    map("a.map", after);
    ASSERT_EQ(load(log), 0);
    ASSERT_EQ(load(log), 0);
    EXPECT_EQ(_repository.misfits(), 2); // for each of these logs
    map("a.map", {{"src/a.c", before[0].funcs}, {"src/b.c", before[0].funcs}});
    ASSERT_EQ(load(log), 0);
    EXPECT_EQ(_repository.misfits(), 3);
    StdErr err;
    _dir.write("a.map", TempDir::read(path).substr(0, 200));
    ASSERT_EQ(load(log), 0);
    EXPECT_EQ(_repository.misfits(), 4);
    map("a.map", before);
    ASSERT_EQ(load(log), 0);
    EXPECT_EQ(_repository.misfits(), 4);
    EXPECT_EQ(rows(_repository.viewByFile()), "src/a.c 2/2 32\n");
}

// A log may go from map to map a million times.
TEST_F(ZEMRepositoryTest, AMapIsLookedAtOnceForALog)
{
    const std::string changed = map("a.map", {{"src/a.c", {func("f", 2)}}});
    const std::string other = map("b.map", {{"src/b.c", {func("g", 2)}}});
    std::vector<LogSource> log;
    for (int i = 0; i < 5; ++i) {
        log.push_back({"src/a.c", changed, {1, 1}});
        log.push_back({"src/b.c", other, {1, 1}});
    }
    ASSERT_EQ(load(log), 0);
    map("a.map", {{"src/a.c", {func("h", 2)}}});
    ASSERT_EQ(load(log), 0);
    EXPECT_EQ(_repository.misfits(), 1);
}

TEST_F(ZEMRepositoryTest, AMapThatTellsAnythingElseOfAFunctionDoesNotFit)
{
    const MapFunc first = func("f", 2);
    std::vector<MapFunc> others(7, first);
    others[0].name = "g";
    others[1].startLine = 2;
    others[2].endLine = 91;
    others[3].blocks[1] = {2, 3};
    others[4].blocks[1] = {1, 2};
    others[5].blocks.push_back({3, 3});
    others[6].blocks.pop_back();
    ASSERT_EQ(_repository.processMapFile(map("a.map", {{"src/a.c", {first}}}).c_str()), 0);
    for (size_t i = 0; i < others.size(); ++i) {
        const std::string path = map(std::to_string(i) + ".map", {{"src/a.c", {others[i]}}});
        ASSERT_EQ(_repository.processMapFile(path.c_str()), 0);
        EXPECT_EQ(_repository.misfits(), static_cast<long>(i + 1));
    }
}

TEST_F(ZEMRepositoryTest, CountsPastTheMapsBlocksAreIgnored)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 1)}}});
    StdErr err;
    EXPECT_EQ(load({{"src/a.c", path, {3, 8, 0}}}), 0);
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "f 1/1 3\n");
    EXPECT_EQ(totals(), "0 of 1");
}

TEST_F(ZEMRepositoryTest, HitsSaturate)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 1)}}});
    load({{"src/a.c", path, {UINT32_MAX}}});
    load({{"src/a.c", path, {1}}});
    ListIterator<ZEMFileRecord*> files(_repository.srcfiles());
    EXPECT_EQ(files.next()->_funcList.first()->_blockMap[0]._nHits, UINT32_MAX);
}

TEST_F(ZEMRepositoryTest, EachTableShowsWhatWasLoadedBefore)
{
    const std::string path = map("a.map", {{"src/a.c", {func("A::f", 2)}}, {"src/b.c", {}}});
    load({{"src/a.c", path, {3, 0}}});
    EXPECT_EQ(rows(_repository.viewByFile()), "src/a.c 1/2 3\nsrc/b.c 0/0 0\n");
    load({{"src/a.c", path, {4, 0}}});
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "A::f 1/2 7\n");
    load({{"src/a.c", path, {0, 1}}});
    EXPECT_EQ(rows(_repository.viewByDirectory()), "src 2/2 8\n");
    load({{"src/a.c", path, {2, 0}}});
    EXPECT_EQ(rows(_repository.viewByClass()), "A 2/2 10\n");
    EXPECT_EQ(rows(_repository.viewByClass()), "A 2/2 10\n");
}

// Who loads and does not look leaves the blocks as they were; each way of looking brings them up to
// date.
class ZEMRepositoryLookTest : public ZEMRepositoryTest
{
protected:
    void SetUp() override
    {
        _map = map("a.map", {{"src/a.c", {func("A::f", 2)}}});
        run();
        ListIterator<ZEMFileRecord*> files(_repository.srcfiles());
        _blocks = files.next()->blocks();
        ASSERT_EQ(hits(), 3u);
        run();
        ASSERT_EQ(hits(), 3u) << "nobody has looked since";
    }

    void run() { ASSERT_EQ(load({{"src/a.c", _map, {3, 0}}}), 0); }
    uint32_t hits() const { return _blocks[0]._nHits; }

    std::string _map;
    const ZEMBlkRecord* _blocks = nullptr;
};

TEST_F(ZEMRepositoryLookTest, AtTheSourceFiles)
{
    (void)_repository.srcfiles();
    EXPECT_EQ(hits(), 6u);
}

TEST_F(ZEMRepositoryLookTest, AtTheReportByFile)
{
    EXPECT_EQ(rows(_repository.viewByFile()), "src/a.c 1/2 6\n");
    EXPECT_EQ(hits(), 6u);
}

TEST_F(ZEMRepositoryLookTest, AtTheReportByFileThatAFilterEmpties)
{
    _repository.addFilter('F', "src/none.c");
    EXPECT_EQ(rows(_repository.viewByFile()), "");
    EXPECT_EQ(hits(), 6u);
}

TEST_F(ZEMRepositoryLookTest, AtTheReportByFunction)
{
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "A::f 1/2 6\n");
    EXPECT_EQ(hits(), 6u);
}

TEST_F(ZEMRepositoryLookTest, AtTheReportByDirectory)
{
    EXPECT_EQ(rows(_repository.viewByDirectory()), "src 1/2 6\n");
    EXPECT_EQ(hits(), 6u);
}

TEST_F(ZEMRepositoryLookTest, AtTheReportByClass)
{
    EXPECT_EQ(rows(_repository.viewByClass()), "A 1/2 6\n");
    EXPECT_EQ(hits(), 6u);
}

TEST_F(ZEMRepositoryLookTest, AtTheDumpWhichShowsNoHits)
{
    std::ostringstream out;
    out << _repository;
    EXPECT_EQ(out.str().substr(out.str().rfind('+')), "+ A::f, lines: 1-90, blocks: 2\n"
                                                      "                     [1-1][2-2]\n");
    EXPECT_EQ(hits(), 6u);
    EXPECT_EQ(rows(_repository.viewByFile()), "src/a.c 1/2 6\n");
}

TEST_F(ZEMRepositoryLookTest, AtTheSummaryWhichIsAddedUpWhileLoading)
{
    EXPECT_EQ(totals(), "2 of 4");
    EXPECT_EQ(hits(), 3u);
}

TEST_F(ZEMRepositoryLookTest, AtTheRowsOfAnOlderTable)
{
    ZEMRptTable older = _repository.viewByFunction(0);
    ASSERT_EQ(older._nItems, 1);
    run();
    // A source that is opened from such a row shows the counts of the report that it stands in.
    const auto* record = static_cast<const ZEMFuncRecord*>(older._view[0]->_owner);
    EXPECT_EQ(older._view[0]->_hits, 6);
    EXPECT_EQ(record->_blockMap[0]._nHits, 6u);
    (void)_repository.srcfiles();
    EXPECT_EQ(older._view[0]->_hits, 6);
    EXPECT_EQ(record->_blockMap[0]._nHits, 9u);
    older.deleteRows();
}

// Bytes that the program holds; 0 where a sanitizer keeps the books.
size_t bytesInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

TEST_F(ZEMRepositoryTest, LoadingAndShowingAgainTakesNoMoreMemory)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 5000)}}});
    const std::vector<LogSource> log = {{"src/a.c", path, std::vector<uint32_t>(5000, 1)}};
    load(log);
    rows(_repository.viewByFile());
    const size_t before = bytesInUse();
    for (int i = 0; i < 50; ++i) {
        load(log);
        rows(_repository.viewByFile());
    }
    EXPECT_LT(bytesInUse(), before + 5000);
    EXPECT_EQ(rows(_repository.viewByFile()), "src/a.c 5000/5000 255000\n");
}

TEST_F(ZEMRepositoryTest, RowHitsAreClampedToTheField)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 2)}}});
    load({{"src/a.c", path, {UINT32_MAX, UINT32_MAX}}});
    EXPECT_EQ(rows(_repository.viewByFile()), "src/a.c 2/2 " + std::to_string(INT_MAX) + "\n");
}

TEST_F(ZEMRepositoryTest, UnknownFilterKindAndNullNameChangeNothing)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 1)}}});
    load({{"src/a.c", path, {1}}});
    _repository.addFilter('x', "nothing");
    _repository.addFilter('F', nullptr);
    EXPECT_EQ(rows(_repository.viewByFile()), "src/a.c 1/1 1\n");
}

TEST_F(ZEMRepositoryTest, AFilterIsItsTextAtTheTimeOfTheTable)
{
    const std::string path =
        map("a.map", {{"a/a.c", {func("f:x", 1)}}, {"b/b.c", {func("g:x", 1)}}});
    load({{"a/a.c", path, {1}}, {"b/b.c", path, {1}}});
    char file[] = "?/a.c";
    char function[] = "?:x";
    char directory[] = "?";
    _repository.addFilter('F', file);
    EXPECT_EQ(rows(_repository.viewByFile()), "");
    file[0] = 'a';
    EXPECT_EQ(rows(_repository.viewByFile()), "a/a.c 1/1 1\n");
    _repository.addFilter('f', function);
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "");
    function[0] = 'f';
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "f:x 1/1 1\n");
    _repository.addFilter('d', directory);
    EXPECT_EQ(rows(_repository.viewByDirectory()), "");
    directory[0] = 'a';
    EXPECT_EQ(rows(_repository.viewByDirectory()), "a 1/1 1\n");
    char cls[] = "?";
    _repository.addFilter('o', cls);
    EXPECT_EQ(rows(_repository.viewByClass()), "");
    cls[0] = 'f';
    EXPECT_EQ(rows(_repository.viewByClass()), "f 1/1 1\n");
}

TEST_F(ZEMRepositoryTest, IsSuppressedOnlyByAListWithoutTheName)
{
    List<char*> filter;
    EXPECT_EQ(_repository.isSuppressed(filter, "a"), 0);
    char name[] = "a";
    filter.append(name);
    EXPECT_EQ(_repository.isSuppressed(filter, "a"), 0);
    EXPECT_EQ(_repository.isSuppressed(filter, "A"), 1);
    EXPECT_EQ(_repository.isSuppressed(filter, "ab"), 1);
    EXPECT_EQ(_repository.isSuppressed(filter, nullptr), 1);
}

TEST_F(ZEMRepositoryTest, AFileFilterOfAnUnknownPathHidesEveryRow)
{
    const std::string path = map("a.map", {{"src/a.c", {func("A::f", 1)}}});
    load({{"src/a.c", path, {1}}});
    _repository.addFilter('F', "a.c");
    EXPECT_EQ(rows(_repository.viewByFile()), "");
    EXPECT_EQ(rows(_repository.viewByFunction(1)), "");
    EXPECT_EQ(rows(_repository.viewByDirectory()), "");
    EXPECT_EQ(rows(_repository.viewByClass()), "");
    EXPECT_EQ(totals(), "0 of 1");
}

TEST_F(ZEMRepositoryTest, FilteredFunctionsCountAsCoveredInAFileRow)
{
    const std::string path =
        map("a.map", {{"src/a.c", {func("f", 2), func("g", 3)}}, {"src/b.c", {func("h", 1)}}});
    load({{"src/a.c", path, {1, 0, 0, 0, 0}}, {"src/b.c", path, {0}}});
    _repository.addFilter('f', "f");
    EXPECT_EQ(rows(_repository.viewByFile()), "src/a.c 4/5 1\nsrc/b.c 1/1 0\n");
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "f 1/2 1\n");
}

TEST_F(ZEMRepositoryTest, FunctionFilterComparesStoredNames)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f__3FooFv", 1)}}});
    load({{"src/a.c", path, {1}}});
    EXPECT_EQ(rows(_repository.viewByFunction(1)), "Foo::f 1/1 1\n");
    _repository.addFilter('f', "Foo::f");
    EXPECT_EQ(rows(_repository.viewByFunction(1)), "");
    _repository.addFilter('f', "f__3FooFv");
    EXPECT_EQ(rows(_repository.viewByFunction(1)), "Foo::f 1/1 1\n");
}

TEST_F(ZEMRepositoryTest, LevelsShowMoreAndMoreOfAName)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f__3FooFPCc", 1), func("main", 1)}}});
    load({{"src/a.c", path, {1, 1}}});
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "f__3FooFPCc 1/1 1\nmain 1/1 1\n");
    EXPECT_EQ(rows(_repository.viewByFunction(1)), "Foo::f 1/1 1\nmain 1/1 1\n");
    EXPECT_EQ(rows(_repository.viewByFunction(2)), "Foo::f(char *) 1/1 1\nmain 1/1 1\n");
    EXPECT_EQ(rows(_repository.viewByFunction(3)), "Foo::f(const char *) 1/1 1\nmain 1/1 1\n");
}

TEST_F(ZEMRepositoryTest, FunctionRowsLeadToTheirRecordAndFile)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 1)}}});
    load({{"src/a.c", path, {1}}});
    ZEMRptTable table = _repository.viewByFunction(1);
    ASSERT_EQ(table._nItems, 1);
    const auto* record = static_cast<ZEMFuncRecord*>(table._view[0]->_owner);
    EXPECT_STREQ(record->_funcname, "f");
    EXPECT_STREQ(static_cast<ZEMFileRecord*>(record->_owner)->_filename, "src/a.c");
    EXPECT_STREQ(table._view[0]->filename(), "a.c");
    EXPECT_STREQ(table._view[0]->directory(), "src");
    table.deleteRows();
}

TEST_F(ZEMRepositoryTest, DirectoriesSumTheirFilesAndTheLastMetComesFirst)
{
    const std::string path =
        map("a.map",
            {{"x/a.c", {func("f", 2)}}, {"x/y/b.c", {func("g", 1)}}, {"x/c.c", {func("h", 3)}}});
    load({{"x/a.c", path, {1, 0}}, {"x/y/b.c", path, {0}}, {"x/c.c", path, {2, 2, 0}}});
    EXPECT_EQ(rows(_repository.viewByDirectory()), "x/y 0/1 0\nx 3/5 5\n");
}

TEST_F(ZEMRepositoryTest, PathsWithoutASlashHaveNoDirectoryRow)
{
    const std::string path = map("a.map", {{"main.c", {func("f", 1)}}});
    load({{"main.c", path, {1}}});
    EXPECT_EQ(rows(_repository.viewByFile()), "/main.c 1/1 1\n");
    EXPECT_EQ(rows(_repository.viewByDirectory()), "");
}

TEST_F(ZEMRepositoryTest, TheRootDirectoryHasAnEmptyLabel)
{
    const std::string path = map("a.map", {{"/main.c", {func("f", 1)}}});
    load({{"/main.c", path, {1}}});
    EXPECT_EQ(rows(_repository.viewByDirectory()), " 1/1 1\n");
}

TEST_F(ZEMRepositoryTest, DirectoryFilterActsOnItsOwnReport)
{
    const std::string path = map("a.map", {{"x/a.c", {func("f", 1)}}, {"y/b.c", {func("g", 1)}}});
    load({{"x/a.c", path, {1}}, {"y/b.c", path, {1}}});
    _repository.addFilter('d', "y");
    EXPECT_EQ(rows(_repository.viewByDirectory()), "y 1/1 1\n");
    EXPECT_EQ(rows(_repository.viewByFile()), "x/a.c 1/1 1\ny/b.c 1/1 1\n");
}

TEST_F(ZEMRepositoryTest, ClassesAreWhatStandsBeforeTheLastColons)
{
    const std::string path =
        map("a.map", {{"a.c",
                       {func("A::f", 1), func("N::B::g", 2), func("A::h", 1), func("plain", 1),
                        func("x:f", 1), func(":f", 1), func("::f", 1), func("A::f__Fi", 1)}}});
    load({{"a.c", path, {1, 0, 1, 1, 1, 1, 1, 1, 1}}});
    EXPECT_EQ(rows(_repository.viewByClass()), "x 1/1 1\nN::B 1/2 1\nA 3/3 3\n");
}

TEST_F(ZEMRepositoryTest, ClassFilterActsOnItsOwnReport)
{
    const std::string path = map("a.map", {{"a.c", {func("A::f", 1), func("B::f", 1)}}});
    load({{"a.c", path, {1, 1}}});
    _repository.addFilter('o', "B");
    EXPECT_EQ(rows(_repository.viewByClass()), "B 1/1 1\n");
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "A::f 1/1 1\nB::f 1/1 1\n");
}

TEST_F(ZEMRepositoryTest, FiltersOfDifferentKindsApplyTogether)
{
    const std::string path = map("a.map", {{"x/a.c", {func("A::f", 2), func("B::f", 1)}},
                                           {"y/b.c", {func("A::f", 1), func("A::g", 1)}},
                                           {"x/c.c", {func("A::f", 1)}}});
    load({{"x/a.c", path, {1, 0, 0}}, {"y/b.c", path, {3, 4}}, {"x/c.c", path, {7}}});
    _repository.addFilter('F', "x/a.c");
    _repository.addFilter('F', "y/b.c");
    EXPECT_EQ(rows(_repository.viewByDirectory()), "y 2/2 7\nx 1/3 1\n");
    EXPECT_EQ(rows(_repository.viewByClass()), "B 0/1 0\nA 3/4 8\n");
    _repository.addFilter('f', "A::f");
    EXPECT_EQ(rows(_repository.viewByFunction(0)), "A::f 1/2 1\nA::f 1/1 3\n");
    EXPECT_EQ(rows(_repository.viewByFile()), "x/a.c 2/3 1\ny/b.c 2/2 3\n");
    EXPECT_EQ(rows(_repository.viewByClass()), "A 2/3 4\n");
    _repository.addFilter('o', "B");
    EXPECT_EQ(rows(_repository.viewByClass()), "");
    _repository.addFilter('d', "y");
    EXPECT_EQ(rows(_repository.viewByDirectory()), "y 2/2 3\n");
}

TEST_F(ZEMRepositoryTest, SummaryAsIntIsClamped)
{
    int untested = -1;
    int total = -1;
    _repository.coverageSummary(untested, total);
    EXPECT_EQ(untested, 0);
    EXPECT_EQ(total, 0);
}

TEST_F(ZEMRepositoryTest, EveryTypeHasItsViewAndTheOthersAreByFile)
{
    const std::string path =
        map("a.map", {{"src/a.c", {func("hits__C7ZEMViewFv", 1), func("a::f", 1)}}});
    load({{"src/a.c", path, {1, 1}}});
    EXPECT_EQ(rows(_repository.view(RptByDirectory, 2)), "src 2/2 2\n");
    EXPECT_EQ(rows(_repository.view(RptByFile, 2)), "src/a.c 2/2 2\n");
    EXPECT_EQ(rows(_repository.view(RptByFunction, 2)),
              "ZEMView::hits() const 1/1 1\na::f 1/1 1\n");
    EXPECT_EQ(rows(_repository.view(RptByFunction, 0)), "hits__C7ZEMViewFv 1/1 1\na::f 1/1 1\n");
    EXPECT_EQ(rows(_repository.view(RptByClass, 2)), "a 1/1 1\n");
    EXPECT_EQ(rows(_repository.view(7, 2)), "src/a.c 2/2 2\n");
}

TEST_F(ZEMRepositoryTest, ShowViewListsTheRows)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 2)}}});
    load({{"src/a.c", path, {1, 0}}});
    ZEMRptTable table = _repository.viewByFile();
    StdOut out;
    ZEMRepository::showView(table);
    EXPECT_EQ(out.text(), "src/a.c 1/2\n");
    table.deleteRows();
}

TEST_F(ZEMRepositoryTest, DumpListsMapsSourcesFunctionsAndBlocks)
{
    const std::string path = map("a.map", {{"src/a.c", {func("f", 2)}}});
    load({{"src/a.c", path, {1, 0}}});
    std::ostringstream out;
    out << _repository;
    EXPECT_EQ(out.str(), " **** Repository info:\n"
                         "            map files: 1\n"
                         "                       " +
                             path +
                             "\n"
                             "\n"
                             "         source files: 1\n"
                             "            src/a.c\n"
                             "            --- 1 funcs, 2 blocks\n"
                             "                 +++ f, lines: 1-90, blocks: 2\n"
                             "                     [1-1][2-2]\n");
}

} // namespace
