#include "qip/Support/qipCString.h"

#include <gtest/gtest.h>

extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() // NOLINT(bugprone-reserved-identifier)
{
    return "allocator_may_return_null=1";
}

namespace {

TEST(qipCStringTest, IsNullAtFirst)
{
    const qipCString text;
    EXPECT_EQ(text.get(), nullptr);
    EXPECT_TRUE(text == nullptr);
}

TEST(qipCStringTest, KeepsACopy)
{
    char word[] = "word";
    qipCString text;
    EXPECT_TRUE(text.set(word));
    word[0] = 'x';
    EXPECT_STREQ(text, "word");
    EXPECT_TRUE(text.set(""));
    EXPECT_STREQ(text, "");
}

TEST(qipCStringTest, NullMakesItNull)
{
    qipCString text;
    text.set("word");
    EXPECT_TRUE(text.set(nullptr));
    EXPECT_EQ(text.get(), nullptr);
}

TEST(qipCStringTest, TakesItsOwnTextAndAPartOfIt)
{
    qipCString text;
    text.set("a rather long text, which a small block would not hold");
    EXPECT_TRUE(text.set(text));
    EXPECT_STREQ(text, "a rather long text, which a small block would not hold");
    EXPECT_TRUE(text.set(text.get() + 14));
    EXPECT_STREQ(text, "text, which a small block would not hold");
}

TEST(qipCStringTest, ACopyIsACopy)
{
    qipCString text;
    text.set("word");
    qipCString copy(text);
    EXPECT_STREQ(copy, "word");
    EXPECT_NE(copy.get(), text.get());
    text.set("other");
    copy = text;
    EXPECT_STREQ(copy, "other");
    EXPECT_NE(copy.get(), text.get());
    const qipCString& same = copy;
    const char* const before = copy;
    copy = same;
    EXPECT_EQ(copy.get(), before);
    copy = qipCString();
    EXPECT_EQ(copy.get(), nullptr);
}

TEST(qipCStringTest, ReplacesAPlainPointer)
{
    char* field = nullptr;
    EXPECT_TRUE(qipCString::replace(field, "name"));
    EXPECT_STREQ(field, "name");
    EXPECT_TRUE(qipCString::replace(field, field + 1, 2));
    EXPECT_STREQ(field, "am");
    EXPECT_TRUE(qipCString::replace(field, nullptr));
    EXPECT_EQ(field, nullptr);
}

// No such block is to be had. Where AddressSanitizer would end the program it is asked not to.
TEST(qipCStringTest, WithoutMemoryTheTextIsNull)
{
    char* field = nullptr;
    ASSERT_TRUE(qipCString::replace(field, "name"));
    EXPECT_FALSE(qipCString::replace(field, "name", static_cast<size_t>(-2) / 2));
    EXPECT_EQ(field, nullptr);
}

} // namespace
