// SPDX-License-Identifier: MIT
#include "tools/common/FunctionName.h"

#include "tools/common/RecordPayload.h"
#include "zem/Demangle/demangle.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>

namespace {

struct NameRow
{
    const char* name;
    const char* symbol;
    const char* stored;
    const char* shown; // with types and qualifiers; null when shown as stored
};

void PrintTo(const NameRow& row, std::ostream* out)
{
    *out << row.symbol;
}

std::string decoded(const std::string& stored, int mode)
{
    char* text = demangle_name(stored.c_str(), mode);
    const std::string result = text != nullptr ? text : "(as stored)";
    std::free(text);
    return result;
}

class FunctionNameTest : public ::testing::TestWithParam<NameRow>
{};

TEST_P(FunctionNameTest, StoresWhatTheDecoderGivesBack)
{
    ImportLosses losses;
    const std::string stored = storedFunctionName(GetParam().symbol, losses);
    EXPECT_EQ(stored, GetParam().stored);
    EXPECT_EQ(decoded(stored, 1), GetParam().shown != nullptr ? GetParam().shown : "(as stored)");
}

TEST_P(FunctionNameTest, ClassIsNotCutInsideBrackets)
{
    ImportLosses losses;
    const std::string stored = storedFunctionName(GetParam().symbol, losses);
    const size_t colon = stored.rfind(':');
    const std::string last = colon == std::string::npos ? stored : stored.substr(colon + 1);
    EXPECT_EQ(std::count(last.begin(), last.end(), '('), std::count(last.begin(), last.end(), ')'));
}

const NameRow rows[] = {
    {"Plain", "main", "main", nullptr},
    {"Global", "_Z3addii", "add__Fii", "add(int, int)"},
    {"NoParameters", "_Z4initv", "init__Fv", "init()"},
    {"ConstMember", "_ZNK1S3getEi", "S::get__Fi", "S::get(int)"},
    {"Constructor", "_ZN1SC2EPKc", "S::S__FPCc", "S::S(const char *)"},
    {"Destructor", "_ZN1SD0Ev", "S::~S__Fv", "S::~S()"},
    {"TemplateInstance", "_Z2mxIiET_S0_S0_", "mx<int>__Fii", "mx<int>(int, int)"},
    {"TemplateMember", "_ZN4ListIiE6appendERKi", "List<int>::append__FRCi",
     "List<int>::append(const int &)"},
    {"Subscript", "_ZN1SixEi", "S::operator[]__Fi", "S::operator[](int)"},
    {"Call", "_ZN1SclEi", "S::operator()__Fi", "S::operator()(int)"},
    {"TemplateOperator", "_ZmiIiE1SIT_ES2_S2_", "operator-<int>__F6S<int>6S<int>",
     "operator-<int>(S<int>, S<int>)"},
    {"Conversion", "_ZNK1ScviEv", "S::operator int__Fv", "S::operator int()"},
    {"OperatorNew", "_ZN1SnwEm", "S::operator new__FUl", "S::operator new(unsigned long)"},
    {"String", "_Z4showNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE",
     "show__FQ23std6string", "show(std::string)"},
    {"AnonymousNamespace", "_ZN12_GLOBAL__N_16helperEb", "(anonymous namespace)::helper__F4bool",
     "(anonymous namespace)::helper(bool)"},
    {"Lambda", "_ZZ4mainENKUliE_clEi", "main::{lambda(int)#1}::operator()__Fi",
     "main::{lambda(int)#1}::operator()(int)"},
    {"OwnTemplateArgumentsLoseTheirQualifiers", "_ZN2ns3useINS_1TEEEvT_", "ns::use<T>__FQ22ns1T",
     "ns::use<T>(ns::T)"},
    {"AbiTagGoes", "_ZN2ns4nameB5cxx11Ei", "ns::name__Fi", "ns::name(int)"},
    {"RvalueReference", "_Z4takeOi", "take__FRRi", "take(int &&)"},
    {"ReservedName", "_Z5a__b_i", "a__b_", nullptr},
    {"TrailingUnderscore", "_Z2f_i", "f_", nullptr},
    {"StaticInitialisation", "_Z41__static_initialization_and_destruction_0ii",
     "__static_initialization_and_destruction_0", nullptr},
    {"PlainNameThatLooksEncoded", "f__Fv", "f_ _Fv", nullptr},
    {"Clone", "_Z3addii.part.0", "add__Fii", "add(int, int)"},
};

INSTANTIATE_TEST_SUITE_P(Rows, FunctionNameTest, ::testing::ValuesIn(rows),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(FunctionNameLossTest, CountsNamesWithoutTypesAndChangedNames)
{
    ImportLosses losses;
    (void)storedFunctionName("_Z5a__b_i", losses);
    (void)storedFunctionName("f__Fv", losses);
    (void)storedFunctionName("main", losses);
    EXPECT_EQ(losses._namesWithoutTypes, 1u);
    EXPECT_EQ(losses._renamedFunctions, 1u);
}

TEST(FunctionNameLossTest, NameTooLongForARecordIsCut)
{
    ImportLosses losses;
    const std::string name(70000, 'x');
    EXPECT_EQ(storedFunctionName(name, losses).size(), RecordPayload::LongestText);
    EXPECT_EQ(losses._renamedFunctions, 1u);
}

TEST(FunctionNameLossTest, EverySymbolGivesAName)
{
    ImportLosses losses;
    const std::string symbol = "_ZNK2ns4ListIPKcE6appendERKNS_3MapIiNS_1TEEEPFvS2_E";
    for (size_t length = 0; length <= symbol.size(); ++length) {
        const std::string part = symbol.substr(0, length);
        EXPECT_EQ(storedFunctionName(part, losses).empty(), part.empty());
    }
    for (const char* text : {"operator", "_Z", "::", "a<", "a(", ")", "_ZN(", "operator<"}) {
        EXPECT_FALSE(storedFunctionName(text, losses).empty()) << text;
    }
}

} // namespace
