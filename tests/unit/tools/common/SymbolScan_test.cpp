// SPDX-License-Identifier: MIT
#include "tools/common/SymbolScan.h"

#include <cstdlib>
#include <cstring>
#include <cxxabi.h>
#include <fstream>
#include <gtest/gtest.h>

namespace {

size_t lengthOfText(const std::string& symbol)
{
    char* text = abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, nullptr);
    const size_t length = text != nullptr ? std::strlen(text) : 0;
    std::free(text);
    return length;
}

TEST(SymbolScanTest, KnowsEveryKindOfNameAndItsGreatestLength)
{
    std::ifstream in(ZEM_TEST_DATA "/names/symbols.txt");
    int count = 0;
    for (std::string line; std::getline(in, line); ++count) {
        const std::string symbol = line.substr(0, line.find('\t'));
        const SymbolScan scan = scanSymbol(symbol);
        EXPECT_TRUE(scan._isKnown) << symbol;
        EXPECT_GE(scan._length, lengthOfText(symbol)) << symbol;
        EXPECT_LE(scan._length, 10 * line.size()) << symbol;
    }
    EXPECT_GT(count, 250);
}

TEST(SymbolScanTest, FindsTheEndOfTheName)
{
    EXPECT_EQ(scanSymbol("_ZN1SIiE3getIcEEiT_")._nameEnd, std::strlen("_ZN1SIiE3getIcEE"));
    EXPECT_EQ(scanSymbol("_Z3addii")._nameEnd, std::strlen("_Z3add"));
    EXPECT_EQ(scanSymbol("_ZZ1fIiEvT_ENKUlvE_clEv")._nameEnd,
              std::strlen("_ZZ1fIiEvT_ENKUlvE_clE"));
}

TEST(SymbolScanTest, OnlyTemplatesHaveAResult)
{
    EXPECT_TRUE(scanSymbol("_Z1fIiEvT_")._hasResult);
    EXPECT_TRUE(scanSymbol("_ZN1S1fIiEEvT_")._hasResult);
    EXPECT_FALSE(scanSymbol("_Z1fi")._hasResult);
    EXPECT_FALSE(scanSymbol("_ZN1SIiE1fEi")._hasResult);
    EXPECT_FALSE(scanSymbol("_ZN1SC1IiEET_")._hasResult);
    EXPECT_FALSE(scanSymbol("_ZN1ScvT_IiEEv")._hasResult);
}

TEST(SymbolScanTest, WorkIsLinearHoweverLongTheText)
{
    std::string symbol = "_Z1fSt4pairIiiE";
    const char digits[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    for (int i = 0; i < 30; ++i) {
        const std::string last = i == 0 ? "S0_" : std::string("S") + digits[i] + "_";
        symbol += "S_I" + last + last + "E";
    }
    const SymbolScan scan = scanSymbol(symbol);
    EXPECT_TRUE(scan._isKnown);
    EXPECT_GT(scan._length, uint64_t(1) << 30);
    EXPECT_LT(scan._steps, 10 * symbol.size());
}

// Each argument is twice the one before: parameters that stand in the arguments themselves.
TEST(SymbolScanTest, ParametersInArgumentsDoubleToo)
{
    std::string symbol = "_Z1fISt4pairIiiE";
    for (int i = 0; i < 20; ++i) {
        const std::string last = i == 0 ? "T_" : "T" + std::to_string(i - 1) + "_";
        symbol += "St4pairI" + last + last + "E";
        if (i > 9) {
            break;
        }
    }
    symbol += "EvT_";
    EXPECT_GT(scanSymbol(symbol)._length, lengthOfText(symbol));
}

TEST(SymbolScanTest, EveryCutSymbolIsRead)
{
    std::ifstream in(ZEM_TEST_DATA "/names/symbols.txt");
    for (std::string line; std::getline(in, line);) {
        const std::string symbol = line.substr(0, line.find('\t'));
        for (size_t length = 0; length < symbol.size(); length += 3) {
            EXPECT_LT(scanSymbol(symbol.substr(0, length))._steps, 100 * symbol.size() + 400);
        }
    }
}

TEST(SymbolScanTest, UnknownSymbolsAreTakenForTheirGreatestLength)
{
    EXPECT_FALSE(scanSymbol("main")._isKnown);
    EXPECT_FALSE(scanSymbol("_Z")._isKnown);
    const SymbolScan scan = scanSymbol("_Z1f%S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_");
    EXPECT_FALSE(scan._isKnown);
    EXPECT_GT(scan._length, 1000000u);
}

TEST(SymbolScanTest, NestingWithoutEndIsNotFollowed)
{
    EXPECT_FALSE(scanSymbol("_Z1f" + std::string(100000, 'P') + "i")._isKnown);
    EXPECT_FALSE(scanSymbol("_Z" + std::string(100000, 'Z'))._isKnown);
}

} // namespace
