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
    const bool isEncoded = appendTypeCodes(GetParam().types, code);
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
    {"Volatile", "int const volatile*", "PVCi"},
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
    {"MemberPointer", "int Foo::*", "M3Fooi"},
    {"QualifiedMemberPointer", "int ns::Foo::*", "MQ22ns3Fooi"},
    {"MemberFunctionPointer", "void (Foo::*)(int)", "M3FooFi_v"},
    {"NinePartsAtMost", "a::b::c::d::e::f::g::h::i", "Q91a1b1c1d1e1f1g1h1i"},
    {"TenParts", "a::b::c::d::e::f::g::h::i::j", nullptr},
    {"RvalueReference", "Foo&&", nullptr},
    {"Array", "int (&) [5]", nullptr},
    {"ConstMemberFunctionPointer", "void (Foo::*)(int) const", nullptr},
    {"EmptyPart", "::Foo", nullptr},
    {"NothingBetweenCommas", "int, , int", nullptr},
    {"StrayBracket", ")", nullptr},
    {"NoPointedTo", "*", nullptr},
};

INSTANTIATE_TEST_SUITE_P(Rows, TypeCodeTest, ::testing::ValuesIn(rows),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(TypeCodeDepthTest, NestingWithoutEndHasNoCode)
{
    std::string types = "int";
    for (int i = 0; i < 5000; ++i) {
        types = "void (*)(" + types + ")";
    }
    std::string code;
    EXPECT_FALSE(appendTypeCodes(types, code));
}

} // namespace
