// SPDX-License-Identifier: MIT
#include "tools/import/gcc/GraphStore.h"

#include "tests/unit/tools/import/GcovBuilder.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

ContentKey keyOf(uint64_t value)
{
    ContentKey key;
    key.add(value);
    return key;
}

// The graph of the sample unit (GcovBuilder.h).
std::unique_ptr<GccGraph> sampleGraph(const char* symbol = "work")
{
    auto graph = std::make_unique<GccGraph>();
    graph->_copy._symbol = symbol;
    graph->_copy._startLine = 1;
    graph->_copy._endLine = 6;
    graph->_copy._lines = {{2, 0, 1}, {2, 0, 2}, {3, 0, 3}, {5, 0, 6}};
    graph->_nBlocks = 6;
    graph->_nCounters = 2;
    graph->_arcs = {{0, 2, 4, 0}, {2, 3, 4, 0}, {2, 4, 1, 0},
                    {3, 5, 1, 0}, {4, 5, 5, 0}, {5, 1, 1, 0}};
    return graph;
}

class GraphStoreTest : public ::testing::Test
{
protected:
    // Returns how many functions there are.
    size_t solve()
    {
        EXPECT_TRUE(_store.solve(2, _build, _counts, _losses));
        EXPECT_EQ(_build._nCounts, _counts.size());
        return _build._copies.size();
    }

    void addCounters(GccGraph& graph)
    {
        const std::string bytes = sampleCounters(12);
        GcdaFile counters(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
        ASSERT_EQ(counters.open(SampleStamp), GcdaFile::Ok);
        _store.addCounters(graph, counters, 7);
    }

    GraphStore _store;
    SourceFilter _filter;
    ImportedBuild _build{_filter};
    std::vector<int64_t> _counts;
    ImportLosses _losses;
};

using Counts = std::vector<int64_t>;

TEST_F(GraphStoreTest, WhatWasPutInIsFoundByItsBytes)
{
    EXPECT_EQ(_store.find(keyOf(1))._kind, KnownFunction::Unknown);
    GccGraph* graph = _store.insert(keyOf(1), sampleGraph());
    EXPECT_EQ(_store.find(keyOf(1))._kind, KnownFunction::Wanted);
    EXPECT_EQ(_store.find(keyOf(1))._graph, graph);
    EXPECT_EQ(_store.find(keyOf(2))._kind, KnownFunction::Unknown);
    _store.leaveOut(keyOf(2), KnownFunction::System);
    EXPECT_EQ(_store.find(keyOf(2))._kind, KnownFunction::System);
}

TEST_F(GraphStoreTest, SameFunctionFromOtherBytesIsOne)
{
    GccGraph* graph = _store.insert(keyOf(1), sampleGraph());
    EXPECT_EQ(_store.insert(keyOf(2), sampleGraph()), graph);
    EXPECT_EQ(_store.find(keyOf(2))._graph, graph);
    EXPECT_EQ(solve(), 1u);
}

TEST_F(GraphStoreTest, AnyDifferenceMakesAnotherFunction)
{
    const auto insert = [this](void (*change)(GccGraph&)) {
        auto graph = sampleGraph();
        change(*graph);
        (void)_store.insert(keyOf(1), std::move(graph));
    };
    insert([](GccGraph&) {});
    insert([](GccGraph& graph) { graph._copy._symbol = "walk"; });
    insert([](GccGraph& graph) { graph._copy._file = 1; });
    insert([](GccGraph& graph) { graph._copy._startLine = 2; });
    insert([](GccGraph& graph) { graph._copy._startColumn = 2; });
    insert([](GccGraph& graph) { graph._copy._endLine = 2; });
    insert([](GccGraph& graph) { graph._copy._endColumn = 2; });
    insert([](GccGraph& graph) { graph._copy._isBody = true; });
    insert([](GccGraph& graph) { graph._copy._lines[1]._line = 3; });
    insert([](GccGraph& graph) { graph._copy._lines.pop_back(); });
    insert([](GccGraph& graph) { graph._nBlocks = 7; });
    insert([](GccGraph& graph) { graph._arcs[5]._to = 0; });
    insert([](GccGraph& graph) { graph._arcs[4]._flags = 4; });
    EXPECT_EQ(solve(), 13u);
}

TEST_F(GraphStoreTest, CountersAreAddedUpBeforeTheFlowIsSolved)
{
    GccGraph* graph = _store.insert(keyOf(1), sampleGraph());
    addCounters(*graph);
    addCounters(*graph);
    addCounters(*graph);
    ASSERT_EQ(solve(), 1u);
    EXPECT_EQ(_counts, (Counts{30, 30, 30, 12, 18, 30}));
    EXPECT_EQ(_losses._blocksWithoutLine, 1u);
    EXPECT_EQ(_losses._unsolvedFunctions, 0u);
}

TEST_F(GraphStoreTest, FunctionThatNeverRanCountsNothing)
{
    (void)_store.insert(keyOf(1), sampleGraph());
    ASSERT_EQ(solve(), 1u);
    EXPECT_EQ(_counts, Counts(6, 0));
}

TEST_F(GraphStoreTest, CountsOfLinesAreAddedUp)
{
    auto graph = std::make_unique<GccGraph>();
    graph->_copy._lines = {{0, 0, 1}, {1, 0, 2}};
    GccGraph* kept = _store.insert(keyOf(1), std::move(graph));
    _store.addLineCounts(*kept, {4, INT64_MAX});
    _store.addLineCounts(*kept, {4, INT64_MAX});
    ASSERT_EQ(solve(), 1u);
    EXPECT_EQ(_counts, (Counts{8, INT64_MAX}));
    EXPECT_EQ(_losses._blocksWithoutLine, 0u);
}

TEST_F(GraphStoreTest, ManyFunctionsAreAllSolved)
{
    for (uint64_t i = 0; i < 1000; ++i) {
        addCounters(*_store.insert(keyOf(i), sampleGraph(std::to_string(i).c_str())));
    }
    ASSERT_EQ(solve(), 1000u);
    for (const FunctionCopy& copy : _build._copies) {
        ASSERT_EQ(_counts[copy._firstCount + 2], 10);
    }
}

ContentKey keyOf(const std::string& text)
{
    ContentKey key;
    key.add(text.data(), text.size());
    return key;
}

// A short piece of content, and one that is added in steps.
TEST(ContentKeyTest, EveryByteAndTheLengthCount)
{
    for (const size_t size : {37u, 301u}) {
        const std::string text(size, 'x');
        const ContentKey whole = keyOf(text);
        for (size_t i = 0; i < size; ++i) {
            std::string other = text;
            other[i] = 'y';
            EXPECT_FALSE(keyOf(other) == whole) << i;
        }
        ContentKey again = keyOf(text);
        EXPECT_TRUE(again == whole);
        again.add(1);
        EXPECT_FALSE(again == whole);
    }
    for (size_t length = 0; length < 600; ++length) {
        EXPECT_FALSE(keyOf(std::string(length, '\0')) == keyOf(std::string(length + 1, '\0')));
    }
}

// Content that differs in one lane alone has another key, also where it is added in steps.
TEST(ContentKeyTest, BothLanesOfEachStepCount)
{
    constexpr uint64_t Start = 0xc2b2ae3d27d4eb4f;
    const auto stepped = [](uint64_t value) {
        value *= 0xc4ceb9fe1a85ec53;
        return value << 31 | value >> 33;
    };
    std::vector<uint64_t> one(64);
    std::vector<uint64_t> other(64);
    other[0] = 1; // of the same lane as the fourth word behind it
    other[4] = stepped(Start) - stepped(Start + 1);
    ContentKey key;
    ContentKey otherKey;
    key.add(one.data(), 8 * one.size());
    otherKey.add(other.data(), 8 * other.size());
    EXPECT_FALSE(key == otherKey);
}

TEST(ContentKeyTest, TheOrderOfWordsCounts)
{
    std::string text(512, 'x');
    text[40] = 'a';
    const ContentKey key = keyOf(text);
    for (size_t i = 0; i < text.size(); i += 8) {
        std::string other(512, 'x');
        other[i] = 'a';
        EXPECT_EQ(keyOf(other) == key, i == 40) << i;
    }
}

} // namespace
