#include "tools/formats/FunctionLabels.h"

#include "zem/Data/ZEMFuncRecord.h"
#include "zem/Rows/NameLevel.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

std::string label(FunctionLabels& labels, const char* name, uint32_t line)
{
    ZEMFuncRecord function(nullptr);
    function._startLine = line;
    function._funcname = new char[std::strlen(name) + 1];
    std::strcpy(function._funcname, name);
    return labels.label(function);
}

TEST(FunctionLabelsTest, WritesNamesAtTheLevel)
{
    FunctionLabels readable(ModifiedNames);
    EXPECT_EQ(label(readable, "List::remove__FPC3Foo", 3), "List::remove(const Foo *)");
    FunctionLabels stored(StoredNames);
    EXPECT_EQ(label(stored, "List::remove__FPC3Foo", 3), "List::remove__FPC3Foo");
}

TEST(FunctionLabelsTest, NoTwoFunctionsOfAFileHaveOneName)
{
    FunctionLabels labels(SimpleNames);
    EXPECT_EQ(label(labels, "f__Fi", 3), "f");
    EXPECT_EQ(label(labels, "f__Fc", 8), "f@8");
    EXPECT_EQ(label(labels, "f__Fl", 8), "f@8.2");
    EXPECT_EQ(label(labels, "f__Fs", 8), "f@8.3");
    EXPECT_EQ(label(labels, "f__Fd", 9), "f@9");
}

TEST(FunctionLabelsTest, NorWithANameThatLooksMade)
{
    FunctionLabels labels(SimpleNames);
    EXPECT_EQ(label(labels, "f", 3), "f");
    EXPECT_EQ(label(labels, "f@3", 3), "f@3");
    EXPECT_EQ(label(labels, "f@3.2", 3), "f@3.2");
    EXPECT_EQ(label(labels, "f", 3), "f@3.3");
}

TEST(FunctionLabelsTest, EachFileBeginsAnew)
{
    FunctionLabels labels(SimpleNames);
    EXPECT_EQ(label(labels, "f", 3), "f");
    labels.clear();
    EXPECT_EQ(label(labels, "f", 3), "f");
}

} // namespace
