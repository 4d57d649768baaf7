// SPDX-License-Identifier: MIT
#include "zem/Lines/LineStarts.h"

#include <gtest/gtest.h>

namespace {

TEST(LineStartsTest, KeepsOffsetsAndTabsOfManyLines)
{
    LineStarts starts;
    for (uint32_t i = 0; i < 100000; ++i) {
        starts.add(3 * i);
        for (uint32_t tabs = 0; tabs < i % 3; ++tabs) {
            starts.addTab();
        }
    }
    ASSERT_EQ(starts.count(), 100000u);
    for (const uint32_t i : {0u, 4095u, 4096u, 99999u}) {
        EXPECT_EQ(starts.offset(i), 3 * i);
        EXPECT_EQ(starts.tabs(i), i % 3);
    }
    starts.clear();
    EXPECT_EQ(starts.count(), 0u);
    EXPECT_EQ(starts.bytes(), 0u);
}

TEST(LineStartsTest, ALineTakesEightBytes)
{
    constexpr size_t Lines = 1000000;
    LineStarts starts;
    for (size_t i = 0; i < Lines; ++i) {
        starts.add(0);
    }
    EXPECT_LE(starts.bytes(), Lines * 8 + 64 * 1024);
}

TEST(LineStartsTest, WhatRefersToABlockTakesMemoryToo)
{
    LineStarts starts;
    for (uint32_t i = 0; i < 4096; ++i) {
        starts.add(i);
    }
    EXPECT_GE(starts.bytes(), 4096u * 8 + sizeof(void*));
    starts.add(0);
    EXPECT_GE(starts.bytes(), 2 * (4096u * 8 + sizeof(void*)));
}

} // namespace
