// SPDX-License-Identifier: MIT
#include "tools/import/ImportCommand.h"

#include "tests/support/KeptFolder.h"
#include "tests/support/TempDir.h"
#include "tests/unit/tools/import/FakeImporter.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <unistd.h>

namespace {

std::unique_ptr<Importer> makeOne()
{
    return std::make_unique<FakeImporter>(".one", "--first");
}

std::unique_ptr<Importer> makeTwo()
{
    return std::make_unique<FakeImporter>("o", "--second"); // "x.two", and all that ends like it
}

std::unique_ptr<Importer> makeThree()
{
    return std::make_unique<FakeImporter>("two.o", "--second");
}

class ImportCommandTest : public ::testing::Test
{
protected:
    ImportCommandTest()
    {
        EXPECT_EQ(chdir(_dir.path().c_str()), 0);
        for (const char* name :
             {"a.one", "b.one", "x.two", "two.o", "none", "my none", "--first.one"}) {
            _dir.write(name, "");
        }
    }

    // Returns what was printed on either stream, with the status before it.
    std::string run(const std::vector<std::string>& words)
    {
        std::vector<std::string> copies = words;
        std::vector<char*> vector;
        for (std::string& word : copies) {
            vector.push_back(word.data());
        }
        vector.push_back(nullptr);
        std::ostringstream out;
        std::ostringstream err;
        const int status = ImportCommand(_kinds, "9.9", out, err).run(vector.data());
        return std::to_string(status) + "\n" + out.str() + err.str();
    }

    static bool has(const std::string& text, const std::string& part)
    {
        return text.find(part) != std::string::npos;
    }

    const TempDir _dir;
    const KeptFolder _kept;
    const std::vector<ImportKind> _kinds = {{"one", "ONE...", "reads one", makeOne},
                                            {"two", "TWO...", "reads two", makeTwo},
                                            {"three", "THREE...", "reads three", makeThree}};
};

TEST_F(ImportCommandTest, NamedKindTakesAnyInput)
{
    const std::string told = run({"one", "--first", "none", "-o", "out", "--name", "n"});
    EXPECT_EQ(told.find("0\nzem-import: out/n.log of map n-"), 0u) << told;
}

TEST_F(ImportCommandTest, KindIsTakenFromTheInputsAndSaid)
{
    std::string told = run({"a.one"});
    EXPECT_EQ(told.find("0\nzem-import: taking a.one as one\nzem-import: ./coverage.log"), 0u)
        << told;
    told = run({"--name", "n", "a.one", "b.one", "--first"});
    EXPECT_EQ(told.find("0\nzem-import: taking a.one and 1 more as one\n"), 0u) << told;
    told = run({"x.two"});
    EXPECT_EQ(told.find("0\nzem-import: taking x.two as two\n"), 0u) << told;
}

TEST_F(ImportCommandTest, InputOfSeveralKindsIsNotGuessed)
{
    EXPECT_EQ(run({"two.o"}), "1\nzem-import: two.o may be of several kinds; name one: zem-import "
                              "two ..., or zem-import three ...\nTry zem-import --help.\n");
}

TEST_F(ImportCommandTest, OptionsOfAKindHelpToGuess)
{
    EXPECT_EQ(
        run({"--first", "x.two"}),
        "1\nzem-import: cannot tell what coverage is in x.two; name the kind: zem-import KIND "
        "x.two, where KIND is one of one, two, three\nTry zem-import --help.\n");
    const std::string told = run({"--second", "x.two"});
    EXPECT_EQ(told.find("0\nzem-import: taking x.two as two\n"), 0u) << told;
}

TEST_F(ImportCommandTest, InputThatNobodyKnowsAsksForTheKind)
{
    EXPECT_TRUE(has(run({"none"}), "cannot tell what coverage is in none; name the kind: "));
    EXPECT_TRUE(has(run({"my none"}), "in my none; name the kind: zem-import KIND 'my none', "));
}

TEST_F(ImportCommandTest, InputsOfTwoKindsAreTold)
{
    EXPECT_TRUE(has(run({"a.one", "x.two"}),
                    "1\nzem-import: one import is of one kind: a.one is one, x.two is two\n"));
}

TEST_F(ImportCommandTest, WordThatIsNothingIsTold)
{
    EXPECT_EQ(run({"foo", "a.one"}), "1\nzem-import: neither a file or folder nor a kind of "
                                     "coverage (one, two, three): foo\nTry zem-import --help.\n");
    EXPECT_EQ(run({"-o", "out", "one", "a.one"}),
              "1\nzem-import: the kind of coverage comes first: zem-import one [options] INPUT...\n"
              "Try zem-import --help.\n");
}

// What it holds is no question of its kind then.
TEST_F(ImportCommandTest, InputThatCannotBeReadIsToldWithTheReason)
{
    const TempDir dir;
    std::filesystem::create_symlink("round", dir.path("round"));
    EXPECT_EQ(run({"a.one", dir.path("round")}), "1\nzem-import: cannot read " + dir.path("round") +
                                                     ": Too many levels of symbolic links\n");
}

TEST_F(ImportCommandTest, UnknownOptionsAreTold)
{
    EXPECT_TRUE(has(run({"one", "--second", "a.one"}), "its value is missing: --second\n"));
    EXPECT_TRUE(has(run({"--third", "a.one"}), "its value is missing: --third\n"));
    EXPECT_TRUE(has(run({"--first", "--second", "a.one"}), "its value is missing: --second\n"));
    EXPECT_TRUE(has(run({"a.one", "-o"}), "its value is missing: -o\n"));
}

TEST_F(ImportCommandTest, WhatIsMissingIsTold)
{
    EXPECT_TRUE(has(run({"one"}), "1\nzem-import: what to read is missing: ONE...\n"));
    EXPECT_TRUE(has(run({"-o", "x"}), "1\nzem-import: what to read is missing\n"));
    EXPECT_TRUE(has(run({"one", "a.one", "--map", "/x"}), "not OLD=NEW: --map '/x'\n"));
    EXPECT_TRUE(
        has(run({"one", "a.one", "--name", "x/y"}), "not the name of a file: --name 'x/y'"));
    EXPECT_TRUE(has(run({"one", "a.one", "-o", ""}), "the folder to write into has no name"));
}

TEST_F(ImportCommandTest, HelpNamesAllKindsAndOptions)
{
    const std::string told = run({"one", "--help"});
    EXPECT_EQ(told.find("0\nUsage: zem-import [KIND]"), 0u);
    for (const char* part : {"zem-import one [options] ONE...\n  reads one\n  --first\n",
                             "reads three", "--map OLD=NEW", "--no-markers", "--clean DIR"}) {
        EXPECT_TRUE(has(told, part)) << part;
    }
    EXPECT_EQ(run({}).find("1\nUsage: "), 0u);
    EXPECT_EQ(run({"--version"}), "0\nzem-import 9.9\n");
}

TEST_F(ImportCommandTest, CleanTakesOneFolder)
{
    EXPECT_TRUE(has(run({"--clean"}), "1\nzem-import: one folder is wanted behind --clean\n"));
    EXPECT_TRUE(has(run({"--clean", "a", "b"}), "1\nzem-import: one folder"));
    EXPECT_TRUE(has(run({"--clean", "gone"}), "1\nzem-import: cannot clean gone: "));
    EXPECT_EQ(run({"--clean", "."}), "0\nzem-import: 0 maps removed, 0 that logs name are kept\n");
}

} // namespace
