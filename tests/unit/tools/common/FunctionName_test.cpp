// SPDX-License-Identifier: MIT
#include "tools/common/FunctionName.h"

#include "tests/support/Golden.h"
#include "tests/support/reportedName.h"
#include "tools/common/FunctionText.h"
#include "tools/common/RecordPayload.h"
#include "zem/Demangle/demangle.h"

#include <algorithm>
#include <cstdlib>
#include <cxxabi.h>
#include <fstream>
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

// What other tools make of a symbol before they write it down.
TEST_P(FunctionNameTest, ReadableFormIsStoredTheSame)
{
    const std::string symbol = GetParam().symbol;
    int status = 0;
    char* text = abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status);
    const std::string readable = text != nullptr ? text : symbol;
    std::free(text);
    ImportLosses losses;
    EXPECT_EQ(storedFunctionName(readable, losses), storedFunctionName(symbol, losses)) << readable;
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
    {"ConversionToATypeThatHasNoCode", "_ZN1ScvN4a__b1TEEv", "S::operator T__Fv",
     "S::operator T()"},
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

struct ReportRow
{
    const char* name;
    const char* symbol;
    const char* simple;
    const char* full; // with types and qualifiers
    const char* klass;
};

void PrintTo(const ReportRow& row, std::ostream* out)
{
    *out << row.symbol;
}

class FunctionReportTest : public ::testing::TestWithParam<ReportRow>
{};

TEST_P(FunctionReportTest, ShowsNameTypesAndClass)
{
    ImportLosses losses;
    const std::string stored = storedFunctionName(GetParam().symbol, losses);
    EXPECT_EQ(reportedName(stored, -1), GetParam().simple);
    EXPECT_EQ(reportedName(stored, 1), GetParam().full);
    EXPECT_EQ(reportedClass(stored), GetParam().klass);
}

const ReportRow reportRows[] = {
    {"ClassTemplate", "_ZN2ns4ListINS_4NodeEE6appendEOS1_", "ns::List<ns::Node>::append",
     "ns::List<ns::Node>::append(ns::Node &&)", "ns::List<ns::Node>"},
    {"NestedClass", "_ZN1a1b1C1fEv", "a::b::C::f", "a::b::C::f()", "a::b::C"},
    {"LambdaInConstMember", "_ZZNK1S3getEvENKUlvE_clEv", "S::get() const::{lambda()#1}::operator()",
     "S::get() const::{lambda()#1}::operator()()", "S::get() const::{lambda()#1}"},
    {"GenericLambda", "_ZZ4mainENKUlT_E_clIN2ns1TEEEDaS_",
     "main::{lambda(auto:1)#1}::operator()<T>", "main::{lambda(auto:1)#1}::operator()<T>(ns::T)",
     "main::{lambda(auto:1)#1}"},
    {"LocalClass", "_ZZ1fvEN5Local1gEv", "f()::Local::g", "f()::Local::g()", "f()::Local"},
    {"LocalClassOfConversion", "_ZZNK1ScvN2ns1TEEvEN1X1fEv", "S::operator ns::T() const::X::f",
     "S::operator ns::T() const::X::f()", "S::operator ns::T() const::X"},
    {"AnonymousNamespace", "_ZN12_GLOBAL__N_11S1fEv", "(anonymous namespace)::S::f",
     "(anonymous namespace)::S::f()", "(anonymous namespace)::S"},
    {"Conversion", "_ZN1ScvN2ns1TEEv", "S::operator ns::T", "S::operator ns::T()", "S"},
    {"ConversionToArrayReference", "_ZN1ScvRA3_iEv", "S::operator int (&) [3]",
     "S::operator int (&) [3]()", "S"},
    {"Literal", "_ZN2nsli2_xEPKc", "ns::operator\"\" _x", "ns::operator\"\" _x(const char *)",
     "ns"},
    {"Spaceship", "_ZN1SssERKS_", "S::operator<=>", "S::operator<=>(const S &)", "S"},
    {"LessWithArguments", "_ZN1SltIN2ns1TEEEbT_", "S::operator< <T>", "S::operator< <T>(ns::T)",
     "S"},
    {"ArrowWithArguments", "_ZN1SptIiEEbv", "S::operator-><int>", "S::operator-><int>()", "S"},
    {"ResultIsArrayReference", "_Z3fooIiERAplLi1ELi2E_iT_", "foo<int>", "foo<int>(int)", ""},
    {"ResultIsFunction", "_ZN2ns1fIiEEPFvT_Ei", "ns::f<int>", "ns::f<int>(int)", "ns"},
    {"ConstMemberPointer", "_Z1fM1SKFviE", "f", "f(void (S::*)(int) const)", ""},
    {"StandardDefaults", "_Z1fSt6vectorISsSaISsEESt3mapIiSsSt4lessIiESaISt4pairIKiSsEEE", "f",
     "f(std::vector<std::string>, std::map<int, std::string>)", ""},
    {"OtherAllocatorStays", "_Z1fSt6vectorIiN2ns5AllocIiEEE", "f",
     "f(std::vector<int, ns::Alloc<int>>)", ""},
    {"StreamAsTheToolsShowIt", "_ZlsRSoRK1S", "operator<<",
     "operator<<(std::basic_ostream<char> &, const S &)", ""},
    {"LongNameIsToldWhole",
     "_ZN2ns5parseIN1a1b6ReaderIiNS1_6BufferIcEEEENS1_7HandlerINS1_17EventOfTheReadersEEEEEbRT_OT0_"
     "i",
     "ns::parse<Reader<int, Buffer<...>>, Handler<...>>",
     "ns::parse<Reader<int, Buffer<...>>, Handler<...>>(ns::parse<a::b::Reader<int, "
     "a::Buffer<char>>, "
     "a::Handler<a::EventOfTheReaders>> (a::b::Reader<int, a::Buffer<char>> &, "
     "a::Handler<a::EventOfTheReaders> &&, int))",
     "ns"},
    {"DoubleUnderscoreInArguments", "_ZN2ns1fIoEEvT_", "ns::f<...>",
     "ns::f<...>(ns::f<unsigned __int128> (unsigned __int128))", "ns"},
    {"DoubleUnderscoreInParametersOfALambda", "_ZZ4mainENKUloE_clEo",
     "main::{lambda(...)#1}::operator()",
     "main::{lambda(...)#1}::operator()(main::{lambda(unsigned __int128)#1}::operator() (unsigned "
     "__int128))",
     "main::{lambda(...)#1}"},
    {"EmptyPack", "_ZN1SC2IJEEEDpT_i", "S::S<>", "S::S<>(int)", "S"},
    {"DoubleUnderscoreInName", "_ZN2ns4a__bEi", "ns::a__b", "ns::a__b", "ns"},
    {"Thunk", "_ZThn16_N1S1fEv", "S::f", "S::f()", "S"},
};

INSTANTIATE_TEST_SUITE_P(Rows, FunctionReportTest, ::testing::ValuesIn(reportRows),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(FunctionNameLengthTest, OnlyNamesOfMoreThanSixtyCharactersAreShortened)
{
    ImportLosses losses;
    const std::string word(49, 'f'); // "f...f<A<double>>" of 60
    const std::string sixty = "_Z49" + word + "I1AIdEEvv";
    const std::string more = "_Z50f" + word + "I1AIdEEvv";
    EXPECT_EQ(reportedName(storedFunctionName(sixty, losses), -1), word + "<A<double>>");
    EXPECT_EQ(reportedName(storedFunctionName(more, losses), -1), "f" + word + "<A<...>>");
}

TEST(FunctionNameLengthTest, FullNamesKeepEveryList)
{
    ImportLosses losses;
    const std::string word(90, 'f');
    NameStyle style;
    style._isFull = true;
    const std::string stored = storedFunctionName({"_Z90" + word + "I1AIiEEvi"}, style, losses);
    EXPECT_EQ(stored, word + "<A<int>>__Fi");
}

struct InstancesRow
{
    const char* name;
    std::vector<std::string> symbols;
    const char* shown; // with types
    const char* key;   // of the first
};

void PrintTo(const InstancesRow& row, std::ostream* out)
{
    *out << row.name;
}

class FunctionInstancesTest : public ::testing::TestWithParam<InstancesRow>
{};

TEST_P(FunctionInstancesTest, HaveTheTemplatesName)
{
    ImportLosses losses;
    const std::string stored = storedFunctionName(GetParam().symbols, NameStyle(), losses);
    EXPECT_EQ(reportedName(stored, 1), GetParam().shown);
}

TEST_P(FunctionInstancesTest, HaveOneKey)
{
    for (const std::string& symbol : GetParam().symbols) {
        EXPECT_EQ(templateName(symbol), GetParam().key) << symbol;
    }
}

// An importer that has asked each for its template's name has spared the union some work.
TEST_P(FunctionInstancesTest, HaveTheSameTextWhenTheirTemplatesAreKnown)
{
    std::vector<FunctionText> plain;
    std::vector<FunctionText> known;
    for (const std::string& symbol : GetParam().symbols) {
        plain.push_back(readFunctionText(symbol));
        known.push_back(plain.back());
        EXPECT_EQ(templateName(known.back()), templateName(symbol));
    }
    ImportLosses losses;
    const FunctionText wanted = unitedText(plain, losses);
    const FunctionText united = unitedText(known, losses);
    EXPECT_EQ(united._name, wanted._name);
    EXPECT_EQ(united._types, wanted._types);
}

const InstancesRow instancesRows[] = {
    {"SameParameters", {"_ZN2ns1fIcEEvi", "_ZN2ns1fIiEEvi"}, "ns::f<...>(int)", "ns::f<...>"},
    {"DifferentParameters",
     {"_Z1fIcEvRKT_i", "_Z1fIiEvRKT_i"},
     "f<...>(const auto &, int)",
     "f<...>"},
    {"SameTemplateAsParameter",
     {"_Z1fIcEvSt6vectorIT_SaIS1_EE", "_Z1fIiEvSt6vectorIT_SaIS1_EE"},
     "f<...>(std::vector<...>)",
     "f<...>"},
    {"Pack", {"_Z1fIJiEEvcDpT_", "_Z1fIJicEEvcDpT_"}, "f<...>(char, int, ...)", "f<...>"},
    {"ClassTemplate", {"_ZN1SIcE3getEi", "_ZN1SIiE3getEi"}, "S<...>::get(int)", "S<...>::get"},
    {"ConstructorVariants", {"_ZN1SC1Ei", "_ZN1SC2Ei"}, "S::S(int)", "S::S"},
    {"LambdaInTemplate",
     {"_ZZ1fIcEvT_ENKUlcE_clEc", "_ZZ1fIiEvT_ENKUliE_clEi"},
     "f<...>(...)::{lambda(...)#1}::operator()(auto)",
     "f<...>(...)::{lambda(...)#1}::operator()"},
    {"LambdaWithParametersOfItsOwn",
     {"_ZZ1fIcEvT_ENKUliE_clEi", "_ZZ1fIiEvT_ENKUliE_clEi"},
     "f<...>(...)::{lambda(int)#1}::operator()(int)",
     "f<...>(...)::{lambda(...)#1}::operator()"},
    {"LambdaWithInstancesAsParameters",
     {"_ZZ1fIcEviENKUl1AIcEE_clES1_", "_ZZ1fIiEviENKUl1AIiEE_clES1_"},
     "f<...>(int)::{lambda(A<...>)#1}::operator()(A<...>)",
     "f<...>(...)::{lambda(...)#1}::operator()"},
    {"ConversionToParameter",
     {"_ZN1SIcEcvcEv", "_ZN1SIiEcviEv"},
     "S<...>::operator auto()",
     "S<...>::operator auto"},
    {"OperatorLess", {"_ZltIcEbT_", "_ZltIiEbT_"}, "operator< <...>(auto)", "operator< <...>"},
    {"PlainFunction", {"_ZN2ns1fEi"}, "ns::f(int)", "ns::f"},
    {"NoTemplateButLocal", {"_ZZ1fiEN1L1gEv"}, "f(int)::L::g()", "f(int)::L::g"},
    {"NoSymbol", {"main"}, "main", "main"},
};

INSTANTIATE_TEST_SUITE_P(Rows, FunctionInstancesTest, ::testing::ValuesIn(instancesRows),
                         [](const auto& info) { return std::string(info.param.name); });

// Doubles its text with each pair, 11 characters each.
std::string doublingSymbol(int pairs)
{
    std::string symbol = "_Z1fSt4pairIiiE";
    const char digits[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    for (int i = 0; i < pairs; ++i) {
        const std::string last = i == 0 ? "S0_" : std::string("S") + digits[i] + "_";
        symbol += "S_I" + last + last + "E";
    }
    return symbol;
}

TEST(FunctionNameBoundTest, SymbolThatUnfoldsToGigabytesStaysAsItIs)
{
    ImportLosses losses;
    const std::string symbol = doublingSymbol(30);
    EXPECT_EQ(storedFunctionName(symbol, losses), symbol);
    EXPECT_EQ(templateName(symbol), symbol);
    EXPECT_EQ(losses._namesNotUnfolded, 1u);
}

TEST(FunctionNameBoundTest, SmallerOneIsUnfolded)
{
    ImportLosses losses;
    EXPECT_EQ(storedFunctionName(doublingSymbol(2), losses).compare(0, 4, "f__F"), 0);
    EXPECT_EQ(losses._namesNotUnfolded, 0u);
}

TEST(FunctionNameBoundTest, ReadableNameIsReadToABound)
{
    const auto isRead = [](size_t size) {
        const std::string name = "f(" + std::string(size - 3, 'a') + ")";
        return readFunctionText(name)._name == "f";
    };
    EXPECT_TRUE(isRead(262144));
    EXPECT_FALSE(isRead(262145));
}

// Without the few kinds, variadic lambdas among them, that older decoders of the compiler's library
// leave as they are.
TEST(FunctionNameSampleTest, EveryKindOfNameIsShownAsRecorded)
{
    std::ifstream in(ZEM_TEST_DATA "/names/symbols.txt");
    std::string text;
    ImportLosses losses;
    for (std::string line; std::getline(in, line);) {
        const std::string symbol = line.substr(0, line.find('\t'));
        const std::string stored = storedFunctionName(symbol, losses);
        text += line.substr(symbol.size() + 1) + "\n  " + reportedName(stored, -1) + "\n  " +
                reportedName(stored, 0) + "\n  " + reportedName(stored, 1) + "\n  class " +
                reportedClass(stored) + "\n";
    }
    EXPECT_TRUE(matchesGolden("names/symbols.txt", text));
}

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
