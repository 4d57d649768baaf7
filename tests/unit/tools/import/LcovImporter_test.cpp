// SPDX-License-Identifier: MIT
#include "tools/import/lcov/LcovImporter.h"

#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/ImportedText.h"
#include "tests/unit/tools/import/LinksInFolder.h"
#include "tools/import/lcov/Tracefile.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <zlib.h>

namespace {

std::string sample(const char* name)
{
    return std::string(ZEM_SOURCE_DIR "/tests/data/formats/") + name;
}

class LcovImporterTest : public ::testing::Test
{
protected:
    ImportedText import(const std::vector<std::string>& texts)
    {
        LcovImporter importer;
        for (size_t i = 0; i < texts.size(); ++i) {
            const std::string path = _dir.write("t" + std::to_string(i + 1) + ".info", texts[i]);
            importer.input(path.c_str());
        }
        return ImportedText(importer);
    }

    // What is said of a text that cannot be read, without the path.
    std::string problemOf(const std::string& text)
    {
        const ImportedText read = import({text});
        EXPECT_FALSE(read._isRead) << text;
        const std::string head = "zem-import: " + _dir.path("t1.info");
        EXPECT_EQ(read._problems.compare(0, head.size(), head), 0) << read._problems;
        return read._problems.substr(std::min(head.size(), read._problems.size()));
    }

    const TempDir _dir;
};

TEST_F(LcovImporterTest, TotalsOfRealFilesAreThoseOfLcov)
{
    const struct
    {
        const char* name;
        std::pair<size_t, size_t> total;
    } rows[] = {{"lcov-1.16.info", {59, 69}},
                {"lcov-1.16-branches.info", {59, 69}},
                {"llvm-cov-14.info", {67, 80}}};
    for (const auto& row : rows) {
        LcovImporter importer;
        importer.input(sample(row.name).c_str());
        const ImportedText read(importer);
        EXPECT_TRUE(read._isRead) << read._problems;
        EXPECT_EQ(read._total, row.total) << row.name;
        EXPECT_EQ(read._losses._unknownRecords, 0u);
    }
}

TEST_F(LcovImporterTest, EachLineBelongsToTheFunctionThatBeganLast)
{
    const ImportedText read = import({"TN:\nSF:/a.c\nFN:3,f\nFN:7,g\nFNDA:1,f\nDA:1,9\nDA:3,1\n"
                                      "DA:6,0\nDA:7,2\nDA:40,3\nLF:5\nLH:4\nend_of_record\n"});
    EXPECT_EQ(read._functions, "/a.c a.c 1-1: 1\n/a.c f 3-6: 3 6\n/a.c g 7-40: 7 40\n");
    EXPECT_EQ(read._runs, ":\n/a.c 1=9 3=1 6=0 7=2 40=3\n");
    EXPECT_EQ(read._losses._guessedEnds, 2u);
    EXPECT_EQ(read._losses._linesOutsideFunctions, 1u);
}

TEST_F(LcovImporterTest, EndLinesAreKept)
{
    const ImportedText read = import({"SF:/a.c\nFN:3,9,f\nFN:5,6,lambda(int, int)\nDA:3,1\nDA:5,2\n"
                                      "DA:7,1\nDA:10,4\nend_of_record\n"});
    EXPECT_EQ(read._functions,
              "/a.c a.c 10-10: 10\n/a.c f 3-9: 3 7\n/a.c lambda(int, int) 5-6: 5\n");
    EXPECT_EQ(read._runs, ":\n/a.c 3=1 5=2 7=1 10=4\n");
    EXPECT_EQ(read._losses._guessedEnds, 0u);
}

TEST_F(LcovImporterTest, PlacesWithAliasesAreRead)
{
    const ImportedText read =
        import({"SF:/a.c\nFNL:0,3,5\nFNA:0,2,_Z1fIiEvT_\nFNA:0,1,_Z1fIlEvT_\nFNL:1,8\nFNA:1,0,g\n"
                "FNA:1,0,h\nDA:3,3\nDA:8,0\nend_of_record\n"});
    EXPECT_EQ(read._functions, "/a.c _Z1fIiEvT_ 3-5: 3\n/a.c _Z1fIlEvT_ 3-5:\n/a.c g 8-8: 8\n"
                               "/a.c h 8-8:\n");
    EXPECT_EQ(read._losses._functionsWithoutLines, 1u); // h; the other is an instance
}

TEST_F(LcovImporterTest, RepeatedLinesAndSectionsAddUp)
{
    const ImportedText read = import({"SF:/a.c\nFN:1,f\nDA:2,5\nDA:1,1\nDA:2,7\nend_of_record\n"
                                      "SF:/a.c\nFN:1,f\nDA:1,1\nDA:3,1\nend_of_record\n"});
    EXPECT_EQ(read._functions, "/a.c f 1-3: 1 2 3\n");
    EXPECT_EQ(read._runs, ":\n/a.c 1=2 2=12 3=1\n");
}

// So many that they are united before their section ends.
TEST_F(LcovImporterTest, LinesThatComeAgainAndAgainAddUp)
{
    std::string text = "SF:/a.c\nFN:1,f\nDA:9,5\n";
    for (int i = 0; i < 100000; ++i) {
        text += "DA:2,1\nDA:1,1\nDA:1,2\n";
    }
    const ImportedText read = import({text + "DA:3,0\nDA:9,6\nend_of_record\n"});
    EXPECT_EQ(read._runs, ":\n/a.c 1=300000 2=100000 3=0 9=11\n");
    EXPECT_EQ(read._functions, "/a.c f 1-9: 1 2 3 9\n");
}

TEST_F(LcovImporterTest, EachTestIsARun)
{
    const ImportedText read =
        import({"TN:one\nSF:/a.c\nFN:1,f\nDA:1,1\nend_of_record\nTN:two\nSF:/a.c\nFN:1,f\nDA:1,0\n"
                "DA:2,4\nend_of_record\n",
                "TN:one\nSF:/a.c\nFN:1,f\nDA:1,2\nend_of_record\n"});
    EXPECT_EQ(read._functions, "/a.c f 1-2: 1 2\n");
    EXPECT_EQ(read._runs, "one:\n/a.c 1=3 2=0\ntwo:\n/a.c 1=0 2=4\n");
}

TEST_F(LcovImporterTest, FilesWithoutTestsAreRunsOfTheirNames)
{
    const std::string text = "TN:\nSF:/a.c\nFN:1,f\nDA:1,1\nend_of_record\n";
    EXPECT_EQ(import({text, text})._runs, "t1:\n/a.c 1=1\nt2:\n/a.c 1=1\n");
}

TEST_F(LcovImporterTest, OrderOfSectionsChangesNothing)
{
    const std::string one = "TN:x\nSF:/a.c\nFN:1,4,f\nFN:3,g\nDA:1,1\nDA:3,1\nend_of_record\n";
    const std::string two = "TN:y\nSF:/a.c\nFN:3,h\nFN:1,f\nDA:2,1\nend_of_record\n";
    EXPECT_EQ(import({one + two})._functions, import({two + one})._functions);
}

TEST_F(LcovImporterTest, LlvmsFileNamesBeforeLocalFunctionsAreDropped)
{
    const ImportedText read =
        import({"SF:/a.cc\nFN:1,1,a b.cc:_ZL1fv\nFN:2,2,a.cc;_ZL1gv\nFN:3,3,-[A b:]\n"
                "FN:4,4,ns::f(a::b)\nFN:5,5,a.cc:g\nDA:1,1\nDA:2,1\nDA:3,1\nDA:4,1\nDA:5,1\n"
                "end_of_record\n"});
    EXPECT_EQ(read._functions, "/a.cc -[A b:] 3-3: 3\n/a.cc _ZL1fv 1-1: 1\n/a.cc _ZL1gv 2-2: 2\n"
                               "/a.cc g 5-5: 5\n/a.cc ns::f(a::b) 4-4: 4\n");
}

TEST_F(LcovImporterTest, CountsOfAllFormsAreRead)
{
    const ImportedText read =
        import({"SF:/a.c\nDA:1,123456789012345678\nDA:2,99999999999999999999\nDA:3,-4\n"
                "DA:4,1e+06\nDA:5,7,fZq0/aB+\r\nDA:6,1234567890123456789,sum\nDA:0,5\n"
                "end_of_record\n"});
    EXPECT_EQ(read._runs, ":\n/a.c 1=123456789012345678 2=9223372036854775807 3=-4 4=1000000 5=7 "
                          "6=1234567890123456768\n");
    EXPECT_EQ(read._losses._linesWithoutNumber, 1u);
    // A sum stops at the largest number.
    EXPECT_EQ(
        import({"SF:/a.c\nDA:1,1e18\nDA:1,9e18\nDA:2,-1e18\nDA:2,-9e18\nend_of_record\n"})._runs,
        ":\n/a.c 1=9223372036854775807 2=-9223372036854775808\n");
}

TEST_F(LcovImporterTest, RecordsOfNewKindsArePassedByAndCounted)
{
    const ImportedText read = import({"# comment\n\nTN:\nSF:/a.c\nVER:1\nXYZ:1,2\nDA:1,1\n"
                                      "BRDA:1,0,a && b,-\nMCDC:1,2,t,1,0,a,b\nend_of_record"});
    EXPECT_TRUE(read._isRead) << read._problems;
    EXPECT_EQ(read._losses._unknownRecords, 1u);
    EXPECT_EQ(read._runs, ":\n/a.c 1=1\n");
}

TEST_F(LcovImporterTest, DamageIsNamedWithItsLine)
{
    EXPECT_EQ(problemOf("TN:\nDA:1,1\n"), ":2: a line outside the section of a source file\n");
    EXPECT_EQ(problemOf("SF:/a.c\nDA:1\nend_of_record\n"),
              ":2: the record of a line wants two numbers: DA:line,count\n");
    EXPECT_EQ(problemOf("SF:/a.c\nDA:x,1\nend_of_record\n"),
              ":2: the record of a line wants two numbers: DA:line,count\n");
    EXPECT_EQ(problemOf("SF:/a.c\nDA:99999999999,1\nend_of_record\n"),
              ":2: the record of a line wants two numbers: DA:line,count\n");
    EXPECT_EQ(problemOf("SF:/a.c\nDA:1,1e\nend_of_record\n"),
              ":2: the record of a line wants two numbers: DA:line,count\n");
    EXPECT_EQ(problemOf("SF:/a.c\nDA:1," + std::string(65, '1') + "\nend_of_record\n"),
              ":2: the record of a line wants two numbers: DA:line,count\n");
    EXPECT_EQ(problemOf("SF:/a.c\nDA:1,1\n"),
              ":2: the file ends within a section: it is cut short\n");
    EXPECT_EQ(problemOf("SF:/a.c\nSF:/b.c\n"),
              ":2: a section begins before the one before it has ended\n");
    EXPECT_EQ(problemOf("SF:\n"), ":1: the source file has no name\n");
    EXPECT_EQ(problemOf("end_of_record\n"), ":1: the end of a section that has not begun\n");
    EXPECT_EQ(problemOf("SF:/a.c\nFN:f\nend_of_record\n"),
              ":2: the record of a function wants a line and a name: FN:line,name\n");
    EXPECT_EQ(problemOf("FN:1,f\n"), ":1: a function outside the section of a source file\n");
    EXPECT_EQ(problemOf("SF:/a.c\nFNA:3,1,f\n"),
              ":2: no FNL record of this section has the index 3\n");
    EXPECT_EQ(problemOf("SF:/a.c\nFNL:3,1,2,3\n"),
              ":2: the record of a function's place wants two or three numbers: "
              "FNL:index,line[,last line]\n");
    EXPECT_EQ(problemOf(""), ": no section of a source file in it: is it a tracefile of lcov?\n");
    EXPECT_EQ(problemOf("<?xml version='1.0'?>\n"),
              ":1: this is no record of a tracefile: <?xml version='1.0'?>\n");
}

TEST_F(LcovImporterTest, EveryCutEndsInAMessageOrIsWholeSections)
{
    const std::string first = "TN:\nSF:/a.c\nFN:1,f\nFNL:1,2\nFNA:1,2,g\nDA:1,12\nend_of_record\n";
    const std::string text = first + "TN:two\nSF:/a.c\nDA:1,5\nend_of_record\n#more\n";
    for (size_t size = 0; size < text.size(); ++size) {
        const ImportedText read = import({text.substr(0, size)});
        // The ends of both sections, without and with their newline, and the whole line between.
        const std::set<size_t> whole = {first.size() - 1, first.size(), first.size() + 7,
                                        text.size() - 7, text.size() - 6};
        EXPECT_EQ(read._isRead, whole.count(size) != 0) << size;
        EXPECT_EQ(read._problems.empty(), read._isRead);
    }
    EXPECT_EQ(problemOf(first + "TN:tw"), ":8: the file ends within a line: it is cut short\n");
    EXPECT_TRUE(import({first.substr(0, first.size() - 1) + "\r"})._isRead);
}

TEST_F(LcovImporterTest, LongLinesAreRefusedOrPassedBy)
{
    const std::string large(3 * Tracefile::LongestRecord, 'x');
    const std::string wanted = problemOf("TN:\nSF:/" + large + "\n");
    EXPECT_EQ(wanted, ":2: the line has more than 1048576 bytes\n");
    const ImportedText read =
        import({"SF:/a.c\nBRDA:1,0," + large + ",1\nDA:1,3\nend_of_record\n#" + large + "\n"});
    EXPECT_EQ(read._runs, ":\n/a.c 1=3\n") << read._problems;
    // One of any length may be the last, and cut.
    for (const size_t size :
         {Tracefile::LongestRecord - 1, Tracefile::LongestRecord, large.size()}) {
        EXPECT_NE(problemOf("SF:/a.c\nend_of_record\n#" + large.substr(0, size)).find("cut short"),
                  std::string::npos);
    }
    // The line behind it keeps its number.
    EXPECT_EQ(problemOf("#" + large + "\nbad\n"), ":2: this is no record of a tracefile: bad\n");
}

TEST_F(LcovImporterTest, RecordsOfFilesLargerThanAPieceAreWhole)
{
    std::string text = "SF:/a.c\n";
    uint32_t lines = 0;
    while (text.size() < Tracefile::LongestRecord + 10000) {
        text += "DA:" + std::to_string(1 + lines++ % 7) + ",1\n";
    }
    const ImportedText read = import({text + "end_of_record\n"});
    std::string runs = ":\n/a.c";
    for (uint32_t i = 0; i < 7; ++i) {
        runs += " " + std::to_string(i + 1) + "=" + std::to_string((lines + 6 - i) / 7);
    }
    EXPECT_EQ(read._runs, runs + "\n") << read._problems;
}

TEST_F(LcovImporterTest, LinesMayEndAsThoseOfOtherSystems)
{
    const ImportedText read =
        import({"TN:one\r\nSF:/a.c\r\nFN:1,2,f\r\nDA:1,3\r\nDA:2,0\r\nend_of_record\r\n"});
    EXPECT_EQ(read._functions, "/a.c f 1-2: 1 2\n") << read._problems;
    EXPECT_EQ(read._runs, ":\n/a.c 1=3 2=0\n");
}

// They are kept in pieces of seven bits.
TEST_F(LcovImporterTest, DistancesAndCountsOfRoundNumbersAreKept)
{
    const ImportedText read = import({"SF:/a.c\nDA:1,64\nDA:129,0\nDA:16513,8192\n"
                                      "DA:16514,63\nDA:16515,1048576\nend_of_record\n"});
    EXPECT_EQ(read._runs, ":\n/a.c 1=64 129=0 16513=8192 16514=63 16515=1048576\n")
        << read._problems;
}

TEST_F(LcovImporterTest, ManyTestsAreRefused)
{
    std::string text;
    for (size_t i = 0; i <= Tracefile::MostTests; ++i) {
        text += "TN:" + std::to_string(i) + "\nSF:/a.c\nend_of_record\n";
    }
    EXPECT_EQ(problemOf(text), ":30002: there are more than 10000 tests: leave their names out "
                               "(TN:), and all are one log\n");
}

TEST_F(LcovImporterTest, RelativePathsAreFoundBesideTheTracefile)
{
    _dir.write("src/a.c", "");
    const ImportedText read = import({"SF:src/a.c\nDA:1,3\nend_of_record\n"});
    EXPECT_EQ(read._runs, ":\n" + _dir.path("src/a.c") + " 1=3\n");
}

TEST_F(LcovImporterTest, GzippedFilesAndFoldersAreRead)
{
    const std::string path = _dir.path("in/deep.info.gz");
    _dir.write("in/other.txt", "no tracefile");
    gzFile file = gzopen(path.c_str(), "wb");
    const std::string text = "SF:/a.c\nDA:1,3\nend_of_record\n";
    gzwrite(file, text.data(), static_cast<unsigned int>(text.size()));
    gzclose(file);
    LcovImporter importer;
    importer.input(_dir.path("in").c_str());
    EXPECT_EQ(ImportedText(importer)._runs, ":\n/a.c 1=3\n");
    EXPECT_TRUE(importer.recognises(path.c_str()));
    EXPECT_TRUE(importer.recognises(_dir.path("in").c_str()));
}

TEST_F(LcovImporterTest, WhatAFolderLacksIsCountedAndTold)
{
    addLinks(_dir, "in/a.info", "in/b.info.gz", "SF:/a.c\nDA:1,3\nend_of_record\n");
    LcovImporter importer;
    importer.input(_dir.path("in").c_str());
    const ImportedText read(importer);
    EXPECT_TRUE(read._isRead);
    EXPECT_EQ(read._problems, problemsOfLinks(_dir, "in", "in/b.info.gz"));
    EXPECT_EQ(read._losses._unreadFolders, 1u);
    EXPECT_EQ(read._losses._linkedFolders, 1u);
    EXPECT_TRUE(read._losses.isIncomplete());
}

TEST_F(LcovImporterTest, WhatIsNotThereIsSaid)
{
    LcovImporter importer;
    importer.input("/nowhere/a.info");
    const ImportedText read(importer);
    EXPECT_FALSE(read._isRead);
    EXPECT_EQ(read._problems, "zem-import: /nowhere/a.info: No such file or directory\n");
    EXPECT_FALSE(importer.recognises("/nowhere/a.info"));
    EXPECT_FALSE(importer.recognises(_dir.write("a.txt", "text").c_str()));
    EXPECT_TRUE(importer.recognises(_dir.write("b", "# by hand\nTN:\nSF:/a.c\n").c_str()));
}

} // namespace
