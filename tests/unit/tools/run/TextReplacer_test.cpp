// SPDX-License-Identifier: MIT
#include "tools/run/TextReplacer.h"

#include "tests/support/TempDir.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

std::string replaced(const std::string& text, size_t piece)
{
    TextReplacer replacer("aab", "LONG");
    std::string result;
    for (size_t at = 0; at < text.size(); at += piece) {
        result += replacer.next(text.data() + at, std::min(piece, text.size() - at));
    }
    return result + replacer.end();
}

TEST(TextReplacerTest, PiecesOfAnySizeGiveOneText)
{
    for (size_t piece = 1; piece < 20; ++piece) {
        EXPECT_EQ(replaced("aab-aaab-ab-aabaab-aa", piece), "LONG-aLONG-ab-LONGLONG-aa") << piece;
        EXPECT_EQ(replaced("", piece), "");
        EXPECT_EQ(replaced("nothing", piece), "nothing");
    }
}

TEST(TextReplacerTest, WhatWasReplacedBeginsNothing)
{
    TextReplacer replacer("aba", "x");
    EXPECT_EQ(replacer.next("aba", 3), "x");
    EXPECT_EQ(replacer.end(), "");
    EXPECT_EQ(replacer.next("abab", 4), "xb");
    EXPECT_EQ(replacer.end(), "");
}

TEST(TextReplacerTest, OnlyWhatMayBeABeginningWaits)
{
    TextReplacer replacer("/tmp/x", "/home");
    EXPECT_EQ(replacer.next("1/3 Test", 8), "1/3 Test");
    EXPECT_EQ(replacer.next("in /tm", 6), "in ");
    EXPECT_EQ(replacer.next("p/y ", 4), "/tmp/y ");
}

TEST(TextReplacerTest, FilesAreChangedInPlace)
{
    const TempDir dir;
    const std::string path = dir.write("log", std::string("in aab\n\0x", 9));
    replaceInFile(path, "aab", "c");
    EXPECT_EQ(TempDir::read(path), std::string("in c\n\0x", 7));
    replaceInFile(dir.path("none"), "a", "b");
    EXPECT_EQ(TempDir::read(dir.path("none")), "");
}

} // namespace
