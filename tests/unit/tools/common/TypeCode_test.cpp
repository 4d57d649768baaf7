// SPDX-License-Identifier: MIT
#include "tools/common/TypeCode.h"

#include <gtest/gtest.h>

namespace {

struct TypeCodeRow
{
    const char* name;
    const char* types;
    const char* code; // null: has none
};

void PrintTo(const TypeCodeRow& row, std::ostream* out)
{
    *out << row.types;
}

class TypeCodeTest : public ::testing::TestWithParam<TypeCodeRow>
{};

TEST_P(TypeCodeTest, EncodesTheList)
{
    std::string code;
    size_t nChanged = 0;
    const bool isEncoded = appendTypeCodes(GetParam().types, code, nChanged);
    EXPECT_EQ(isEncoded, GetParam().code != nullptr);
    if (isEncoded && GetParam().code != nullptr) {
        EXPECT_EQ(code, GetParam().code);
    }
}

const TypeCodeRow rows[] = {
    {"Empty", "", "v"},
    {"Int", "int", "i"},
    {"Several", "int, char, double", "icd"},
    {"UnsignedLongLong", "unsigned long long", "Ux"},
    {"SignedChar", "signed char", "Sc"},
    {"LongDouble", "long double", "r"},
    {"PointerToConst", "char const*", "PCc"},
    {"ConstPointer", "char* const", "CPc"},
    {"ReferenceToConst", "Foo const&", "RC3Foo"},
    {"ReferenceToPointer", "char*&", "RPc"},
    {"Volatile", "int const volatile*", "PCVi"},
    {"Bool", "bool", "4bool"},
    {"WideCharacter", "wchar_t", "7wchar_t"},
    {"StandardString", "std::string", "Q23std6string"},
    {"Template", "List<int>&", "R9List<int>"},
    {"TemplateOfQualified", "std::vector<std::string>", "Q33std10vector<std7string>"},
    {"Ellipsis", "char const*, ...", "PCce"},
    {"FunctionPointer", "void (*)(int)", "PFi_v"},
    {"FunctionPointerInMiddle", "int, void (*)(int, char), int", "iPFic_vi"},
    {"PointerToFunctionPointer", "void (**)(int)", "PPFi_v"},
    {"FunctionReference", "void (&)()", "RFv_v"},
    {"PointerBehindAFunction", "void (*)(int)*", "14void (*)(int)*"},
    {"MemberPointer", "int Foo::*", "M3Fooi"},
    {"QualifiedMemberPointer", "int ns::Foo::*", "MQ22ns3Fooi"},
    {"MemberFunctionPointer", "void (Foo::*)(int)", "M3FooFi_v"},
    {"NinePartsAtMost", "a::b::c::d::e::f::g::h::i", "Q91a1b1c1d1e1f1g1h1i"},
    {"TenParts", "a::b::c::d::e::f::g::h::i::j", "Q_10_1a1b1c1d1e1f1g1h1i1j"},
    {"ManyParts", "a::b<c::d, e::f<g::h, i::j, k::l>, m::n, 4u, o::p::q> const&, int",
     "RCQ_10_1a3b<c4d, e3f<g4h, i4j, k5l>, m8n, 4u, o1p2q>i"},
    {"RvalueReference", "Foo&&", "RR3Foo"},
    {"RvalueReferenceToConst", "Foo const&&", "RRC3Foo"},
    {"Array", "int (&) [5]", "11int (&) [5]"},
    {"ArrayOfConst", "ns::T const (&) [5]", "CQ22ns9T (&) [5]"},
    {"ArrayOfFunctions", "void (* (&&) [5])()", "19void (* (&&) [5])()"},
    {"ConstMemberFunctionPointer", "void (Foo::*)(int) const", "M3FooCFi_v"},
    {"ReferenceMemberFunctionPointer", "void (Foo::*)(int) &", "Q29void (Foo9*)(int) &"},
    {"FunctionWithoutExceptions", "void (*)() noexcept", "19void (*)() noexcept"},
    {"MemberFunctionWithoutExceptions", "void (S::*)() noexcept const",
     "Q27void (S19*)() noexcept const"},
    {"Vector", "float __vector(4)", "17float __vector(4)"},
    {"Decltype", "decltype ({parm#1}()) const&", "RC21decltype ({parm#1}())"},
    {"Comparison", "A<((1)<(2))>, int", "12A<((1)<(2))>i"},
    {"LambdaParameter", "f(int)::{lambda(auto:1)#1}", "Q26f(int)16{lambda(auto)#1}"},
    {"Operator", "A<&(S::operator<)>, int", "Q25A<&(S11operator<)>i"},
    {"GlobalScope", "::Foo", "3Foo"},
    {"NothingBetweenCommas", "int, , int", "ii"},
    {"OnlyAnEmptyPack", ",", "v"},
    {"StrayBracket", ")", "1)"},
    {"NoPointedTo", "*", "1*"},
};

INSTANTIATE_TEST_SUITE_P(Rows, TypeCodeTest, ::testing::ValuesIn(rows),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(TypeCodeDepthTest, NestingWithoutEndIsWrittenAsItStands)
{
    std::string types = "int";
    for (int i = 0; i < 1000; ++i) {
        types = "void (*)(" + types + ")";
    }
    std::string code;
    size_t nChanged = 0;
    EXPECT_TRUE(appendTypeCodes(types, code, nChanged));
    EXPECT_EQ(code.compare(0, 6, "PFPFPF"), 0);
    EXPECT_NE(code.find("void (*)(void (*)("), std::string::npos);
}

} // namespace
