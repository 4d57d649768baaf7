// SPDX-License-Identifier: MIT
#include "tools/import/llvm/CoverageFunction.h"

#include "tests/unit/tools/import/llvm/LlvmBuilder.h"

#include <gtest/gtest.h>

namespace {

using Region = CoverageRegion;

std::string text(const Region& region)
{
    return std::to_string(region._kind) + " " + std::to_string(region._startLine) + ":" +
           std::to_string(region._startColumn) + "-" + std::to_string(region._endLine) + ":" +
           std::to_string(region._endColumn) + " c" + std::to_string(region._counter) + " f" +
           std::to_string(region._file);
}

bool read(CoverageFunction& function, const std::string& mapping, size_t nFiles = 2)
{
    return function.read(mapping.data(), mapping.size(), nFiles);
}

// What clang 13 to 22 write for
//
//   1 #define SQ(x) ((x) * (x))         4     return SQ(a);
//   2 int f(int a) {                    5   return 0;
//   3   if (a > 1)                      6 }
const char sample[] = "\x02\x01\x01\x01\x01\x05\x08"
                      "\x01\x02\x0e\x04\x02"
                      "\x01\x01\x07\x00\x0c"
                      "\x20\x05\x02\x00\x07\x00\x0c"
                      "\x05\x00\x0d\x01\x85\x80\x80\x80\x08"
                      "\x05\x01\x05\x00\x0e"
                      "\x0c\x00\x0c\x00\x0e"
                      "\x02\x00\x11\x01\x83\x80\x80\x80\x08"
                      "\x02\x01\x03\x00\x0b"
                      "\x01\x05\x01\x0f\x00\x1a";

std::string sampleMapping()
{
    return std::string(sample, sizeof(sample) - 1);
}

TEST(CoverageFunctionTest, ReadsWhatTheCompilerWrites)
{
    CoverageFunction function;
    ASSERT_TRUE(read(function, sampleMapping()));
    EXPECT_EQ(function._files, (std::vector<uint32_t>{1, 1}));
    ASSERT_EQ(function._expressions.size(), 1u);
    EXPECT_EQ(function._expressions[0]._left, 1u);
    EXPECT_EQ(function._expressions[0]._right, 5u);
    const std::vector<std::string> regions = {
        "0 2:14-6:2 c1 f0", "0 3:7-3:12 c1 f0", "4 3:7-3:12 c5 f0",
        "3 3:13-4:5 c5 f0", "0 4:5-4:14 c5 f0", "1 4:12-4:14 c5 f0", // the macro's first region
        "3 4:17-5:3 c2 f0", "0 5:3-5:11 c2 f0", "0 1:15-1:26 c5 f1"};
    ASSERT_EQ(function._regions.size(), regions.size());
    for (size_t i = 0; i < regions.size(); ++i) {
        EXPECT_EQ(text(function._regions[i]), regions[i]);
    }
    EXPECT_FALSE(function.isDummy());
}

TEST(CoverageFunctionTest, ReadsEveryKindOfRegion)
{
    // 1 file, no expressions: skipped, decision, condition of a decision, zero, expansion of
    // itself.
    CoverageFunction function;
    ASSERT_TRUE(
        read(function, lebs({1, 0, 0, 5, 2 << 3, 4, 0, 2, 0, 5 << 3, 7, 2, 0, 3, 0, 9, 6 << 3, 1, 5,
                             1, 2, 3, 1, 3,      0, 9, 0, 0, 4,      0, 4, 4, 0, 5, 0, 6})));
    ASSERT_EQ(function._regions.size(), 5u);
    EXPECT_EQ(text(function._regions[0]), "2 4:1-6:4294967295 c0 f0");
    EXPECT_EQ(text(function._regions[1]), "5 4:3-4:9 c0 f0");
    EXPECT_EQ(text(function._regions[2]), "6 5:3-5:9 c1 f0");
    EXPECT_EQ(text(function._regions[3]), "0 5:4-5:4 c0 f0"); // clang 19 writes empty ones
    EXPECT_EQ(text(function._regions[4]), "1 5:5-5:6 c0 f0");
}

TEST(CoverageFunctionTest, FollowsMacrosOfMacrosAndStopsAtRings)
{
    // Files 0 > 1 > 2 with counter 3, and 0 > 3 > 4 > 3.
    CoverageFunction function;
    ASSERT_TRUE(read(function, lebs({5, 0,          0, 0, 0, 0, 0, 2,          1 << 3 | 4, 1, 1, 0,
                                     5, 3 << 3 | 4, 1, 1, 0, 5, 1, 2 << 3 | 4, 1,          1, 0, 5,
                                     1, 3 << 2 | 1, 1, 1, 0, 5, 1, 4 << 3 | 4, 1,          1, 0, 5,
                                     1, 3 << 3 | 4, 1, 1, 0, 5})));
    EXPECT_EQ(function._regions[0]._counter, 13u);
    EXPECT_EQ(function._regions[1]._counter, 0u);
    EXPECT_EQ(function._regions[2]._counter, 13u);
    EXPECT_EQ(function._regions[4]._counter, 0u);
}

TEST(CoverageFunctionTest, TellsDummiesFromFunctionsThatNeverRun)
{
    CoverageFunction function;
    ASSERT_TRUE(read(function, plainMapping({{0, 2, 1, 3, 2}})));
    EXPECT_TRUE(function.isDummy());
    ASSERT_TRUE(read(function, plainMapping({{1, 2, 1, 3, 2}})));
    EXPECT_FALSE(function.isDummy());
    ASSERT_TRUE(read(function, plainMapping({{0, 2, 1, 3, 2}, {0, 3, 1, 3, 2}})));
    EXPECT_FALSE(function.isDummy());
}

TEST(CoverageFunctionTest, RefusesWhatMakesNoSense)
{
    const std::vector<std::vector<uint64_t>> mappings = {
        {0, 0, 0},                            // no file
        {1, 2, 0, 1, 1, 1, 1, 0, 2},          // a file that the unit does not have
        {1, 0, 0, 0},                         // no region
        {1, 0, 0, 1, 2, 1, 1, 0, 2},          // an expression that is not there
        {1, 0, 0, 1, 1 << 3 | 4, 1, 1, 0, 2}, // a macro in a file that is not there
        {1, 0, 0, 1, 3 << 3, 1, 1, 0, 2},     // kinds that nobody knows
        {1, 0, 0, 1, 7 << 3, 1, 1, 0, 2},
        {1, 0, 0, 1, 1, 1, 5, 0, 4},          // ends before it starts
        {1, 0, 0, 1, 1, UINT32_MAX, 1, 0, 2}, // lines and columns past 32 bits
        {1, 0, 0, 1, 1, UINT32_MAX - 2, 1, 2, 2},
        {1, 0, 0, 1, 1, 1, 1, 0, uint64_t(1) << 32},
        {1, 0, 0, 1, UINT32_MAX, 1, 1, 0, 2},
        {1, 0, 0, 2, 1, 1, 1, 0, 2},                 // fewer than it says
        {1, 0, uint64_t(1) << 40, 1, 1, 1, 1, 0, 2}, // more than there are bytes
        {uint64_t(1) << 63, 0, 1},
    };
    for (size_t i = 0; i < mappings.size(); ++i) {
        CoverageFunction function;
        EXPECT_FALSE(read(function, lebs(mappings[i]))) << i;
    }
    CoverageFunction function;
    EXPECT_FALSE(read(function, std::string(11, '\xff'))); // a number without end
}

TEST(CoverageFunctionTest, SurvivesEveryCutAndEveryByte)
{
    const std::string whole = sampleMapping();
    CoverageFunction function;
    for (size_t size = 0; size < whole.size(); ++size) {
        EXPECT_FALSE(read(function, whole.substr(0, size))) << size;
    }
    for (size_t at = 0; at < whole.size(); ++at) {
        for (int bits = 1; bits < 256; ++bits) {
            std::string changed = whole;
            changed[at] = static_cast<char>(changed[at] ^ bits);
            (void)read(function, changed);
            EXPECT_LE(function._regions.size(), whole.size());
        }
    }
}

} // namespace
