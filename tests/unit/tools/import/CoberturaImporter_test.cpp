// SPDX-License-Identifier: MIT
#include "tools/import/cobertura/CoberturaImporter.h"

#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/ImportedText.h"
#include "tests/unit/tools/import/LinksInFolder.h"
#include "tools/import/cobertura/CoberturaDocument.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

const char sample[] = ZEM_SOURCE_DIR "/tests/data/formats/gcovr-5.2.xml";

std::string classOf(const std::string& file, const std::string& content)
{
    return "<class name='a' filename='" + file + "'>" + content + "</class>";
}

std::string lines(const std::string& content)
{
    return "<lines>" + content + "</lines>";
}

std::string line(int number, const std::string& hits)
{
    return "<line number='" + std::to_string(number) + "' hits='" + hits + "'/>";
}

std::string document(const std::string& classes, const std::string& sources = "")
{
    return "<coverage timestamp='1700000000'><sources>" + sources +
           "</sources><packages><package name='p'><classes>" + classes +
           "</classes></package></packages></coverage>";
}

class CoberturaImporterTest : public ::testing::Test
{
protected:
    ImportedText import(const std::vector<std::string>& texts)
    {
        CoberturaImporter importer;
        for (size_t i = 0; i < texts.size(); ++i) {
            const std::string path = _dir.write("c" + std::to_string(i + 1) + ".xml", texts[i]);
            importer.input(path.c_str());
        }
        return ImportedText(importer);
    }

    // What is said of a text that cannot be read, without the path.
    std::string problemOf(const std::string& text)
    {
        const ImportedText read = import({text});
        EXPECT_FALSE(read._isRead);
        const std::string head = "zem-import: " + _dir.path("c1.xml");
        EXPECT_EQ(read._problems.compare(0, head.size(), head), 0) << read._problems;
        return read._problems.substr(std::min(head.size(), read._problems.size()));
    }

    const TempDir _dir;
};

TEST_F(CoberturaImporterTest, TotalsOfARealDocumentAreThoseOfItsWriter)
{
    CoberturaImporter importer;
    importer.input(sample);
    const ImportedText read(importer);
    EXPECT_EQ(read._total, (std::pair<size_t, size_t>{59, 69})) << read._problems;
    EXPECT_TRUE(importer.recognises(sample));
}

TEST_F(CoberturaImporterTest, LinesOfAMethodCountOnceAsTheClassHasThem)
{
    const ImportedText read = import({document(
        classOf("/a.cc", "<methods><method name='f' signature='(int)'>" +
                             lines(line(2, "9") + line(4, "9")) + "</method></methods>" +
                             lines(line(2, "3") + line(3, "0") + line(4, "1") + line(7, "5"))))});
    EXPECT_EQ(read._functions, "/a.cc a.cc 7-7: 7\n/a.cc f(int) 2-4: 2 3 4\n");
    EXPECT_EQ(read._runs, ":\n/a.cc 2=3 3=0 4=1 7=5\n");
    EXPECT_EQ(read._losses._linesOutsideFunctions, 1u);
}

TEST_F(CoberturaImporterTest, LinesThatOnlyMethodsHaveCount)
{
    const ImportedText read = import({document(
        classOf("/a.cc", "<methods><method name='f'>" + lines(line(2, "9") + line(3, "8")) +
                             "</method></methods>" + lines(line(2, "3"))))});
    EXPECT_EQ(read._runs, ":\n/a.cc 2=3 3=8\n");
}

TEST_F(CoberturaImporterTest, MethodWithOneLineReachesToTheNextOne)
{
    const ImportedText read = import({document(classOf(
        "/a.cc", "<methods><method name='f()' signature='()'>" + lines(line(2, "1")) +
                     "</method><method name='g'>" + lines(line(6, "1")) + "</method></methods>" +
                     lines(line(2, "1") + line(3, "1") + line(6, "1") + line(9, "1"))))});
    EXPECT_EQ(read._functions, "/a.cc f() 2-5: 2 3\n/a.cc g 6-9: 6 9\n");
    EXPECT_EQ(read._losses._guessedEnds, 2u);
}

TEST_F(CoberturaImporterTest, ClassesOfOneFileAddUp)
{
    const ImportedText read =
        import({document(classOf("/a.cc", lines(line(2, "1") + line(1, "2"))) +
                         classOf("/a.cc", lines(line(2, "4"))))});
    EXPECT_EQ(read._runs, ":\n/a.cc 1=2 2=5\n");
}

TEST_F(CoberturaImporterTest, EachDocumentIsARun)
{
    const std::string text = document(classOf("/a.cc", lines(line(1, "1"))));
    EXPECT_EQ(import({text, text})._runs, "c1:\n/a.cc 1=1\nc2:\n/a.cc 1=1\n");
}

TEST_F(CoberturaImporterTest, RunHasTheTimeOfItsDocument)
{
    const std::string early = document(classOf("/a.cc", lines(line(1, "1"))));
    std::string late = early;
    late.replace(late.find("1700000000"), 10, "1700000999000"); // milliseconds
    EXPECT_EQ(import({early, late, early})._times, "1700000000\n1700000999\n1700000000\n");
}

TEST_F(CoberturaImporterTest, FoldersHoldOtherXmlToo)
{
    _dir.write("in/tests.xml", "<testsuites/>");
    _dir.write("in/cov.xml", document(classOf("/a.cc", lines(line(1, "1")))));
    CoberturaImporter importer;
    importer.input(_dir.path("in").c_str());
    EXPECT_EQ(ImportedText(importer)._runs, ":\n/a.cc 1=1\n");
    CoberturaImporter none;
    _dir.write("none/tests.xml", "<testsuites/>");
    none.input(_dir.path("none").c_str());
    EXPECT_FALSE(ImportedText(none)._isRead);
}

TEST_F(CoberturaImporterTest, WhatAFolderLacksIsCountedAndTold)
{
    addLinks(_dir, "in/a.xml", "in/b.xml", document(classOf("/a.cc", lines(line(1, "1")))));
    CoberturaImporter importer;
    importer.input(_dir.path("in").c_str());
    const ImportedText read(importer);
    EXPECT_TRUE(read._isRead);
    EXPECT_EQ(read._problems, problemsOfLinks(_dir, "in", "in/b.xml"));
    EXPECT_EQ(read._losses._unreadFolders, 1u);
    EXPECT_EQ(read._losses._linkedFolders, 1u);
    EXPECT_TRUE(read._losses.isIncomplete());
}

TEST_F(CoberturaImporterTest, SourceFoldersAreTriedAndAmbiguityIsSaid)
{
    _dir.write("x/a.cc", "");
    _dir.write("y/a.cc", "");
    const std::string folders =
        "<source>" + _dir.path("x") + "</source><source>\n" + _dir.path("y") + "\n</source>";
    const ImportedText read = import({document(classOf("a.cc", lines(line(1, "1"))), folders)});
    EXPECT_EQ(read._runs, ":\n" + _dir.path("x/a.cc") + " 1=1\n");
    EXPECT_EQ(read._losses._ambiguousSources, 1u);
    EXPECT_NE(read._problems.find("a.cc is "), std::string::npos) << read._problems;
}

TEST_F(CoberturaImporterTest, DocumentTypeElsewhereIsNoProblemAndNotFetched)
{
    const ImportedText read =
        import({"<?xml version='1.0'?><!DOCTYPE coverage SYSTEM 'http://nowhere.invalid/c.dtd'>" +
                document(classOf("/a.cc", lines(line(1, "1"))))});
    EXPECT_EQ(read._runs, ":\n/a.cc 1=1\n");
}

TEST_F(CoberturaImporterTest, EntitiesAreRefused)
{
    EXPECT_EQ(problemOf("<!DOCTYPE coverage [\n<!ENTITY a 'aaa'>\n<!ENTITY b '&a;&a;'>\n]>" +
                        document(classOf("/&b;", ""))),
              ":2: it declares entities of its own, which no coverage tool does\n");
    EXPECT_EQ(problemOf("<!DOCTYPE coverage [<!ENTITY a SYSTEM '/etc/passwd'>]>" + document("")),
              ":1: it declares entities of its own, which no coverage tool does\n");
}

TEST_F(CoberturaImporterTest, DamageIsNamedWithItsLine)
{
    const std::string wrong =
        ":1: the number or the hits of a line are missing, or no number of a line\n";
    for (const char* bad : {"<line number='1'/>", "<line hits='1'/>", "<line number='x' hits='1'/>",
                            "<line number='1' hits='1.5'/>", "<line number='-1' hits='1'/>",
                            "<line number='99999999999' hits='1'/>"}) {
        EXPECT_EQ(problemOf(document(classOf("/a.cc", lines(bad)))), wrong) << bad;
    }
    EXPECT_EQ(problemOf(document("<class name='a'/>")), ":1: a class has no filename\n");
    EXPECT_EQ(problemOf(document(classOf("/a", classOf("/b", "")))),
              ":1: a class within a class\n");
    EXPECT_EQ(problemOf(document(classOf("/a", "<methods><method/></methods>"))),
              ":1: a method has no name\n");
    EXPECT_EQ(problemOf("\n<report/>"),
              ":2: its outermost element is <report>: that of Cobertura is <coverage>\n");
    EXPECT_EQ(problemOf("<coverage/>"),
              ": no class with a filename in it: is it a Cobertura document?\n");
    EXPECT_EQ(problemOf("no XML").substr(0, 23), ":1: the XML is damaged:");
    EXPECT_EQ(problemOf("").substr(0, 23), ":1: the XML is damaged:");
}

TEST_F(CoberturaImporterTest, CountsOutsideTheirRangeAreKeptOrSaturate)
{
    const ImportedText read = import({document(
        classOf("/a.cc", lines(line(1, "-3") + line(2, "99999999999999999999") + line(0, "4"))))});
    EXPECT_EQ(read._runs, ":\n/a.cc 1=-3 2=9223372036854775807\n");
    EXPECT_EQ(read._losses._linesWithoutNumber, 1u);
}

TEST_F(CoberturaImporterTest, EveryCutEndsInAMessage)
{
    const std::string text = document(classOf("/a.cc", lines(line(1, "1"))), "<source>/</source>");
    for (size_t size = 0; size < text.size(); ++size) {
        EXPECT_NE(problemOf(text.substr(0, size)), "") << size;
    }
}

TEST_F(CoberturaImporterTest, DepthAndLengthAreBounded)
{
    std::string deep = "<coverage>";
    for (int i = 0; i < 100000; ++i) {
        deep += "<a>";
    }
    EXPECT_EQ(problemOf(deep), ":1: its elements are nested more than 100 deep\n");
    // The 101st is one too many, and the first of which is told.
    const std::string most = deep.substr(0, 10 + 99 * 3);
    EXPECT_EQ(problemOf(most).find("nested"), std::string::npos) << problemOf(most);
    EXPECT_EQ(problemOf(most + "<a>"), ":1: its elements are nested more than 100 deep\n");
    std::string sources;
    for (int i = 0; i <= 100; ++i) {
        sources += "<source>/s" + std::to_string(i) + "</source>";
    }
    EXPECT_EQ(problemOf(document("", sources)), ":1: it lists more than 100 sources\n");
    const std::string large(3 * CoberturaDocument::LongestTag, 'x');
    const std::string tooLong = ":1: a tag or a comment has more than 1048576 bytes\n";
    EXPECT_EQ(problemOf("<coverage x='" + large + "'/>"), tooLong);
    EXPECT_EQ(problemOf("<coverage><!--" + large + "--></coverage>"), tooLong);
    EXPECT_EQ(problemOf("<coverage><sources><source>" + large + "</source></sources></coverage>"),
              ":1: the path of a source has more than 1048576 bytes\n");
    // Text that is not used may have any length.
    EXPECT_EQ(import({document(classOf("/a.cc", large + lines(line(1, "1"))))})._runs,
              ":\n/a.cc 1=1\n");
}

} // namespace
