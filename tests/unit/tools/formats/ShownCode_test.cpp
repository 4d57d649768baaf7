#include "tools/formats/ShownCode.h"

#include "qip/Support/ListIterator.h"
#include "tests/support/DataFiles.h"
#include "tests/support/TempDir.h"
#include "zem/Data/ZEMFileRecord.h"
#include "zem/Repository/ZEMRepository.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class ShownCodeTest : public ::testing::Test
{
protected:
    ShownCodeTest()
    {
        const std::string map = mapFile({{"src/a.cpp",
                                          {{"List::add__Fi", 1, 9, {{1, 1}, {2, 2}, {3, 3}}},
                                           {"helper__Fv", 11, 19, {{11, 11}}}}},
                                         {"lib/b.cpp", {{"Set::add", 1, 9, {{1, 1}, {2, 2}}}}},
                                         {"c.cpp", {{"main", 1, 9, {{1, 1}}}}}})
                                    .write(_dir.path("p.map"));
        const std::string log =
            logFile(
                {{"src/a.cpp", map, {4, 0, 2, 1}}, {"lib/b.cpp", map, {0, 3}}, {"c.cpp", map, {1}}})
                .write(_dir.path("p.log"));
        EXPECT_EQ(_repository.processFile(log.c_str()), 0);
        EXPECT_EQ(_repository.processFile(log.c_str()), 0);
    }

    // "covered/blocks hits"
    std::string sum(RptType type) const
    {
        const ShownCode shown(type, {_files, _functions, _classes, _directories});
        const ShownCode::Totals totals = shown.totals(_repository.srcfiles());
        return std::to_string(totals.covered) + "/" + std::to_string(totals.blocks) + " " +
               std::to_string(totals.hits);
    }

    TempDir _dir;
    ZEMRepository _repository;
    List<char*> _files;
    List<char*> _functions;
    List<char*> _classes;
    List<char*> _directories;
    char _srcA[10] = "src/a.cpp";
    char _listAdd[14] = "List::add__Fi";
    char _set[4] = "Set";
    char _src[4] = "src";
};

TEST_F(ShownCodeTest, EachBlockCountsOnceWhateverTheReport)
{
    for (const RptType type : {RptByFile, RptByDirectory, RptByFunction, RptByClass}) {
        EXPECT_EQ(sum(type), "5/7 22") << type;
    }
}

TEST_F(ShownCodeTest, FilesAndFunctionsAreLeftOutOfEachReport)
{
    _files.append(_srcA);
    EXPECT_EQ(sum(RptByFile), "3/4 14");
    EXPECT_EQ(sum(RptByClass), "3/4 14");
    _functions.append(_listAdd);
    // Unlike in the row of the file, what is hidden is not there at all.
    EXPECT_EQ(sum(RptByFile), "2/3 12");
}

TEST_F(ShownCodeTest, DirectoriesAreLeftOutOfTheReportByDirectory)
{
    _directories.append(_src);
    EXPECT_EQ(sum(RptByDirectory), "3/4 14");
    EXPECT_EQ(sum(RptByFile), "5/7 22");
}

TEST_F(ShownCodeTest, ClassesAreLeftOutOfTheReportByClass)
{
    _classes.append(_set);
    EXPECT_EQ(sum(RptByClass), "1/2 6");
    EXPECT_EQ(sum(RptByFunction), "5/7 22");
}

} // namespace
