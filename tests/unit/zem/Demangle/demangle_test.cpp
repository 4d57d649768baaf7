#include "zem/Demangle/demangle.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

// The readable name, or "(none)".
std::string readable(const std::string& encoded, int mode)
{
    char* text = demangle_name(encoded.c_str(), mode);
    const std::string result = text == nullptr ? "(none)" : text;
    std::free(text);
    return result;
}

std::string repeated(const std::string& text, int count)
{
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

struct Name
{
    const char* encoded;
    const char* name;       // mode -1; null when there is no readable name at any mode
    const char* parameters; // mode 0
    const char* qualifiers; // mode 1
};

const Name names[] = {
    {"main", nullptr, nullptr, nullptr},
    {"__ct__7RptAreaFPCc", "RptArea::RptArea", "RptArea::RptArea(char *)",
     "RptArea::RptArea(const char *)"},
    {"__dt__9ZEMWindowFv", "ZEMWindow::~ZEMWindow", "ZEMWindow::~ZEMWindow()",
     "ZEMWindow::~ZEMWindow()"},
    {"__7RptAreaFPc", "RptArea::RptArea", "RptArea::RptArea(char *)", "RptArea::RptArea(char *)"},
    {"remove__24List__pt__12_P9qipWindowFCP9qipWindow", "List__pt__12_P9qipWindow::remove",
     "List__pt__12_P9qipWindow::remove(qipWindow *)",
     "List__pt__12_P9qipWindow::remove(qipWindow *const)"},
    {"hits__C7ZEMViewFv", "ZEMView::hits", "ZEMView::hits() const", "ZEMView::hits() const"},
    {"f__C3FooFPCc", "Foo::f", "Foo::f(char *) const", "Foo::f(const char *) const"},
    {"main__Fv", "main", "main()", "main()"},
    {"printf__FPCce", "printf", "printf(char *, ...)", "printf(const char *, ...)"},
    {"f__Fe", "f", "f(...)", "f(...)"},
    {"f__3FooFie", "Foo::f", "Foo::f(int, ...)", "Foo::f(int, ...)"},
    {"__pl__3FooFRC3Foo", "Foo::operator +", "Foo::operator +(Foo &)",
     "Foo::operator +(const Foo &)"},
    {"__aml__FR3Foodd", "operator *=", "operator *=(Foo &, double, double)",
     "operator *=(Foo &, double, double)"},
    {"__ls__FR7ostreamRC5dLink", "operator <<", "operator <<(ostream &, dLink &)",
     "operator <<(ostream &, const dLink &)"},
    {"__cl__3FooFv", "Foo::operator ()", "Foo::operator ()()", "Foo::operator ()()"},
    {"__nw__3FooFUl", "Foo::operator new", "Foo::operator new(unsigned long)",
     "Foo::operator new(unsigned long)"},
    {"__vc__t4List1ZiFi", "List<int>::operator []", "List<int>::operator [](int)",
     "List<int>::operator [](int)"},
    {"__mr__3FooFv", "Foo::operator ->*", "Foo::operator ->*()", "Foo::operator ->*()"},
    {"__opPCc__C3FooFv", "Foo::operator char *", "Foo::operator char *() const",
     "Foo::operator const char *() const"},
    {"__opUl__3FooFv", "Foo::operator unsigned long", "Foo::operator unsigned long()",
     "Foo::operator unsigned long()"},
    {"__op24List__pt__12_P9qipWindow__3FooFv", nullptr, nullptr, nullptr},
    {"__zz__3FooFv", nullptr, nullptr, nullptr},
    {"__plx__3FooFi", nullptr, nullptr, nullptr},
    {"append__t4List1Z3FooFP3Foo", "List<Foo>::append", "List<Foo>::append(Foo *)",
     "List<Foo>::append(Foo *)"},
    {"__ct__t4List1ZiFv", "List<int>::List", "List<int>::List()", "List<int>::List()"},
    {"__dt__t4List1ZiFv", "List<int>::~List", "List<int>::~List()", "List<int>::~List()"},
    {"__t4List1ZiFi", "List<int>::List", "List<int>::List(int)", "List<int>::List(int)"},
    {"put__t3Map2ZiZ3FooFi3Foo", "Map<int, Foo>::put", "Map<int, Foo>::put(int, Foo)",
     "Map<int, Foo>::put(int, Foo)"},
    {"get__t5Array2Zii10Fv", "Array<int, 10>::get", "Array<int, 10>::get()",
     "Array<int, 10>::get()"},
    {"get__t1A1d-1.5e10Fv", "A<-1.5e10>::get", "A<-1.5e10>::get()", "A<-1.5e10>::get()"},
    {"get__t1A1i?Fv", nullptr, nullptr, nullptr},
    {"first__t4List1ZPCcFv", "List<char *>::first", "List<char *>::first()",
     "List<const char *>::first()"},
    {"f__F3FooT1", "f", "f(Foo, Foo)", "f(Foo, Foo)"},
    {"f__FcT1iT3", "f", "f(char, char, int, int)", "f(char, char, int, int)"},
    {"f__FicN32", "f", "f(int, char, char, char, char)", "f(int, char, char, char, char)"},
    {"f__F3FooN21cT4", "f", "f(Foo, Foo, Foo, char, char)", "f(Foo, Foo, Foo, char, char)"},
    {"f__FPFic_vT1", "f", "f(void (*)(int, char), void (*)(int, char))",
     "f(void (*)(int, char), void (*)(int, char))"},
    {"f__FPFiT1_vcT2", "f", "f(void (*)(int, int), char, char)",
     "f(void (*)(int, int), char, char)"},
    {"f__F3FooPT1", "f", "f(Foo, Foo *)", "f(Foo, Foo *)"},
    {"f__FPcT13Foo", "f", "f(char *, char *, Foo)", "f(char *, char *, Foo)"},
    {"f__FiT2", nullptr, nullptr, nullptr},
    {"f__FT1", nullptr, nullptr, nullptr},
    {"f__F3FooT0", nullptr, nullptr, nullptr},
    {"f__FiN22", nullptr, nullptr, nullptr},
    {"g__FPFi_v", "g", "g(void (*)(int))", "g(void (*)(int))"},
    {"g__FPFPCc_i", "g", "g(int (*)(char *))", "g(int (*)(const char *))"},
    {"signal__FiPFi_v", "signal", "signal(int, void (*)(int))", "signal(int, void (*)(int))"},
    {"g__FPPFi_Pc", "g", "g(char *(**)(int))", "g(char *(**)(int))"},
    {"g__FPFi_PFc_v", "g", "g(void (*(*)(int))(char))", "g(void (*(*)(int))(char))"},
    {"g__FRPc", "g", "g(char *&)", "g(char *&)"},
    {"g__FPCPCc", "g", "g(char **)", "g(const char *const *)"},
    {"g__FVPCVi", "g", "g(int *)", "g(const volatile int *volatile)"},
    {"g__FPCUc", "g", "g(unsigned char *)", "g(const unsigned char *)"},
    {"g__FM3Fooi", "g", "g(int Foo::*)", "g(int Foo::*)"},
    {"g__FM3FooFi_v", "g", "g(void (Foo::*)(int))", "g(void (Foo::*)(int))"},
    {"g__FPM3FooFi_v", "g", "g(void (Foo::**)(int))", "g(void (Foo::**)(int))"},
    {"g__FQ23Foo3Bar", "g", "g(Foo::Bar)", "g(Foo::Bar)"},
    {"g__FQ2_3Foo3Bar", "g", "g(Foo::Bar)", "g(Foo::Bar)"},
    {"g__FQ_10_1a1b1c1d1e1f1g1h1i1j", "g", "g(a::b::c::d::e::f::g::h::i::j)",
     "g(a::b::c::d::e::f::g::h::i::j)"},
    {"g__FMQ_2_1a1bi", "g", "g(int a::b::*)", "g(int a::b::*)"},
    {"g__FPQ23std6stringi", "g", "g(std::string *, int)", "g(std::string *, int)"},
    {"f__Q23Foo3BarFv", nullptr, nullptr, nullptr},
    {"f__Ct4List1ZiFv", nullptr, nullptr, nullptr},
    {"g__FRt4List1Zi", nullptr, nullptr, nullptr},
    {"x__3Foo", "Foo::x", "Foo::x()", "Foo::x()"},
    {"f__0Fv", nullptr, nullptr, nullptr},
    {"f__99RptAreaFi", nullptr, nullptr, nullptr},
    {"f__Fi_c", "f", "f(int)", "f(int)"},
    {"f__Fiv", "f", "f(int)", "f(int)"},
    {"f__F_", "f", "f()", "f()"},
    {"f__F", "f", "f()", "f()"},
    {"my__func__Fv", nullptr, nullptr, nullptr},
    {"foo___3BarFv", nullptr, nullptr, nullptr},
    {"a__b", nullptr, nullptr, nullptr},
    {"Foo::bar__Fi", "Foo::bar", "Foo::bar(int)", "Foo::bar(int)"},
    {"Foo::__ct__3FooFv", "Foo::Foo", "Foo::Foo()", "Foo::Foo()"},
    {"Foo::__pl__Fi", "Foo::operator +", "Foo::operator +(int)", "Foo::operator +(int)"},
    {"or__Fii", "or", "or(int, int)", "or(int, int)"},
    {"ops__3FooFv", "Foo::ops", "Foo::ops()", "Foo::ops()"},
    {"f__FPFi", nullptr, nullptr, nullptr},
    {"f__FUf", nullptr, nullptr, nullptr},
    {"f__Fb", nullptr, nullptr, nullptr},
    {"__ct__Fv", nullptr, nullptr, nullptr},
    {"__ct__3", nullptr, nullptr, nullptr},
    {"std::__1::foo__Fi", nullptr, nullptr, nullptr},
    {"__cxa_throw", nullptr, nullptr, nullptr},
    {"std::__throw_x", nullptr, nullptr, nullptr},
    {"_ZN1a5__FivE", "_ZN1a5", "_ZN1a5(int)", "_ZN1a5(int)"},
    {"f__Fx", "f", "f(long long)", "f(long long)"},
    {"f__Fr", "f", "f(long double)", "f(long double)"},
    {"f__FSc", "f", "f(signed char)", "f(signed char)"},
};

class DemangleTableTest : public ::testing::TestWithParam<Name>
{};

TEST_P(DemangleTableTest, DecodesAtEveryMode)
{
    const Name& row = GetParam();
    const auto expected = [](const char* text) {
        return text == nullptr ? "(none)" : text;
    };
    EXPECT_EQ(readable(row.encoded, -1), expected(row.name)) << row.encoded;
    EXPECT_EQ(readable(row.encoded, 0), expected(row.parameters)) << row.encoded;
    EXPECT_EQ(readable(row.encoded, 1), expected(row.qualifiers)) << row.encoded;
}

INSTANTIATE_TEST_SUITE_P(Names, DemangleTableTest, ::testing::ValuesIn(names));

TEST(DemangleTest, NullAndEmptyHaveNoReadableName)
{
    EXPECT_EQ(demangle_name(nullptr, 0), nullptr);
    EXPECT_EQ(demangle_name("", 0), nullptr);
}

TEST(DemangleTest, ModesOutsideTheRangeAreTheNearest)
{
    EXPECT_EQ(readable("f__FPCc", -7), "f");
    EXPECT_EQ(readable("f__FPCc", 9), "f(const char *)");
}

TEST(DemangleTest, EveryOperatorCodeIsDecoded)
{
    const char* const codes[][2] = {
        {"nw", "new"},  {"dl", "delete"}, {"as", "="},   {"ne", "!="},   {"eq", "=="},
        {"ge", ">="},   {"gt", ">"},      {"le", "<="},  {"lt", "<"},    {"pl", "+"},
        {"apl", "+="},  {"mi", "-"},      {"ami", "-="}, {"ml", "*"},    {"aml", "*="},
        {"md", "%"},    {"amd", "%="},    {"dv", "/"},   {"adv", "/="},  {"aa", "&&"},
        {"oo", "||"},   {"nt", "!"},      {"pp", "++"},  {"mm", "--"},   {"or", "|"},
        {"aor", "|="},  {"er", "^"},      {"aer", "^="}, {"ad", "&"},    {"aad", "&="},
        {"co", "~"},    {"cl", "()"},     {"ls", "<<"},  {"als", "<<="}, {"rs", ">>"},
        {"ars", ">>="}, {"rf", "->"},     {"vc", "[]"},  {"cm", ","},    {"cn", "?:"},
        {"mx", ">?"},   {"mn", "<?"},     {"mr", "->*"}};
    for (const auto& code : codes) {
        EXPECT_EQ(readable(std::string("__") + code[0] + "__3FooFv", -1),
                  std::string("Foo::operator ") + code[1]);
    }
}

TEST(DemangleTest, AFailureLeavesNothingForTheNextName)
{
    EXPECT_EQ(readable("f__F3Foo3BarT9", 0), "(none)");
    EXPECT_EQ(readable("f__FT1", 0), "(none)");
    EXPECT_EQ(readable("f__FiT1", 0), "f(int, int)");
}

TEST(DemangleTest, UnexpectedValueCharacterIsReported)
{
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(readable("get__t1A1i?Fv", 0), "(none)");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Unexpected case in demangle_name: ?\n");
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(readable("get__t1A1i", 0), "(none)");
    EXPECT_EQ(readable("f__Fb", 0), "(none)");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST(DemangleTest, ValuesHaveAtMostOnePoint)
{
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(readable("get__t1A1d1.5.5Fv", -1), "(none)");
    EXPECT_EQ(readable("get__t1A1d1eFv", -1), "(none)");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "Unexpected case in demangle_name: .\nUnexpected case in demangle_name: F\n");
    EXPECT_EQ(readable("get__t1A1d1e-5Fv", -1), "A<1e-5>::get");
}

TEST(DemangleTest, ManyMarksAreDecoded)
{
    EXPECT_EQ(readable("f__F" + repeated("P", 500) + "c", 0), "f(char " + repeated("*", 500) + ")");
    EXPECT_EQ(readable("f__F" + repeated("P", 60000) + "c", 0).size(), 60000u + 8);
}

TEST(DemangleTest, NestedFunctionTypesEndAtTheLimit)
{
    EXPECT_NE(readable("f__F" + repeated("PF", 400) + "i" + repeated("_v", 400), 0), "(none)");
    EXPECT_EQ(readable("f__F" + repeated("PF", 60000) + "i" + repeated("_v", 60000), 0), "(none)");
}

TEST(DemangleTest, NamesThatMultiplyAreRefused)
{
    // Each list repeats its first parameter nine times: the readable name would double and double.
    std::string type = "i";
    for (int level = 0; level < 30; ++level) {
        type = "PF" + type + "N91_v";
    }
    EXPECT_EQ(readable("f__F" + type, 0), "(none)");
}

TEST(DemangleTest, HugeCountsAreRefused)
{
    EXPECT_EQ(readable("f__99999999999999999999999Foo", 0), "(none)");
    EXPECT_EQ(readable("f__FQ9" + repeated("1a", 8), 0), "(none)");
    EXPECT_EQ(readable("f__FQ_12_" + repeated("1a", 11), 0), "(none)");
    EXPECT_EQ(readable("f__FQ_99999999999999999999999_1a", 0), "(none)");
    EXPECT_EQ(readable("f__FQ_0_1a", 0), "(none)");
    EXPECT_EQ(readable("f__FQ__1a", 0), "(none)");
    EXPECT_EQ(readable("f__FQ_21a1b", 0), "(none)");
    EXPECT_EQ(readable("f__t3Foo99999999999999999999Zi", 0), "(none)");
}

TEST(DemangleTest, EveryPrefixOfANameIsSafe)
{
    const std::string whole =
        "NS::__op24List__pt__12_P9qipWindow__t4List2ZPCFPCc_vid-1.5e10FN21M3FooFi_v";
    for (size_t length = 0; length <= whole.size(); ++length) {
        for (int mode = -1; mode <= 1; ++mode) {
            ::testing::internal::CaptureStderr();
            (void)readable(whole.substr(0, length), mode);
            (void)::testing::internal::GetCapturedStderr();
        }
    }
}

} // namespace
