#include "tools/run/logName.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string nameOf(std::vector<std::string> words)
{
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    return testName(pointers.data());
}

TEST(LogNameTest, TheBaseNameIsWhatStandsBehindTheLastSlash)
{
    EXPECT_EQ(baseName("ctest"), "ctest");
    EXPECT_EQ(baseName("/usr/bin/ctest"), "ctest");
    EXPECT_EQ(baseName("./tests/run.sh"), "run.sh");
    EXPECT_EQ(baseName("tests/"), "tests");
    EXPECT_EQ(baseName("/"), "/");
    EXPECT_EQ(baseName(""), "");
}

TEST(LogNameTest, KeepsWhatMeansNothingToAShell)
{
    EXPECT_EQ(logName("Suite.Case-1_a+b=c,d@e"), "Suite.Case-1_a+b=c,d@e");
    EXPECT_EQ(logName("50%p"), "50_p");
    EXPECT_EQ(logName("Gr\xc3\xb6\xc3\x9f"
                      "e"),
              "Gr\xc3\xb6\xc3\x9f"
              "e");
    EXPECT_EQ(logName("All/Suite.Case/0 <int>"), "All_Suite.Case_0__int_");
    EXPECT_EQ(logName("a\n\x1b;$(b)"), "a_____b_");
}

TEST(LogNameTest, IsNeverHiddenNorAnOptionNorEmpty)
{
    EXPECT_EQ(logName(".."), "_.");
    EXPECT_EQ(logName("-rf"), "_rf");
    EXPECT_EQ(logName(""), "unnamed");
}

TEST(LogNameTest, IsCutBetweenCharacters)
{
    EXPECT_EQ(logName(std::string(100, 'a')), std::string(100, 'a'));
    EXPECT_EQ(logName(std::string(5000, 'a')), std::string(100, 'a'));
    EXPECT_EQ(logName(std::string(99, 'a') + "\xc3\xb6"), std::string(99, 'a'));
    EXPECT_EQ(logName(std::string(98, 'a') + "\xc3\xb6z"), std::string(98, 'a') + "\xc3\xb6");
}

TEST(LogNameTest, ATestIsNamedByItsWords)
{
    EXPECT_EQ(nameOf({"/b/parser"}), "parser");
    EXPECT_EQ(nameOf({"/b/parser", "-v", "/data/in.txt"}), "parser--v-in.txt");
    EXPECT_EQ(nameOf({"/bin/sh", "../test-driver", "--test-name", "lib/one", "--log-file", "x"}),
              "lib_one");
    EXPECT_EQ(nameOf({"prog", "--test-name"}), "prog---test-name");
    EXPECT_EQ(nameOf({"prog", std::string(9000, 'x')}).size(), 100u);
}

TEST(LogNameTest, AShellReadsAWordAsItIs)
{
    EXPECT_EQ(shellWord("cov/a-b.log"), "cov/a-b.log");
    EXPECT_EQ(shellWord("two words"), "'two words'");
    EXPECT_EQ(shellWord("it's"), "'it'\\''s'");
    EXPECT_EQ(shellWord(""), "''");
}

} // namespace
