#include "qip/Support/cmdln.h"

#include "tests/support/StdErr.h"

#include <gtest/gtest.h>

#include <climits>
#include <sys/resource.h>

// AddressSanitizer needs more address space than any limit that a test could set.
#if defined(__SANITIZE_ADDRESS__)
#define ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ADDRESS_SANITIZER
#endif
#endif

namespace {

struct Call
{
    std::string name;
    int matching;
    bool nullPosition;
    std::vector<std::string> args; // as many as there are, up to the option's number
};

std::vector<Call> calls;

void note(char** args, const match& found)
{
    Call call = {found.option->name, found.matching, args == nullptr, {}};
    for (int i = 0; args != nullptr && i < found.option->nArgs && args[i] != nullptr; ++i) {
        call.args.emplace_back(args[i]);
    }
    calls.push_back(call);
}

void usage()
{
    std::fputs("the usage text\n", stderr);
}

const option viewerTable[] = {
    {"d", 1, note},  {"f", 2, note}, {"n", 1, note}, {"s", 1, note},
    {"ct", 0, note}, {"e", 0, note}, {"X", 0, note}, {nullptr, 0, nullptr},
};
const option emptyTable[] = {{nullptr, 0, nullptr}};

class cmdlnTest : public testing::Test
{
protected:
    void SetUp() override
    {
        calls.clear();
        cmdln_register(viewerTable);
        cmdln_onUsage(usage);
    }
    void TearDown() override { cmdln_register(emptyTable); }

    // Takes the words as the program's vector.
    void give(const std::vector<std::string>& words)
    {
        _words = words;
        _argv.clear();
        for (std::string& word : _words) {
            _argv.push_back(word.data());
        }
        _argv.push_back(nullptr);
        _argc = static_cast<int>(words.size());
    }

    int parse(const std::vector<std::string>& words)
    {
        give(words);
        return parseAgain();
    }

    int parseAgain() { return cmdln_parse(&_argc, _argv.data()); }

    // What the vector holds up to its null, which must stand at argc.
    std::vector<std::string> rest() const
    {
        std::vector<std::string> words;
        for (int i = 0; i < _argc; ++i) {
            words.emplace_back(_argv[static_cast<size_t>(i)]);
        }
        EXPECT_EQ(_argv[static_cast<size_t>(_argc)], nullptr);
        return words;
    }

    using Words = std::vector<std::string>;

    std::vector<std::string> _words;
    std::vector<char*> _argv;
    int _argc = 0;
};

TEST_F(cmdlnTest, RegisterReturnsZeroAndReplacesTheTable)
{
    EXPECT_EQ(cmdln_register(emptyTable), 0);
    EXPECT_EQ(parse({"zem", "-df", "log1"}), 0);
    EXPECT_EQ(rest(), (Words{"zem", "-df", "log1"}));
}

TEST_F(cmdlnTest, WordsThatAreNoOptionsStayInOrder)
{
    EXPECT_EQ(parse({"zem", "log1", "", "log2"}), 0);
    EXPECT_EQ(rest(), (Words{"zem", "log1", "", "log2"}));
    EXPECT_TRUE(calls.empty());
}

TEST_F(cmdlnTest, ArgumentMayBeGluedToTheOption)
{
    EXPECT_EQ(parse({"zem", "-df", "log1"}), 1);
    EXPECT_EQ(rest(), (Words{"zem", "log1"}));
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].name, "d");
    EXPECT_EQ(calls[0].matching, 1);
    EXPECT_EQ(calls[0].args, (Words{"f"}));
}

TEST_F(cmdlnTest, ArgumentMayBeTheNextWord)
{
    EXPECT_EQ(parse({"zem", "-s", "dFf", "log1"}), 1);
    EXPECT_EQ(rest(), (Words{"zem", "log1"}));
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].args, (Words{"dFf"}));
}

TEST_F(cmdlnTest, GluedAndSeparateArgumentAreTheSame)
{
    EXPECT_EQ(parse({"zem", "-sdFf", "log1"}), 1);
    EXPECT_EQ(rest(), (Words{"zem", "log1"}));
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].args, (Words{"dFf"}));
}

TEST_F(cmdlnTest, SecondArgumentIsTheWordBehindTheGluedOne)
{
    EXPECT_EQ(parse({"zem", "-ff", "main", "log1"}), 1);
    EXPECT_EQ(rest(), (Words{"zem", "log1"}));
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].args, (Words{"f", "main"}));
}

TEST_F(cmdlnTest, BothArgumentsMayBeWords)
{
    EXPECT_EQ(parse({"zem", "-f", "o", "Foo", "log1"}), 1);
    EXPECT_EQ(rest(), (Words{"zem", "log1"}));
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].args, (Words{"o", "Foo"}));
}

TEST_F(cmdlnTest, OptionsWithoutArgumentsCombineInOneWord)
{
    EXPECT_EQ(parse({"zem", "-cte", "-Xct"}), 2);
    EXPECT_EQ(rest(), (Words{"zem"}));
    ASSERT_EQ(calls.size(), 4u);
    EXPECT_EQ(calls[0].name, "ct");
    EXPECT_EQ(calls[0].matching, 2);
    EXPECT_TRUE(calls[0].nullPosition);
    EXPECT_EQ(calls[1].name, "e");
    EXPECT_FALSE(calls[1].nullPosition);
    EXPECT_EQ(calls[2].name, "X");
    EXPECT_EQ(calls[3].name, "ct");
}

TEST_F(cmdlnTest, OptionWithArgumentsMayEndACombinedWord)
{
    EXPECT_EQ(parse({"zem", "-edf", "-es", "F", "log1"}), 2);
    EXPECT_EQ(rest(), (Words{"zem", "log1"}));
    ASSERT_EQ(calls.size(), 4u);
    EXPECT_EQ(calls[1].args, (Words{"f"}));
    EXPECT_EQ(calls[3].args, (Words{"F"}));
}

TEST_F(cmdlnTest, ExactOptionWithoutArgumentsTakesNoWord)
{
    EXPECT_EQ(parse({"zem", "-ct", "log1"}), 1);
    EXPECT_EQ(rest(), (Words{"zem", "log1"}));
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_FALSE(calls[0].nullPosition);
}

TEST_F(cmdlnTest, UnknownOptionStays)
{
    EXPECT_EQ(parse({"zem", "-q", "log1", "--help"}), 0);
    EXPECT_EQ(rest(), (Words{"zem", "-q", "log1", "--help"}));
}

TEST_F(cmdlnTest, WhatIsUnknownInACombinedWordStaysAsAnOption)
{
    EXPECT_EQ(parse({"zem", "-cteq", "log1"}), 0);
    EXPECT_EQ(rest(), (Words{"zem", "-q", "log1"}));
    EXPECT_EQ(calls.size(), 2u);
}

TEST_F(cmdlnTest, FirstLettersOfALongNameSetItAndLeaveADash)
{
    EXPECT_EQ(parse({"zem", "-c", "log1"}), 0);
    EXPECT_EQ(rest(), (Words{"zem", "-", "log1"}));
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].name, "ct");
    EXPECT_EQ(calls[0].matching, 1);
    EXPECT_TRUE(calls[0].nullPosition);
}

TEST_F(cmdlnTest, FirstLettersOfALongNameGoOnWithTheRest)
{
    EXPECT_EQ(parse({"zem", "-cx"}), 0);
    EXPECT_EQ(rest(), (Words{"zem", "-x"}));
    EXPECT_EQ(calls.size(), 1u);
}

TEST_F(cmdlnTest, ProgramNameIsParsedToo)
{
    EXPECT_EQ(parse({"-e", "log1"}), 1);
    EXPECT_EQ(rest(), (Words{"log1"}));
}

TEST_F(cmdlnTest, WordsBehindATerminatorAreNotParsed)
{
    EXPECT_EQ(parse({"zem", "-e", "log1", "--", "-df", "--", "log2"}), 2);
    EXPECT_EQ(rest(), (Words{"zem", "log1", "-df", "--", "log2"}));
    EXPECT_EQ(calls.size(), 1u);
}

TEST_F(cmdlnTest, SingleDashIsATerminator)
{
    EXPECT_EQ(parse({"zem", "-", "-df"}), 1);
    EXPECT_EQ(rest(), (Words{"zem", "-df"}));
    EXPECT_TRUE(calls.empty());
}

TEST_F(cmdlnTest, TerminatorAtTheEndIsTakenOut)
{
    EXPECT_EQ(parse({"zem", "log1", "--"}), 1);
    EXPECT_EQ(rest(), (Words{"zem", "log1"}));
}

TEST_F(cmdlnTest, TerminatorAmongArgumentsIsAnArgument)
{
    EXPECT_EQ(parse({"zem", "-s", "--", "log1"}), 1);
    EXPECT_EQ(rest(), (Words{"zem", "log1"}));
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].args, (Words{"--"}));
}

TEST_F(cmdlnTest, EachPassTakesOneTerminator)
{
    cmdln_register(emptyTable);
    EXPECT_EQ(parse({"zem", "--", "--", "-df", "x"}), 1);
    EXPECT_EQ(rest(), (Words{"zem", "--", "-df", "x"}));
    cmdln_register(viewerTable);
    EXPECT_EQ(parseAgain(), 1);
    EXPECT_EQ(rest(), (Words{"zem", "-df", "x"}));
    EXPECT_TRUE(calls.empty());
}

TEST_F(cmdlnTest, SecondPassParsesWhatStoodBehindTheFirstTerminator)
{
    cmdln_register(emptyTable);
    EXPECT_EQ(parse({"zem", "--", "-df", "x"}), 1);
    cmdln_register(viewerTable);
    EXPECT_EQ(parseAgain(), 1);
    EXPECT_EQ(rest(), (Words{"zem", "x"}));
    EXPECT_EQ(calls.size(), 1u);
}

TEST_F(cmdlnTest, MissingWordsAreNotCounted)
{
    for (const char* last : {"-s", "-d", "-n", "-f", "-ff"}) {
        calls.clear();
        EXPECT_EQ(parse({"zem", "log1", last}), 1) << last;
        EXPECT_EQ(rest(), (Words{"zem", "log1"})) << last;
        ASSERT_EQ(calls.size(), 1u) << last;
    }
    EXPECT_EQ(calls[0].args, (Words{"f"}));
    EXPECT_EQ(parse({"zem", "-f", "o"}), 1);
    EXPECT_EQ(rest(), (Words{"zem"}));
    EXPECT_EQ(calls[1].args, (Words{"o"}));
}

TEST_F(cmdlnTest, LongestPartialMatchWins)
{
    const option table[] = {
        {"a", 0, note}, {"abc", 1, note}, {"abd", 1, note}, {nullptr, 0, nullptr}};
    cmdln_register(table);
    EXPECT_EQ(parse({"zem", "-abx"}), 1);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].name, "abc") << "of two equal matches the first row wins";
    EXPECT_EQ(calls[0].matching, 2);
    EXPECT_EQ(calls[0].args, (Words{"x"}));
}

TEST_F(cmdlnTest, ExactMatchWinsOverALongerName)
{
    const option table[] = {{"abc", 0, note}, {"ab", 0, note}, {nullptr, 0, nullptr}};
    cmdln_register(table);
    EXPECT_EQ(parse({"zem", "-ab"}), 1);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].name, "ab");
}

TEST_F(cmdlnTest, NameLongerThanTheWordGivesAnEmptyGluedArgument)
{
    const option table[] = {{"abc", 1, note}, {nullptr, 0, nullptr}};
    cmdln_register(table);
    EXPECT_EQ(parse({"zem", "-ab", "log1"}), 1);
    EXPECT_EQ(rest(), (Words{"zem", "log1"}));
    EXPECT_EQ(calls[0].args, (Words{""}));
}

TEST_F(cmdlnTest, OptionWithoutANameMatchesNothing)
{
    const option table[] = {{"", 0, note}, {"ct", 0, note}, {nullptr, 0, nullptr}};
    cmdln_register(table);
    EXPECT_EQ(parse({"zem", "-c"}), 0);
    EXPECT_EQ(rest(), (Words{"zem", "-"}));
    EXPECT_EQ(calls.size(), 1u);
}

using cmdlnDeathTest = cmdlnTest;

TEST_F(cmdlnDeathTest, TerminatorAloneShowsTheUsageTextAndEndsTheProgram)
{
    EXPECT_EXIT(parse({"zem", "--"}), testing::ExitedWithCode(255), "^the usage text\n$");
    EXPECT_EXIT(parse({"zem", "-"}), testing::ExitedWithCode(255), "^the usage text\n$");
}

TEST_F(cmdlnDeathTest, TerminatorAloneNeedsNoUsageText)
{
    cmdln_onUsage(nullptr);
    EXPECT_EXIT(parse({"zem", "--"}), testing::ExitedWithCode(255), "^$");
}

#ifndef ADDRESS_SANITIZER
TEST_F(cmdlnDeathTest, LackOfMemoryEndsTheProgram)
{
    const auto parseTooMuch = [this] {
        const rlimit limit = {1ul << 30, 1ul << 30};
        setrlimit(RLIMIT_AS, &limit);
        give({"zem"});
        _argc = INT_MAX;
        parseAgain();
    };
    EXPECT_EXIT(parseTooMuch(), testing::ExitedWithCode(255),
                "^cmdopt: Unable to allocate room for 2147483647 \\(char \\*\\)\n"
                "cmdopt: Aborting...\n$");
}
#endif

TEST_F(cmdlnTest, PrintArgShowsTheWordsAndTheNull)
{
    give({"a", "b"});
    StdOut out;
    EXPECT_EQ(cmdln_printArg(2, _argv.data()), 3);
    EXPECT_EQ(out.text(), "Found 2 args: { a, b, (null) }\n");
}

TEST_F(cmdlnTest, PrintArgShowsWhatStandsBehindAMissingNull)
{
    give({"a", "b", "c"});
    StdOut out;
    EXPECT_EQ(cmdln_printArg(1, _argv.data()), 2);
    EXPECT_EQ(cmdln_printArg(2, _argv.data()), 3);
    EXPECT_EQ(out.text(), "Found 1 args: { a, (missing null)(c) }\n"
                          "Found 2 args: { a, b, (missing null)((null)) }\n");
}

} // namespace
