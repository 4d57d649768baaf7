// SPDX-License-Identifier: MIT
#include "tools/import/llvm/BlockNumbers.h"

#include <gtest/gtest.h>

namespace {

using Counters = std::vector<uint32_t>;

Counters numbered(BlockNumbers& blocks, const Counters& counters)
{
    blocks.clear();
    for (const uint32_t counter : counters) {
        blocks.add(counter);
    }
    blocks.number();
    for (size_t i = 0; i < blocks.counters().size(); ++i) {
        EXPECT_EQ(blocks.of(blocks.counters()[i]), i);
    }
    return blocks.counters();
}

TEST(BlockNumbersTest, NumbersEachCounterOnceInTheirOrder)
{
    BlockNumbers blocks;
    EXPECT_EQ(numbered(blocks, {}), Counters());
    EXPECT_EQ(numbered(blocks, {0}), Counters({0}));
    EXPECT_EQ(numbered(blocks, {9, 1, 5, 9, 1, 0}), Counters({0, 1, 5, 9}));
    // Nothing of the function before is left.
    EXPECT_EQ(numbered(blocks, {7, 3}), Counters({3, 7}));
}

// As a damaged file may have them: a table would take 16 GB.
TEST(BlockNumbersTest, NumbersCountersThatAreFarApart)
{
    BlockNumbers blocks;
    EXPECT_EQ(numbered(blocks, {UINT32_MAX, 1, 4000000000u, UINT32_MAX}),
              Counters({1, 4000000000u, UINT32_MAX}));
    EXPECT_EQ(numbered(blocks, {2, 1}), Counters({1, 2}));
}

} // namespace
