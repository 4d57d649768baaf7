// SPDX-License-Identifier: MIT
#include "tests/support/gtest_x.h"

#include "zem/Text/drawTextRun.h"

#include "tests/support/Pixels.h"
#include "tests/support/XtFixture.h"

#include <climits>
#include <vector>

namespace {

constexpr unsigned Width = 200;
constexpr unsigned Height = 30;

class DrawTextRunTest : public XtFixture
{
protected:
    void SetUp() override
    {
        XtFixture::SetUp();
        const int depth = DefaultDepth(display(), DefaultScreen(display()));
        _sheet = XCreatePixmap(display(), DefaultRootWindow(display()), Width, Height,
                               static_cast<unsigned>(depth));
        _gc = XCreateGC(display(), _sheet, 0, nullptr);
        _font = XLoadQueryFont(display(), "fixed");
        ASSERT_NE(_font, nullptr);
        XSetFont(display(), _gc, _font->fid);
    }

    void TearDown() override
    {
        XFreeFont(display(), _font);
        XFreeGC(display(), _gc);
        XFreePixmap(display(), _sheet);
        XtFixture::TearDown();
    }

    // How many pixels each column of the sheet has of the run.
    std::vector<int> drawn(const char* text, int len, int first, int columns, int x = 5)
    {
        XSetForeground(display(), _gc, 0);
        XFillRectangle(display(), _sheet, _gc, 0, 0, Width, Height);
        XSetForeground(display(), _gc, 1);
        drawTextRun(display(), _sheet, _gc, x, 20, text, len, first, columns);
        const Pixels picture(display(), _sheet);
        std::vector<int> result;
        for (int column = 0; column < picture.width(); ++column) {
            result.push_back(picture.count(column, 0, 1, picture.height(), 1));
        }
        return result;
    }

    Pixmap _sheet = 0;
    GC _gc = nullptr;
    XFontStruct* _font = nullptr;
};

TEST_F(DrawTextRunTest, TextFromItsFirstCharacterAtMostSoManyColumns)
{
    const std::vector<int> nothing(Width, 0);
    const std::vector<int> bcd = drawn("bcd", 3, 0, 3);
    EXPECT_NE(bcd, nothing);
    EXPECT_EQ(drawn("abcde", 5, 1, 3), bcd);
    EXPECT_EQ(drawn("abcd", 4, 1, INT_MAX), bcd);
    EXPECT_EQ(drawn("bcd", 3, 3, 3), nothing);
    EXPECT_EQ(drawn("bcd", 3, 0, 0), nothing);
    EXPECT_EQ(drawn("bcd", 3, 0, 3, LargestCoordinate + 1), nothing);
    EXPECT_EQ(drawn(nullptr, 3, 0, 3), nothing);
}

// A view that is wider than its canvas starts left of it.
TEST_F(DrawTextRunTest, NothingStandsBeforeTheText)
{
    const char text[] = "abcdef";
    EXPECT_EQ(drawn(text + 3, 3, -2, 5), drawn(text + 3, 3, 0, 5));
    EXPECT_EQ(drawn(text + 3, 3, INT_MIN, 5), drawn(text + 3, 3, 0, 5));
}

} // namespace
