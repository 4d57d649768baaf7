// SPDX-License-Identifier: MIT
#include "tools/common/plainSymbol.h"

#include <cstdlib>
#include <cxxabi.h>
#include <gtest/gtest.h>

namespace {

// What the decoder makes of a symbol; empty when that is nothing.
std::string decoded(const std::string& symbol)
{
    char* text = abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, nullptr);
    const std::string result = text == nullptr ? "" : text;
    std::free(text);
    return result;
}

TEST(PlainSymbolTest, ReadsWhatTheDecoderDoes)
{
    const struct
    {
        const char* symbol;
        const char* before; // the name
        const char* behind;
    } rows[] = {
        {"_Z1fv", "", ""},
        {"_ZL4workiPKcRb", "", ""},
        {"_ZN2ns1S3getEv", "", ""},
        {"_ZNK2ns1S3getEdz", "", " const"},
        {"_ZN3FooC1Ev", "", ""},
        {"_ZN2ns3FooC2Ehj", "", ""},
        {"_ZN2ns3FooD0Ev", "", ""},
        {"_ZN1SIiE3runEx", "", ""},
        {"_ZN1SIiLin5EbE3runEPv", "", ""},
        {"_ZN2ns1fILi5EEEvi", "void ", ""},
        {"_Z3fooIjdEPKcaRKw", "char const* ", ""},
        {"_ZN2ns1SIcE1fIlEEyv", "unsigned long long ", ""},
        {"_Z1fstmlfeghxyPsRt", "", ""},
    };
    for (const auto& row : rows) {
        FunctionText function;
        ASSERT_TRUE(readPlainSymbol(row.symbol, function)) << row.symbol;
        EXPECT_EQ(row.before + function._name + "(" + function._types + ")" + row.behind,
                  decoded(row.symbol));
        EXPECT_TRUE(function._hasTypes);
        EXPECT_FALSE(function._isSymbol || function._isTooLarge);
    }
}

TEST(PlainSymbolTest, LeavesTheRestToTheDecoder)
{
    for (const char* symbol : {"",
                               "f",
                               "main",
                               "_Z",
                               "_Z1f",
                               "_Z2fv",
                               "_Z01fv",
                               "_ZN1f",
                               "_ZN1fE",
                               "_ZNEv",
                               "_Z1fvi",
                               "_Z1fiv",
                               "_Z1fPz",
                               "_Z1fPKPc",
                               "_Z1fi.isra.0",
                               "_Z1fv [clone .cold]",
                               "_ZNSt1fEv",
                               "_ZN3std1fEv",
                               "_Z1fS_",
                               "_Z1fIiEvT_",
                               "_ZN12_GLOBAL__N_11fEv",
                               "_ZN1SplERKS_",
                               "_ZN1S1fB5cxx11Ev",
                               "_ZN1SIiEC1Ev",
                               "_ZNC1Ev",
                               "_ZN1SC1",
                               "_ZN1SC1Ei1fEv",
                               "_ZN1SC4Ev",
                               "_ZN1SC0Ev",
                               "_Z1fILb1EEvv",
                               "_Z1fIvEvv",
                               "_Z1fILi5Evv",
                               "_Z1fILinEEvv",
                               "_Z1fu3abc",
                               "_Z1fDn",
                               "_ZTV1S",
                               "_ZGVZ1fvE1x",
                               "_ZZ1fvENK1SclEv",
                               "_Z99999999999999999999fv"}) {
        FunctionText function;
        EXPECT_FALSE(readPlainSymbol(symbol, function)) << symbol;
    }
    FunctionText function;
    EXPECT_FALSE(readPlainSymbol("_Z5000" + std::string(5000, 'f') + "v", function));
    EXPECT_FALSE(readPlainSymbol(std::string("_Z1f\0v", 6), function));
    EXPECT_FALSE(readPlainSymbol(std::string("_Z1fv\0x", 7), function));
}

} // namespace
