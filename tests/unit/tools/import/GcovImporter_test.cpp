// SPDX-License-Identifier: MIT
#include "tools/import/gcov/GcovImporter.h"

#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/ImportedText.h"
#include "tests/unit/tools/import/LinksInFolder.h"
#include "tools/import/gcov/JsonDocuments.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <zlib.h>

namespace {

const char samples[] = ZEM_SOURCE_DIR "/tests/data/formats";

std::string document(const std::string& functions, const std::string& lines)
{
    return R"({"format_version":"1","current_working_directory":"/b","files":[{"file":"a.h",)"
           R"("functions":[)" +
           functions + R"(],"lines":[)" + lines + "]}]}\n";
}

const char outer[] = R"({"name":"outer","start_line":1,"end_line":9})";

class GcovImporterTest : public ::testing::Test
{
protected:
    ImportedText import(const std::string& text)
    {
        GcovImporter importer;
        importer.input(_dir.write("u.gcov.json", text).c_str());
        return ImportedText(importer);
    }

    std::string problemOf(const std::string& text)
    {
        const ImportedText read = import(text);
        EXPECT_FALSE(read._isRead);
        const std::string head = "zem-import: " + _dir.path("u.gcov.json") + ": ";
        EXPECT_EQ(read._problems.compare(0, head.size(), head), 0) << read._problems;
        return read._problems.substr(std::min(head.size(), read._problems.size()));
    }

    const TempDir _dir;
};

TEST_F(GcovImporterTest, TotalsOfRealDocumentsAreThoseOfGcovr)
{
    GcovImporter importer;
    importer.input(samples);
    const ImportedText read(importer);
    EXPECT_EQ(read._problems, "");
    const std::string folder = "/nowhere/shapes/src/";
    const std::pair<const char*, std::pair<int, int>> rows[] = {
        {"jobs and shapes.cc", {38, 40}}, {"main.cc", {12, 16}}, {"shapes.h", {9, 13}}};
    for (const auto& row : rows) {
        const size_t at = read._runs.find(folder + row.first);
        ASSERT_NE(at, std::string::npos) << row.first;
        const size_t start = at + folder.size() + std::string(row.first).size();
        const std::string text =
            read._runs.substr(start, read._runs.find('\n', start) - start) + " ";
        int zeros = 0;
        for (size_t i = text.find("=0 "); i != std::string::npos; i = text.find("=0 ", i + 1)) {
            ++zeros;
        }
        const auto lines = static_cast<int>(std::count(text.begin(), text.end(), '='));
        EXPECT_EQ(lines - zeros, row.second.first) << row.first;
        EXPECT_EQ(lines, row.second.second) << row.first;
    }
    EXPECT_TRUE(importer.recognises(samples));
}

TEST_F(GcovImporterTest, CopiesOfSeveralUnitsAreOneAndAddUp)
{
    const std::string one = document(outer, R"({"line_number":2,"count":4},)"
                                            R"({"line_number":3,"count":1})");
    const std::string two = document(outer, R"({"line_number":2,"count":1})");
    const ImportedText read = import(one + one + two);
    EXPECT_EQ(read._functions, "/b/a.h outer 1-9: 2\n/b/a.h outer 1-9: 2 3\n");
    EXPECT_EQ(read._runs, ":\n/b/a.h 2=9 3=2\n");
}

TEST_F(GcovImporterTest, LinesInNoFunctionGoToOneOfAnotherUnitOrTheFile)
{
    const ImportedText read =
        import(document("", R"({"line_number":2,"count":4},{"line_number":20,"count":1})") +
               document("", R"({"line_number":30,"count":1})") +
               document(outer, R"({"line_number":2,"count":3})"));
    EXPECT_EQ(read._functions, "/b/a.h  0-0 hidden: 2\n/b/a.h a.h 20-30: 20\n"
                               "/b/a.h a.h 20-30: 30\n/b/a.h outer 1-9: 2\n");
    EXPECT_EQ(read._runs, ":\n/b/a.h 2=7 20=1 30=1\n");
    EXPECT_EQ(read._losses._linesOutsideFunctions, 2u);
}

TEST_F(GcovImporterTest, EachMakesARunOfEachInput)
{
    _dir.write("one/u.gcov.json", document(outer, R"({"line_number":2,"count":4})"));
    _dir.write("two/u.gcov.json", document(outer, R"({"line_number":2,"count":0})") +
                                      document(outer, R"({"line_number":3,"count":1})"));
    for (const bool isEach : {false, true}) {
        GcovImporter importer;
        importer.input(_dir.path("one").c_str());
        importer.input((_dir.path("two") + "/").c_str());
        std::string word = "--each";
        char* words[] = {word.data(), nullptr};
        EXPECT_EQ(isEach ? importer.option(words) : 1, 1);
        EXPECT_EQ(ImportedText(importer)._runs, isEach ? "one:\n/b/a.h 2=4 3=0\n"
                                                         "two:\n/b/a.h 2=0 3=1\n"
                                                       : ":\n/b/a.h 2=4 3=1\n");
    }
}

TEST_F(GcovImporterTest, DamagedFileAmongOthersMakesTheImportIncomplete)
{
    _dir.write("in/a.gcov.json", "{");
    _dir.write("in/b.gcov.json", document(outer, R"({"line_number":2,"count":4})"));
    GcovImporter importer;
    importer.input(_dir.path("in").c_str());
    const ImportedText read(importer);
    EXPECT_EQ(read._runs, ":\n/b/a.h 2=4\n");
    EXPECT_TRUE(read._losses.isIncomplete());
    EXPECT_EQ(read._problems, "zem-import: " + _dir.path("in/a.gcov.json") +
                                  ": the file ends within a document: it is cut short\n");
}

TEST_F(GcovImporterTest, DamageIsNamed)
{
    const std::string good = document(outer, R"({"line_number":2,"count":4})");
    EXPECT_EQ(problemOf(""), "no document in it\n");
    EXPECT_EQ(problemOf(" \n"), "no document in it\n");
    EXPECT_EQ(problemOf("text"), "it is no JSON: a document begins with {\n");
    EXPECT_EQ(problemOf(good + "]"), "it is no JSON: a document begins with {\n");
    EXPECT_EQ(problemOf(good + "\n{}"), "document on line 3: it is none of gcov's JSON documents: "
                                        "it has no format_version\n");
    for (size_t size = 1; size + 1 < good.size(); ++size) {
        EXPECT_EQ(problemOf(good.substr(0, size)),
                  "the file ends within a document: it is cut short\n");
    }
}

TEST_F(GcovImporterTest, WrittenOverManyLinesOrWithBracketsInNames)
{
    std::string text = document(R"({"name":"}]\\\"{","start_line":1,"end_line":2})",
                                R"({"line_number":2,"count":4})");
    std::replace(text.begin(), text.end(), ',', '\n');
    for (size_t at = text.find('\n'); at + 1 < text.size(); at = text.find('\n', at + 2)) {
        text.insert(at, ",");
    }
    EXPECT_EQ(import(text)._functions, "/b/a.h }]\\\"{ 1-2: 2\n");
}

TEST_F(GcovImporterTest, LargeDocumentIsRefusedUnread)
{
    // A few kilobytes that unpack to more than a document may have.
    const std::string path = _dir.path("bomb.gcov.json.gz");
    gzFile file = gzopen(path.c_str(), "wb1");
    const std::string blank(9u << 20, ' ');
    gzputc(file, '{');
    gzwrite(file, blank.data(), static_cast<unsigned int>(blank.size()));
    gzclose(file);
    JsonDocuments documents(1u << 20);
    ASSERT_TRUE(documents.open(path));
    std::string document;
    EXPECT_FALSE(documents.next(document));
    EXPECT_EQ(documents.problem(), "one document has more than 1 MiB");
    EXPECT_LE(document.size(), 1u << 20);
}

// A hole of hundreds of megabytes costs as much as a piece, at a document's start and within it.
TEST_F(GcovImporterTest, AHoleIsRefusedAtItsFirstByte)
{
    for (const char* start : {"", "{", "{\"files\":\""}) {
        const std::string path = _dir.write("sparse.gcov.json", start);
        std::filesystem::resize_file(path, 1u << 30);
        JsonDocuments documents;
        ASSERT_TRUE(documents.open(path));
        std::string document;
        EXPECT_FALSE(documents.next(document));
        EXPECT_EQ(documents.problem().rfind("it is no JSON: ", 0), 0u) << documents.problem();
        EXPECT_EQ(document, "");
    }
}

TEST_F(GcovImporterTest, WhatAFolderLacksIsCountedAndTold)
{
    addLinks(_dir, "in/a.gcov.json", "in/b.gcov.json.gz",
             "{\"format_version\":\"1\",\"current_working_directory\":\"/\",\"files\":[]}");
    GcovImporter importer;
    importer.input(_dir.path("in").c_str());
    const ImportedText read(importer);
    EXPECT_TRUE(read._isRead);
    EXPECT_EQ(read._problems, problemsOfLinks(_dir, "in", "in/b.gcov.json.gz"));
    EXPECT_EQ(read._losses._unreadFolders, 1u);
    EXPECT_EQ(read._losses._linkedFolders, 1u);
    EXPECT_TRUE(read._losses.isIncomplete());
}

TEST_F(GcovImporterTest, FolderWithoutDocumentsIsSaid)
{
    GcovImporter importer;
    importer.input(_dir.path().c_str());
    const ImportedText read(importer);
    EXPECT_FALSE(read._isRead);
    EXPECT_EQ(read._problems, "zem-import: " + _dir.path() +
                                  ": no file below it has a name that ends in .gcov.json.gz or "
                                  ".gcov.json\n");
    EXPECT_FALSE(importer.recognises(_dir.path().c_str()));
    EXPECT_TRUE(importer.recognises(_dir.write("a.gcov.json", "{}").c_str()));
    EXPECT_FALSE(importer.recognises(_dir.write("b.gcov.json", "text").c_str()));
}

} // namespace
