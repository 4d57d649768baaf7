// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GcdaFile.h"

#include "tests/unit/tools/import/GcovBuilder.h"

#include <gtest/gtest.h>
#include <tuple>
#include <utility>

namespace {

const unsigned char* bytesOf(const std::string& text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

GcnoFunction sampleFunction()
{
    const std::string text = sampleNotes(12);
    GcnoFile notes(bytesOf(text), text.size());
    GcnoFunction function;
    EXPECT_EQ(notes.open(), GcnoFile::Ok);
    EXPECT_TRUE(notes.nextFunction(function));
    EXPECT_TRUE(notes.readGraph(function));
    return function;
}

class GcdaFileLayoutTest : public ::testing::TestWithParam<std::tuple<int, bool>>
{};

TEST_P(GcdaFileLayoutTest, FillsTheArcsOffTheTree)
{
    const std::string text = sampleCounters(std::get<0>(GetParam()), std::get<1>(GetParam()));
    GcdaFile counters(bytesOf(text), text.size());
    ASSERT_EQ(counters.open(SampleStamp), GcdaFile::Ok);
    EXPECT_EQ(counters.runs(), 3u);
    GcnoFunction function = sampleFunction();
    ASSERT_TRUE(counters.fillCounters(function));
    EXPECT_EQ(function._arcs[0]._count, 10);
    EXPECT_EQ(function._arcs[1]._count, 4);
    EXPECT_EQ(function._arcs[2]._count, 0);
}

INSTANTIATE_TEST_SUITE_P(Versions, GcdaFileLayoutTest,
                         ::testing::Combine(::testing::Range(9, 15), ::testing::Bool()),
                         [](const auto& info) {
                             return "Gcc" + std::to_string(std::get<0>(info.param)) +
                                    (std::get<1>(info.param) ? "BigEndian" : "LittleEndian");
                         });

TEST(GcdaFileTest, OtherStampIsAnotherBuild)
{
    const std::string text = sampleCounters(12);
    GcdaFile counters(bytesOf(text), text.size());
    EXPECT_EQ(counters.open(SampleStamp + 1), GcdaFile::OtherBuild);
}

TEST(GcdaFileTest, NotesAreNoCountersAndUnknownVersionsAreTold)
{
    const std::string notes = sampleNotes(12);
    EXPECT_EQ(GcdaFile(bytesOf(notes), notes.size()).open(SampleStamp), GcdaFile::NotCounters);
    const std::string later = sampleCounters(15);
    EXPECT_EQ(GcdaFile(bytesOf(later), later.size()).open(SampleStamp), GcdaFile::UnknownVersion);
    EXPECT_EQ(GcdaFile(nullptr, 0).open(SampleStamp), GcdaFile::NotCounters);
}

TEST(GcdaFileTest, ZeroedCountersAreZero)
{
    for (const int major : {11, 12}) {
        GcovBuilder builder(major);
        builder.countersHead(SampleStamp);
        builder.ran(7, 8, 9);
        builder.zeroedCounters(2);
        builder.ran(70, 8, 9);
        builder.counters({5});
        builder.word(0);
        GcdaFile counters(bytesOf(builder.bytes()), builder.bytes().size());
        ASSERT_EQ(counters.open(SampleStamp), GcdaFile::Ok);
        GcnoFunction function = sampleFunction();
        EXPECT_TRUE(counters.fillCounters(function));
        EXPECT_EQ(function._arcs[0]._count, 0);
    }
}

TEST(GcdaFileTest, FunctionThatIsNotThereNeverRan)
{
    const std::string text = sampleCounters(12);
    GcdaFile counters(bytesOf(text), text.size());
    ASSERT_EQ(counters.open(SampleStamp), GcdaFile::Ok);
    GcnoFunction function = sampleFunction();
    function._ident = 99;
    EXPECT_TRUE(counters.fillCounters(function));
    EXPECT_EQ(function._arcs[0]._count, 0);
}

TEST(GcdaFileTest, OtherChecksumOrNumberOfCountersDoesNotFit)
{
    const std::string text = sampleCounters(12);
    GcdaFile counters(bytesOf(text), text.size());
    ASSERT_EQ(counters.open(SampleStamp), GcdaFile::Ok);
    GcnoFunction function = sampleFunction();
    function._lineChecksum = 1;
    EXPECT_FALSE(counters.fillCounters(function));
    function = sampleFunction();
    function._graphChecksum = 1;
    EXPECT_FALSE(counters.fillCounters(function));
    function = sampleFunction();
    function._arcs[2]._flags = 0;
    EXPECT_FALSE(counters.fillCounters(function));
    EXPECT_EQ(function._arcs[0]._count, 0);
}

TEST(GcdaFileTest, FunctionsMayStandInAnyOrderAndTheLastOfAnIdentCounts)
{
    GcovBuilder builder(12);
    builder.countersHead(SampleStamp);
    builder.ran(70, 8, 9);
    builder.counters({5, 6});
    builder.ran(7, 1, 1);
    builder.counters({3});
    builder.ran(90, 8, 9);
    builder.counters({1});
    builder.ran(7, 8, 9);
    builder.counters({20, 30});
    builder.word(0);
    GcdaFile counters(bytesOf(builder.bytes()), builder.bytes().size());
    ASSERT_EQ(counters.open(SampleStamp), GcdaFile::Ok);
    for (const auto& wanted : {std::pair<uint32_t, int>{7, 20}, {70, 5}, {7, 20}, {8, 0}}) {
        GcnoFunction function = sampleFunction();
        function._ident = wanted.first;
        ASSERT_TRUE(counters.fillCounters(function)) << wanted.first;
        EXPECT_EQ(function._arcs[0]._count, wanted.second) << wanted.first;
    }
}

TEST(GcdaFileTest, CountersOf64BitsKeepTheirUpperWord)
{
    GcovBuilder builder(12);
    builder.countersHead(SampleStamp);
    builder.ran(7, 8, 9);
    builder.counters({0x123456789, -2});
    builder.word(0);
    GcdaFile counters(bytesOf(builder.bytes()), builder.bytes().size());
    ASSERT_EQ(counters.open(SampleStamp), GcdaFile::Ok);
    GcnoFunction function = sampleFunction();
    ASSERT_TRUE(counters.fillCounters(function));
    EXPECT_EQ(function._arcs[0]._count, 0x123456789);
    EXPECT_EQ(function._arcs[1]._count, -2);
}

// At the end of a record, too: the functions behind it would seem never to have run.
TEST_P(GcdaFileLayoutTest, EveryCutIsDamage)
{
    const std::string text = sampleCounters(std::get<0>(GetParam()), std::get<1>(GetParam()));
    for (size_t at = 0; at < text.size(); ++at) {
        const std::string cut = text.substr(0, at);
        GcdaFile counters(bytesOf(cut), cut.size());
        EXPECT_NE(counters.open(SampleStamp), GcdaFile::Ok) << at;
    }
}

TEST(GcdaFileTest, EveryChangedByteIsTolerated)
{
    const std::string sample = sampleCounters(12);
    for (size_t at = 0; at < sample.size(); ++at) {
        GcnoFunction function = sampleFunction();
        std::string changed = sample;
        changed[at] = static_cast<char>(changed[at] ^ 0xff);
        GcdaFile other(bytesOf(changed), changed.size());
        if (other.open(SampleStamp) == GcdaFile::Ok) {
            (void)other.fillCounters(function);
        }
    }
}

} // namespace
