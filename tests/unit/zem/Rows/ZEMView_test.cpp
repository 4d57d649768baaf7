#include "zem/Rows/ZEMClassView.h"
#include "zem/Rows/ZEMDirectoryView.h"
#include "zem/Rows/ZEMFileView.h"
#include "zem/Rows/ZEMFuncView.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

// The base with the least that makes it a class of its own.
class PlainView : public ZEMView
{
public:
    void setLabel() override {}
};

TEST(ZEMViewTest, StartsEmpty)
{
    const PlainView view;
    EXPECT_EQ(view._label, nullptr);
    EXPECT_EQ(view._owner, nullptr);
    EXPECT_EQ(view.hits(), 0);
    EXPECT_EQ(view.blocks(), 0);
    EXPECT_EQ(view.coverage(), 0);
}

TEST(ZEMViewTest, NamesOfTheBaseAreEmptyAndNotNull)
{
    const PlainView view;
    EXPECT_STREQ(view.directory(), "");
    EXPECT_STREQ(view.filename(), "");
    EXPECT_STREQ(view.funcname(), "");
    EXPECT_STREQ(view.classname(), "");
}

TEST(ZEMViewTest, AnswersItsCounts)
{
    PlainView view;
    view._hits = 12;
    view._totBlk = 5;
    EXPECT_EQ(view.hits(), 12);
    EXPECT_EQ(view.blocks(), 5);
}

int coverageOf(int covered, int total)
{
    PlainView view;
    view._covBlk = covered;
    view._totBlk = total;
    return view.coverage();
}

TEST(ZEMViewTest, CoverageIsTruncated)
{
    EXPECT_EQ(coverageOf(1, 3), 33);
    EXPECT_EQ(coverageOf(2, 3), 66);
    EXPECT_EQ(coverageOf(3, 3), 100);
    EXPECT_EQ(coverageOf(29, 100), 29);
    EXPECT_EQ(coverageOf(-1, 3), -33);
}

TEST(ZEMViewTest, CoverageWithoutBlocksIsZero)
{
    EXPECT_EQ(coverageOf(0, 0), 0);
    EXPECT_EQ(coverageOf(-5, 0), 0);
}

TEST(ZEMViewTest, CoverageOfHugeCountsDoesNotOverflow)
{
    EXPECT_EQ(coverageOf(INT_MAX, INT_MAX), 100);
    EXPECT_EQ(coverageOf(21474837, 42949674), 50);
    EXPECT_EQ(coverageOf(INT_MIN, 1), INT_MIN);
}

TEST(ZEMViewTest, SetNameKeepsACopyAndIgnoresNull)
{
    char value[] = "abc";
    char* field = nullptr;
    ZEMView::setName(field, value);
    value[0] = 'x';
    EXPECT_STREQ(field, "abc");
    ZEMView::setName(field, nullptr);
    EXPECT_STREQ(field, "abc");
    ZEMView::setName(field, "");
    EXPECT_STREQ(field, "");
    delete[] field;
}

TEST(ZEMViewTest, SetNameTakesAPartOfTheOldString)
{
    char* field = nullptr;
    ZEMView::setName(field, "abc");
    ZEMView::setName(field, field + 1);
    EXPECT_STREQ(field, "bc");
    delete[] field;
}

TEST(ZEMDirectoryViewTest, LabelIsTheDirectoryItself)
{
    ZEMDirectoryView view;
    EXPECT_STREQ(view.directory(), "");
    view.directory("src");
    view.setLabel();
    EXPECT_STREQ(view.directory(), "src");
    EXPECT_EQ(view._label, view._directory);
    EXPECT_STREQ(view.filename(), "");
}

TEST(ZEMDirectoryViewTest, LabelFollowsANewName)
{
    ZEMDirectoryView view;
    view.directory("src");
    view.setLabel();
    view.directory("another and longer directory");
    EXPECT_STREQ(view._label, "another and longer directory");
}

TEST(ZEMDirectoryViewTest, NullNameIsIgnored)
{
    ZEMDirectoryView view;
    view.directory("src");
    view.setLabel();
    view.directory(nullptr);
    EXPECT_STREQ(view._label, "src");
}

struct PathCase
{
    const char* name;
    const char* path;
    const char* directory;
    const char* filename;
    const char* label;
};

void PrintTo(const PathCase& row, std::ostream* out)
{
    *out << row.path;
}

class ZEMFileViewPathTest : public ::testing::TestWithParam<PathCase>
{};

TEST_P(ZEMFileViewPathTest, SplitsAndLabels)
{
    ZEMFileView view;
    view.filename(GetParam().path);
    view.setLabel();
    EXPECT_STREQ(view.directory(), GetParam().directory);
    EXPECT_STREQ(view.filename(), GetParam().filename);
    EXPECT_STREQ(view._label, GetParam().label);
    EXPECT_STREQ(view.funcname(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Paths, ZEMFileViewPathTest,
    ::testing::Values(PathCase{"Bare", "main.c", "", "main.c", "/main.c"},
                      PathCase{"OneDirectory", "src/main.c", "src", "main.c", "src/main.c"},
                      PathCase{"Root", "/main.c", "", "main.c", "/main.c"},
                      PathCase{"Deep", "/a/b/c.cpp", "/a/b", "c.cpp", "/a/b/c.cpp"},
                      PathCase{"EndsInASlash", "src/", "src", "", "src/"},
                      PathCase{"Empty", "", "", "", "/"}, PathCase{"Slash", "/", "", "", "/"}),
    [](const auto& info) { return info.param.name; });

TEST(ZEMFileViewTest, LabelOfABareNameBeginsWithASlash)
{
    ZEMFileView view;
    view.filename("main.c");
    view.setLabel();
    EXPECT_STREQ(view._label, "/main.c");
}

TEST(ZEMFileViewTest, LabelWithoutNamesIsEmpty)
{
    ZEMFileView view;
    view.setLabel();
    EXPECT_STREQ(view._label, "");
}

TEST(ZEMFileViewTest, LabelOfADirectoryAloneHasNoSlash)
{
    ZEMFileView view;
    view.directory("src");
    view.setLabel();
    EXPECT_STREQ(view._label, "src");
}

TEST(ZEMFileViewTest, LabelIsABufferOfItsOwn)
{
    ZEMFileView view;
    view.filename("src/main.c");
    view.setLabel();
    view.filename("lib/other.c");
    EXPECT_STREQ(view._label, "src/main.c");
    view.setLabel();
    EXPECT_STREQ(view._label, "lib/other.c");
}

TEST(ZEMFileViewTest, NullPathIsAProgrammingError)
{
    ZEMFileView view;
    EXPECT_DEATH(view.filename(nullptr), "path != 0");
}

TEST(ZEMFuncViewTest, LabelIsTheFunctionNameItself)
{
    ZEMFuncView view;
    EXPECT_STREQ(view.funcname(), "");
    view.filename("src/main.c");
    view.funcname("main");
    view.setLabel();
    EXPECT_EQ(view._label, view._funcname);
    EXPECT_STREQ(view.funcname(), "main");
    EXPECT_STREQ(view.directory(), "src");
    EXPECT_STREQ(view.filename(), "main.c");
    EXPECT_STREQ(view.classname(), "");
}

TEST(ZEMFuncViewTest, LabelFollowsANewName)
{
    ZEMFuncView view;
    view.funcname("main");
    view.setLabel();
    view.funcname("another and longer function");
    EXPECT_STREQ(view._label, "another and longer function");
}

TEST(ZEMClassViewTest, LabelIsTheClassNameItself)
{
    ZEMClassView view;
    EXPECT_STREQ(view.classname(), "");
    view.classname("Foo");
    view.setLabel();
    EXPECT_EQ(view._label, view._classname);
    EXPECT_STREQ(view.classname(), "Foo");
    EXPECT_STREQ(view.directory(), "");
    view.classname("another and longer class");
    EXPECT_STREQ(view._label, "another and longer class");
}

TEST(ZEMClassViewTest, HidesFileAndFunctionName)
{
    ZEMClassView view;
    view.filename("src/main.c");
    EXPECT_STREQ(view.filename(), "");
    EXPECT_STREQ(view.funcname(), "");
    EXPECT_STREQ(view.directory(), "src");
}

} // namespace
