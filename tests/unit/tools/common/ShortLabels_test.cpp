// SPDX-License-Identifier: MIT
#include "tools/common/ShortLabels.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class ShortLabelsTest : public ::testing::Test
{
protected:
    void finish(const std::vector<std::string>& labels)
    {
        for (const std::string& label : labels) {
            _labels.add(label);
        }
        _labels.finish();
    }

    ShortLabels _labels;
};

const std::string lambda = "{lambda(...)#1}::operator()(...) const::";
const std::string wide(50, 'w');

TEST_F(ShortLabelsTest, NamesThatFitStay)
{
    const std::string fits(ShortLabels::Widest, 'a');
    finish({fits, "ns::f"});
    EXPECT_TRUE(_labels.isEmpty());
    EXPECT_EQ(_labels.of(fits), fits);
}

TEST_F(ShortLabelsTest, LambdasInTheMiddleGoFirst)
{
    const std::string name = "ns::find(...)::" + lambda + lambda + "Local::compare";
    finish({name});
    EXPECT_EQ(_labels.of(name), "ns::find(...)::...::Local::compare");
}

TEST_F(ShortLabelsTest, ThenTheOuterPartsBehindTheFirst)
{
    const std::string name =
        "leveldb::(anonymous namespace)::Repairer::ConvertToTable()::Reporter::Corruption";
    finish({name});
    EXPECT_EQ(_labels.of(name), "leveldb::...::ConvertToTable()::Reporter::Corruption");
}

TEST_F(ShortLabelsTest, ThenTheLongestWordsAreCut)
{
    const std::string name = "tests::" + wide + "::" + wide + "::run";
    finish({name});
    EXPECT_EQ(_labels.of(name), "tests::...::wwwwwwwwwwwwwww...wwwwwwwwwwwwww::run");
    EXPECT_EQ(_labels.of(name).rfind("::"), ShortLabels::WidestScope);
}

TEST_F(ShortLabelsTest, LastPartIsCutBeforeWhatItBelongsTo)
{
    const std::string name = "ns::Writer::" + wide + wide;
    finish({name});
    EXPECT_EQ(_labels.of(name).size(), ShortLabels::Widest);
    EXPECT_EQ(_labels.of(name).compare(0, 13, "ns::Writer::w"), 0);
}

TEST_F(ShortLabelsTest, FunctionOfNoClassIsCut)
{
    const std::string name(2 * ShortLabels::Widest, 'f');
    finish({name});
    EXPECT_EQ(_labels.of(name), std::string(31, 'f') + "..." + std::string(30, 'f'));
}

TEST_F(ShortLabelsTest, ConstructorsAndDestructorsDoNotRepeatTheirClass)
{
    const std::string klass = "ns::" + wide;
    const std::string word(40, 'v');
    const std::string list = "ns::" + word + "<...>";
    finish({klass + "::" + wide, klass + "::~" + wide, list + "::" + word + "<...>"});
    EXPECT_EQ(_labels.of(klass + "::" + wide), klass + "::...");
    EXPECT_EQ(_labels.of(klass + "::~" + wide), klass + "::~...");
    EXPECT_EQ(_labels.of(list + "::" + word + "<...>"), list + "::...");
}

TEST_F(ShortLabelsTest, ConversionKeepsItsWord)
{
    const std::string name = "ns::" + wide + "x::Y::operator basic_string_view_of_something<...>";
    finish({name});
    EXPECT_NE(_labels.of(name).find("operator basi"), std::string::npos) << _labels.of(name);
    EXPECT_LE(_labels.of(name).size(), ShortLabels::Widest);
}

TEST_F(ShortLabelsTest, AllFunctionsOfAClassShowItAlike)
{
    const std::string klass = "ns::" + wide + "::Iterator";
    finish({klass + "::SeekToTheFirstOne"});
    EXPECT_EQ(_labels.of(klass + "::Next"), "ns::...::Iterator::Next");
    EXPECT_EQ(_labels.of("ns::Iterator::Next"), "ns::Iterator::Next");
}

TEST_F(ShortLabelsTest, ClassesThatWouldLookAlikeAreNumbered)
{
    const std::string a = "ns::A" + wide + "::Iterator::SeekToTheFirstOne";
    const std::string b = "ns::B" + wide + "::Iterator::SeekToTheFirstOne";
    finish({b, a});
    EXPECT_EQ(_labels.of(a), "ns::...::Iterator::SeekToTheFirstOne");
    EXPECT_EQ(_labels.of(b), "ns::...2::Iterator::SeekToTheFirstOne");
}

TEST_F(ShortLabelsTest, FunctionsThatWouldLookAlikeAreNumbered)
{
    finish({wide + "a" + wide, wide + "b" + wide, wide + "c" + wide});
    const std::string shown = std::string(31, 'w') + "...";
    EXPECT_EQ(_labels.of(wide + "a" + wide), shown + std::string(30, 'w'));
    EXPECT_EQ(_labels.of(wide + "b" + wide), shown + "2" + std::string(30, 'w'));
    EXPECT_EQ(_labels.of(wide + "c" + wide), shown + "3" + std::string(30, 'w'));
}

TEST_F(ShortLabelsTest, NumberStandsBehindTheDotsOfPartsAndNotInAWordThatIsCut)
{
    const std::string a = wide + "::TableOfA::Iterator::run";
    const std::string b = wide + "::TableOfB::Iterator::run";
    finish({a, b});
    const std::string cut = std::string(13, 'w') + "..." + std::string(13, 'w');
    EXPECT_EQ(_labels.of(a), cut + "::...::Iterator::run");
    EXPECT_EQ(_labels.of(b), cut + "::...2::Iterator::run");
}

TEST_F(ShortLabelsTest, CharactersOfSeveralBytesStayWhole)
{
    std::string name = "x";
    for (int i = 0; i < 60; ++i) {
        name += "\u00e4";
    }
    finish({name});
    const std::string shown = _labels.of(name);
    const size_t dots = shown.find("...");
    EXPECT_EQ(dots % 2, 1u);
    EXPECT_EQ((shown.size() - dots - 3) % 2, 0u);
}

TEST_F(ShortLabelsTest, NameOfVeryManyPartsIsShortenedInLinearTime)
{
    std::string name = "a";
    for (int i = 0; i < 15000; ++i) {
        name += i % 2 == 0 ? "::{b}" : "::c";
    }
    finish({name});
    EXPECT_EQ(_labels.of(name).substr(0, 9), "a::...::c");
    EXPECT_LE(_labels.of(name).size(), ShortLabels::Widest);
}

} // namespace
