#include "tests/support/gtest_x.h"

#include "qip/Components/qipTCanvas.h"
#include "tests/support/CellWindow.h"
#include "tests/support/XtFixture.h"

#include <Xm/Xm.h>

#include <climits>

namespace {

class TextCanvas : public qipTCanvas
{
public:
    TextCanvas() : qipTCanvas("text")
    {
        _view = qipView(0, 0, 20, 5);
        _canvasWidth = 80;
        _canvasHeight = 100;
    }

    void refresh(Drawable, qipView) override {}

    using qipTCanvas::requireFont;

    const XFontStruct* info() const { return _fontInfo; }
    Font font() const { return _font; }
    int charWidth() const { return _Xpxls; }
    int charHeight() const { return _Ypxls; }
    int baseline() const { return _baseline; }
    Pixel textColor() const { return _textColor; }
    void rowPixels(int pixels) { _vPixels = pixels; }
    using qipTCanvas::rowPixels;
};

using qipTCanvasTest = XtFixture;

TEST_F(qipTCanvasTest, FontGivesTheSizeOfACell)
{
    TextCanvas canvas;
    ASSERT_EQ(canvas.setFont("Fixed"), 0);
    ASSERT_NE(canvas.info(), nullptr);
    EXPECT_EQ(canvas.font(), canvas.info()->fid);
    EXPECT_EQ(canvas.charWidth(), canvas.info()->max_bounds.width);
    EXPECT_EQ(canvas.charHeight(), canvas.info()->ascent + canvas.info()->descent);
    EXPECT_EQ(canvas.baseline(), canvas.info()->ascent);
    EXPECT_EQ(canvas.columnPixels(), canvas.charWidth());
    // 40% more than the characters need, cut to whole pixels.
    EXPECT_EQ(canvas.rowPixels(), 7 * canvas.charHeight() / 5);
    EXPECT_GT(canvas.rowPixels(), canvas.charHeight());
}

TEST_F(qipTCanvasTest, MissingFontsAreRefusedAndChangeNothing)
{
    TextCanvas canvas;
    EXPECT_EQ(canvas.setFont(nullptr), -1);
    EXPECT_EQ(canvas.setFont(""), -1);
    EXPECT_EQ(canvas.setFont("no such font"), -1);
    EXPECT_EQ(canvas.info(), nullptr);
    EXPECT_EQ(canvas.columnPixels(), 0);
    ASSERT_EQ(canvas.setFont("Fixed"), 0);
    const int rowPixels = canvas.rowPixels();
    EXPECT_EQ(canvas.setFont("no such font"), -1);
    EXPECT_EQ(canvas.rowPixels(), rowPixels);
    EXPECT_NE(canvas.info(), nullptr);
}

TEST_F(qipTCanvasTest, AnotherFontReplacesTheFirst)
{
    TextCanvas canvas;
    ASSERT_EQ(canvas.setFont("6x13"), 0);
    EXPECT_EQ(canvas.columnPixels(), 6);
    EXPECT_EQ(canvas.rowPixels(), 18);
    ASSERT_EQ(canvas.setFont("9x15"), 0);
    EXPECT_EQ(canvas.columnPixels(), 9);
    EXPECT_EQ(canvas.rowPixels(), 21);
}

TEST_F(qipTCanvasTest, RequiredFontFallsBackToOneThatIsThere)
{
    TextCanvas canvas;
    canvas.requireFont("no such font");
    EXPECT_NE(canvas.info(), nullptr);
    EXPECT_GT(canvas.columnPixels(), 0);
}

TEST_F(qipTCanvasTest, InstallTakesTheFixedFontWhenNoneIsSet)
{
    TextCanvas canvas;
    CellWindow window(canvas);
    window.open();
    TextCanvas fixed;
    ASSERT_EQ(fixed.setFont("Fixed"), 0);
    EXPECT_EQ(canvas.charWidth(), fixed.charWidth());
    EXPECT_EQ(canvas.rowPixels(), fixed.rowPixels());
    EXPECT_STREQ(canvas.className(), "qipTCanvas");
    Dimension width = 0;
    XtVaGetValues(canvas.clientArea(), XmNwidth, &width, nullptr);
    EXPECT_EQ(width, 20 * canvas.columnPixels());
}

TEST_F(qipTCanvasTest, InstallKeepsFontAndRowHeightThatAreSet)
{
    TextCanvas canvas;
    ASSERT_EQ(canvas.setFont("9x15"), 0);
    canvas.rowPixels(30);
    CellWindow window(canvas);
    window.open();
    EXPECT_EQ(canvas.columnPixels(), 9);
    EXPECT_EQ(canvas.rowPixels(), 30);
}

TEST_F(qipTCanvasTest, TextColourNeedsAWidget)
{
    TextCanvas canvas;
    EXPECT_EQ(canvas.setTextColor("red"), -1);
    CellWindow window(canvas);
    window.open();
    EXPECT_EQ(canvas.setTextColor("red"), 0);
    EXPECT_EQ(canvas.textColor(), Pixel(0xff0000));
    EXPECT_EQ(canvas.setTextColor(nullptr), -1);
    EXPECT_EQ(canvas.textColor(), Pixel(0xff0000));
}

TEST_F(qipTCanvasTest, UnknownTextColourBecomesWhiteWithAWarning)
{
    TextCanvas canvas;
    CellWindow window(canvas);
    window.open();
    expectWarnings();
    EXPECT_EQ(canvas.setTextColor("no such colour"), 0);
    EXPECT_EQ(canvas.textColor(), WhitePixel(display(), DefaultScreen(display())));
    EXPECT_EQ(warnings().size(), 1u);
}

struct Width
{
    const char* name;
    unsigned long n;
    int base;
    int digits;
};

void PrintTo(const Width& width, std::ostream* out)
{
    *out << width.n;
}

class qipTCanvasWidthTest : public ::testing::TestWithParam<Width>
{};

TEST_P(qipTCanvasWidthTest, CountsDigits)
{
    EXPECT_EQ(qipTCanvas::repWidth(GetParam().n, GetParam().base), GetParam().digits);
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, qipTCanvasWidthTest,
    ::testing::Values(Width{"Zero", 0, 10, 1}, Width{"Nine", 9, 10, 1}, Width{"Ten", 10, 10, 2},
                      Width{"NineHundredNinetyNine", 999, 10, 3}, Width{"Thousand", 1000, 10, 4},
                      Width{"LastBit", 1, 2, 1}, Width{"Eight", 8, 2, 4},
                      Width{"Hexadecimal", 0xffff, 16, 4}, Width{"Largest", ULONG_MAX, 10, 20}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
