#include "tests/support/gtest_x.h"

#include "qip/Base/qipVCell.h"
#include "qip/Drawing/qipIcon.h"
#include "tests/support/Pixels.h"
#include "tests/support/XtFixture.h"

#include <Xm/Label.h>
#include <Xm/Xm.h>

namespace {

constexpr Pixel Red = 0xff0000;
constexpr Pixel Blue = 0x0000ff;
constexpr Pixel Canvas = 0x00ff00; // what an icon is drawn on
constexpr Pixel LabelBackground = 0x112233;

// 4 x 3 pixels.
const char* const Plain[] = {"4 3 2 1", "r c #ff0000", "b c #0000ff", "rbrb", "rrrr", "bbbb"};
const char* const Transparent[] = {"4 3 2 1", "r c #ff0000", "  c None", "r r ", " rr ", "    "};
const char* const Symbolic[] = {"4 3 2 1", "r c #ff0000", "w s background c #ffffff",
                                "wrwr",    "rrrr",        "wwww"};
const char* const SymbolicNone[] = {"4 3 2 1", "r c #ff0000", "w s background c None",
                                    "wrwr",    "rrrr",        "wwww"};
const char* const UnknownColor[] = {"4 3 1 1", "r c no-such-colour", "rrrr", "rrrr", "rrrr"};

class Cell : public qipVCell
{
public:
    Cell() : qipVCell("cell") {}
    void base(Widget widget) { _base = widget; }
};

class qipIconTest : public XtFixture
{
protected:
    void SetUp() override
    {
        XtFixture::SetUp();
        if (!HasFatalFailure()) {
            cell.base(XtVaCreateWidget("label", xmLabelWidgetClass, appShell(), XmNbackground,
                                       LabelBackground, nullptr));
            const int screen = DefaultScreen(display());
            drawable = XCreatePixmap(display(), DefaultRootWindow(display()), 40, 40,
                                     static_cast<unsigned>(DefaultDepth(display(), screen)));
            GC gc = XCreateGC(display(), drawable, 0, nullptr);
            XSetForeground(display(), gc, Canvas);
            XFillRectangle(display(), drawable, gc, 0, 0, 40, 40);
            XFreeGC(display(), gc);
        }
    }

    Cell cell;
    Pixmap drawable = 0;
};

TEST_F(qipIconTest, HasNoPixmapBeforeItIsInstalled)
{
    qipIcon icon(Plain);
    EXPECT_EQ(icon.image(), Pixmap(None));
    EXPECT_EQ(icon.mask(), Pixmap(None));
    icon.render(drawable, 0, 0);
    EXPECT_EQ(Pixels(display(), drawable).count(0, 0, 40, 40, Canvas), 1600);
}

TEST_F(qipIconTest, CellWithoutAWidgetMakesNoPixmap)
{
    qipIcon icon(Plain);
    Cell empty;
    icon.install(&empty);
    EXPECT_EQ(icon.image(), Pixmap(None));
    icon.render(drawable, 0, 0);
    EXPECT_EQ(Pixels(display(), drawable).count(0, 0, 40, 40, Canvas), 1600);
}

TEST_F(qipIconTest, InstallMakesThePixmapOfThePicturesSize)
{
    qipIcon icon(Plain);
    icon.install(&cell);
    ASSERT_NE(icon.image(), Pixmap(None));
    EXPECT_EQ(icon.mask(), Pixmap(None));
    EXPECT_EQ(icon.width(), 4u);
    EXPECT_EQ(icon.height(), 3u);
    const Pixels picture(display(), icon.image());
    EXPECT_EQ(picture.width(), 4);
    EXPECT_EQ(picture.height(), 3);
    EXPECT_EQ(picture.at(0, 0), Red);
    EXPECT_EQ(picture.at(3, 0), Blue);
    EXPECT_EQ(picture.at(3, 2), Blue);
}

TEST_F(qipIconTest, DrawsWithoutLastColumnAndRow)
{
    std::vector<std::string> lines = {"32 32 1 1", "r c #ff0000"};
    lines.resize(34, std::string(32, 'r'));
    std::vector<const char*> data;
    for (const std::string& line : lines) {
        data.push_back(line.c_str());
    }
    qipIcon icon(data.data());
    icon.install(&cell);
    icon.render(drawable, 5, 7);
    const Pixels picture(display(), drawable);
    EXPECT_EQ(picture.count(0, 0, 40, 40, Red), 31 * 31);
    EXPECT_EQ(picture.count(5, 7, 31, 31, Red), 31 * 31);
}

TEST_F(qipIconTest, TransparentPixelsLeaveWhatIsThere)
{
    qipIcon icon(Transparent);
    icon.install(&cell);
    ASSERT_NE(icon.mask(), Pixmap(None));
    icon.render(drawable, 10, 20);
    const Pixels picture(display(), drawable);
    EXPECT_EQ(picture.at(10, 20), Red);
    EXPECT_EQ(picture.at(11, 20), Canvas);
    EXPECT_EQ(picture.at(12, 20), Red);
    EXPECT_EQ(picture.at(10, 21), Canvas);
    EXPECT_EQ(picture.at(11, 21), Red);
    EXPECT_EQ(picture.count(0, 0, 40, 40, Red), 4);
}

// The context is shared: an icon with a mask must not leave it there.
TEST_F(qipIconTest, MaskOfOneIconDoesNotClipTheNext)
{
    qipIcon first(Transparent);
    first.install(&cell);
    first.render(drawable, 0, 0);
    qipIcon second(Plain);
    second.install(&cell);
    second.render(drawable, 20, 20);
    EXPECT_EQ(Pixels(display(), drawable).count(20, 20, 3, 2, Canvas), 0);
}

TEST_F(qipIconTest, SymbolicBackgroundIsTheWidgetsOwn)
{
    qipIcon icon(Symbolic);
    icon.install(&cell);
    const Pixels picture(display(), icon.image());
    EXPECT_EQ(picture.at(0, 0), LabelBackground);
    EXPECT_EQ(picture.at(1, 0), Red);
    EXPECT_EQ(picture.at(0, 2), LabelBackground);
}

TEST_F(qipIconTest, TransparentSymbolicBackgroundHasAColourAndNoMask)
{
    qipIcon icon(SymbolicNone);
    icon.install(&cell);
    EXPECT_EQ(icon.mask(), Pixmap(None));
    EXPECT_EQ(Pixels(display(), icon.image()).at(0, 0), LabelBackground);
}

TEST_F(qipIconTest, UnknownColourMakesNoPixmapAndDrawsNothing)
{
    qipIcon icon(UnknownColor);
    icon.install(&cell);
    EXPECT_EQ(icon.image(), Pixmap(None));
    EXPECT_EQ(icon.mask(), Pixmap(None));
    icon.render(drawable, 0, 0);
    EXPECT_EQ(Pixels(display(), drawable).count(0, 0, 40, 40, Canvas), 1600);
}

TEST_F(qipIconTest, InstalledAgainItHasOneFreshPixmap)
{
    qipIcon icon(Plain);
    icon.install(&cell);
    icon.install(&cell);
    ASSERT_NE(icon.image(), Pixmap(None));
    EXPECT_EQ(Pixels(display(), icon.image()).at(0, 0), Red);
}

TEST_F(qipIconTest, MayOutliveItsWidget)
{
    auto icon = std::make_unique<qipIcon>(Plain);
    icon->install(&cell);
    XtDestroyWidget(cell.baseWidget());
    cell.base(nullptr);
    icon->render(drawable, 0, 0);
    EXPECT_EQ(Pixels(display(), drawable).at(0, 0), Red);
    icon.reset();
}

} // namespace
