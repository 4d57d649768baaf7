// Every allocation of loading and of each view fails once: the numbers are right, or there are none
// and the caller is told.
#include "zem/Repository/ZEMRepository.h"

#include "qip/Support/qipVLRecFile.h"
#include "tests/support/DataFiles.h"
#include "tests/support/FailingNew.h"
#include "tests/support/TempDir.h"
#include "zem/Rows/ZEMView.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace {

using View = std::function<ZEMRptTable(const ZEMRepository&)>;

struct NamedView
{
    const char* name;
    View view;
};

const NamedView Views[] = {
    {"directory",
     [](const ZEMRepository& r) {
         return r.viewByDirectory();
     }},
    {"file",
     [](const ZEMRepository& r) {
         return r.viewByFile();
     }},
    {"function",
     [](const ZEMRepository& r) {
         return r.viewByFunction(0);
     }},
    {"class",
     [](const ZEMRepository& r) {
         return r.viewByClass();
     }},
};

const FailingNew::Mode Modes[] = {FailingNew::Once, FailingNew::FromThen};

std::string rows(const ZEMRptTable& table)
{
    std::ostringstream out;
    for (int i = 0; i < table._nItems; ++i) {
        const ZEMView& row = *table._view[i];
        out << row._label << " " << row.directory() << " " << row.filename() << " "
            << row.funcname() << " " << row._covBlk << "/" << row._totBlk << " " << row._hits
            << "\n";
    }
    return out.str();
}

class RepositoryMemoryTest : public ::testing::Test
{
protected:
    RepositoryMemoryTest()
    {
        std::vector<MapSource> sources;
        std::vector<LogSource> counts;
        const std::string map = _dir.path("p.map");
        for (int i = 0; i < 6; ++i) {
            const std::string path =
                "a/long/directory/" + std::to_string(i % 3) + "/file" + std::to_string(i) + ".cpp";
            const std::string one = "Class" + std::to_string(i % 4) + "::one";
            sources.push_back(
                {path, {{one, 1, 9, {{1, 2}, {3, 4}}}, {"plain", 11, 12, {{11, 12}}}}});
            counts.push_back({path, map, {1, 0, 5}});
        }
        mapFile(sources).write(map);
        _log = logFile(counts).write(_dir.path("p.log"));
    }

    // What each view shows without failures.
    static std::vector<std::string> allRows(const ZEMRepository& repository)
    {
        std::vector<std::string> result;
        for (const NamedView& each : Views) {
            ZEMRptTable table = each.view(repository);
            EXPECT_TRUE(table.isWhole()) << each.name;
            result.push_back(rows(table));
            table.deleteRows();
        }
        return result;
    }

    TempDir _dir;
    std::string _log;
};

TEST_F(RepositoryMemoryTest, ALogIsMergedWholeOrNotAtAll)
{
    ZEMRepository whole;
    ASSERT_EQ(whole.processFile(_log.c_str()), 0);
    const std::vector<std::string> expected = allRows(whole);
    for (const FailingNew::Mode mode : Modes) {
        bool goesOn = true;
        long n = 0;
        while (goesOn) {
            ++n;
            ZEMRepository repository;
            int result = 0;
            goesOn =
                FailingNew::run(n, mode, [&] { result = repository.processFile(_log.c_str()); });
            if (result < 0) {
                EXPECT_EQ(repository.failure()._cause, qipVLRecFile::OutOfMemory) << n;
                EXPECT_EQ(repository.srcfiles().length(), 0) << n;
                long untested = 0;
                long total = 0;
                repository.coverageSummary(untested, total);
                EXPECT_EQ(total, 0) << n;
                EXPECT_EQ(repository.processFile(_log.c_str()), 0) << n;
            }
            EXPECT_EQ(allRows(repository), expected) << n;
        }
        EXPECT_GT(n, 30);
    }
}

TEST_F(RepositoryMemoryTest, AViewIsWholeOrEmpty)
{
    ZEMRepository repository;
    ASSERT_EQ(repository.processFile(_log.c_str()), 0);
    const std::vector<std::string> expected = allRows(repository);
    for (const FailingNew::Mode mode : Modes) {
        for (size_t i = 0; i < std::size(Views); ++i) {
            bool goesOn = true;
            int nEmpty = 0;
            for (long n = 1; goesOn; ++n) {
                ZEMRptTable table;
                goesOn = FailingNew::run(n, mode, [&] { table = Views[i].view(repository); });
                if (table.isWhole()) {
                    EXPECT_EQ(rows(table), expected[i]) << Views[i].name << n;
                } else {
                    EXPECT_EQ(table._nItems, 0) << Views[i].name << n;
                    EXPECT_EQ(table._view, nullptr) << Views[i].name << n;
                    ++nEmpty;
                }
                table.deleteRows();
            }
            EXPECT_GT(nEmpty, 10) << Views[i].name;
        }
    }
    EXPECT_EQ(allRows(repository), expected);
}

TEST_F(RepositoryMemoryTest, FilteredViewsAreWholeOrEmpty)
{
    ZEMRepository repository;
    ASSERT_EQ(repository.processFile(_log.c_str()), 0);
    repository.addFilter('f', "plain");
    repository.addFilter('d', "a/long/directory/1");
    repository.addFilter('F', "a/long/directory/1/file1.cpp");
    repository.addFilter('o', "Class2");
    const std::vector<std::string> expected = allRows(repository);
    for (size_t i = 0; i < std::size(Views); ++i) {
        bool goesOn = true;
        for (long n = 1; goesOn; ++n) {
            ZEMRptTable table;
            goesOn =
                FailingNew::run(n, FailingNew::Once, [&] { table = Views[i].view(repository); });
            EXPECT_EQ(rows(table), table.isWhole() ? expected[i] : "") << Views[i].name << n;
            table.deleteRows();
        }
    }
}

TEST_F(RepositoryMemoryTest, WithoutOneOfItsFiltersNoViewIsShown)
{
    ZEMRepository repository;
    ASSERT_EQ(repository.processFile(_log.c_str()), 0);
    ASSERT_TRUE(FailingNew::run(1, FailingNew::Once, [&] { repository.addFilter('F', "other"); }));
    for (const NamedView& each : Views) {
        const ZEMRptTable table = each.view(repository);
        EXPECT_FALSE(table.isWhole()) << each.name;
        EXPECT_EQ(table._nItems, 0) << each.name;
    }
}

TEST_F(RepositoryMemoryTest, TheRepositoryItselfTakesNoMemory)
{
    EXPECT_EQ(FailingNew::count([] { const ZEMRepository repository; }), 0);
}

} // namespace
