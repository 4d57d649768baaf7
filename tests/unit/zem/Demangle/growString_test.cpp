#include "zem/Demangle/growString.h"

#include "zem/Demangle/allocate.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

// AddressSanitizer ends a program that asks for too much memory; here that is the question.
extern "C" const char* __asan_default_options()
{
    return "allocator_may_return_null=1";
}

namespace {

std::string text(const Demangle::string& s)
{
    return std::string(s.b, string_length(s));
}

TEST(GrowStringTest, StartsWithoutABuffer)
{
    const Demangle::string s;
    EXPECT_EQ(s.b, nullptr);
    EXPECT_EQ(s.p, nullptr);
    EXPECT_EQ(s.e, nullptr);
    EXPECT_TRUE(string_empty(s));
    EXPECT_EQ(string_length(s), 0u);
}

TEST(GrowStringTest, TheFirstBufferHas32CharactersAndALaterOneTwiceTheNeed)
{
    Demangle::string s;
    string_need(s, 1);
    EXPECT_EQ(s.e - s.b, 32);
    string_append(s, "0123456789");
    string_need(s, 22);
    EXPECT_EQ(s.e - s.b, 32);
    string_need(s, 23);
    EXPECT_EQ(s.e - s.b, 2 * (10 + 23));
    EXPECT_EQ(text(s), "0123456789");
    Demangle::string large;
    string_need(large, 100);
    EXPECT_EQ(large.e - large.b, 100);
}

TEST(GrowStringTest, GrowsAtBothEnds)
{
    Demangle::string s;
    string_append(s, "c");
    string_prepend(s, "b");
    string_prependn(s, "axx", 1);
    string_appendn(s, "dxx", 1);
    Demangle::string more;
    string_append(more, "ef");
    string_appends(s, more);
    EXPECT_EQ(text(s), "abcdef");
    string_prepend(s, std::string(100, '.').c_str());
    EXPECT_EQ(text(s), std::string(100, '.') + "abcdef");
}

TEST(GrowStringTest, ExchangesTexts)
{
    Demangle::string s;
    string_append(s, "text");
    Demangle::string other;
    string_swap(s, other);
    EXPECT_EQ(text(other), "text");
    EXPECT_EQ(s.b, nullptr);
    EXPECT_TRUE(string_empty(s));
}

TEST(GrowStringTest, NothingAppendedTakesNoBuffer)
{
    Demangle::string s;
    string_append(s, "");
    string_prependn(s, nullptr, 0);
    string_appends(s, Demangle::string());
    EXPECT_EQ(s.b, nullptr);
}

TEST(GrowStringTest, IsChoppedClearedAndDeleted)
{
    Demangle::string s;
    string_append(s, "abcdef");
    string_chop(s, 9);
    EXPECT_EQ(text(s), "abcdef");
    string_chop(s, 2);
    EXPECT_EQ(text(s), "ab");
    string_clear(s);
    EXPECT_TRUE(string_empty(s));
    EXPECT_NE(s.b, nullptr);
    string_delete(s);
    EXPECT_EQ(s.b, nullptr);
}

TEST(AllocateDeathTest, WithoutMemoryTheProgramEnds)
{
    constexpr size_t TooMuch = SIZE_MAX / 2;
    EXPECT_EXIT(Demangle::dmalloc(TooMuch), testing::ExitedWithCode(1),
                "Unable to allocate memory.");
    EXPECT_EXIT(Demangle::drealloc(nullptr, TooMuch), testing::ExitedWithCode(1),
                "Unable to allocate memory.");
}

} // namespace
