// SPDX-License-Identifier: MIT
#include "tests/widget/zem/ViewerFixture.h"

#include "zem/Source/SrcViewer.h"

#include "tests/support/FailingNew.h"
#include "tests/unit/zem/Lines/SourceRecord.h"
#include "zem/Status/ZEMStsBar.h"

#include <Xm/Xm.h>

#include <unistd.h>

namespace {

constexpr int Frame = 2;  // pixels of the canvas's frame
constexpr int Column = 6; // of the font "Fixed"
constexpr int Row = 18;

// Keeps what it is told to show.
class RecordingStatusBar : public ZEMStsBar
{
public:
    RecordingStatusBar() : ZEMStsBar("statusBar") {}
    std::string _shown;

protected:
    void showMessage(const char* text) override { _shown = text; }
};

} // namespace

class SrcViewerTest : public ViewerFixture
{
protected:
    using ViewerFixture::display;

    void SetUp() override
    {
        ViewerFixture::SetUp();
        ASSERT_EQ(chdir(_files.path().c_str()), 0);
        show(_viewer);
        _black = color("Black");
        _red = color("Red3");
    }
    void TearDown() override
    {
        theStatusBar = nullptr;
        ViewerFixture::TearDown();
    }

    void display(const std::string& source, const std::vector<SourceBlock>& blocks = {},
                 int line = 1)
    {
        _files.write("a.c", source);
        SourceRecord record("a.c");
        record.addFunction(blocks);
        _viewer.display(&record.file(), _info, line);
        settle();
    }

    SrcViewer _viewer{"srcViewer"};
    RptInfo _info;
    Pixel _black = 0;
    Pixel _red = 0;
};

TEST_F(SrcViewerTest, StartsWithHundredColumnsAndFourRowsAndNoText)
{
    EXPECT_EQ(_viewer.view()._dx, 100);
    EXPECT_EQ(_viewer.view()._dy, 4);
    EXPECT_EQ(_viewer.columnPixels(), Column);
    EXPECT_EQ(_viewer.rowPixels(), Row);
    EXPECT_EQ(count(_viewer, 0, 0, 100 * Column, 4 * Row, _black), 0);
    EXPECT_STREQ(_viewer.className(), "SrcViewer");
}

TEST_F(SrcViewerTest, HeaderNamesTheColumnsAndTheFile)
{
    display("x\n");
    EXPECT_EQ(text(_viewer, 0, 0, 8, _black), " Line # ");
    EXPECT_EQ(text(_viewer, 0, 11, 4, _black), "Hits");
    EXPECT_EQ(text(_viewer, 0, 17, 4, _black), "a.c ");
}

TEST_F(SrcViewerTest, HeaderShowsControlCharactersOfTheNameVisibly)
{
    const char name[] = "a\n\x1b[2Jb\xff.c";
    _files.write(name, "x\n");
    SourceRecord record(name);
    _viewer.display(&record.file(), _info, 1);
    settle();
    EXPECT_EQ(text(_viewer, 0, 17, 21, _black), "a\\x0a\\x1b[2Jb\\xff.c  ");
    EXPECT_EQ(text(_viewer, 1, 17, 2, _black), "x ");
}

TEST_F(SrcViewerTest, HeaderIsUnderlinedAndColumnsAreSeparated)
{
    display("x\ny\nz\n");
    Pixel dark = 0;
    Pixel light = 0;
    XtVaGetValues(_viewer.baseWidget(), XmNbottomShadowColor, &dark, XmNtopShadowColor, &light,
                  nullptr);
    EXPECT_EQ(count(_viewer, Frame, Frame + Row - 1, 40 * Column, 1, dark), 40 * Column - 2);
    EXPECT_EQ(count(_viewer, Frame, Frame + Row - 2, 40 * Column, 1, light), 40 * Column - 2);
    for (const int column : {8, 15}) {
        const int x = Frame + column * Column;
        EXPECT_EQ(count(_viewer, x + 3, Frame, 1, 3 * Row, dark), 3 * Row) << column;
        EXPECT_EQ(count(_viewer, x + 2, Frame + Row, 1, 2 * Row, light), 2 * Row) << column;
    }
}

TEST_F(SrcViewerTest, LinesHaveNumberMarksAndText)
{
    display("one\ntwo\n", {{2, 2, 3}, {2, 2, 0}});
    EXPECT_EQ(text(_viewer, 1, 0, 8, _black), "      1 ");
    EXPECT_EQ(text(_viewer, 1, 17, 4, _black), "one ");
    EXPECT_EQ(text(_viewer, 2, 0, 8, _black), "      2 ");
    EXPECT_EQ(text(_viewer, 2, 9, 5, _black), " .!  ");
    EXPECT_EQ(text(_viewer, 2, 17, 4, _black), "two ");
    EXPECT_EQ(text(_viewer, 2, 0, 40, _red), std::string(40, ' '));
}

TEST_F(SrcViewerTest, CountsTakeThePlaceOfMarks)
{
    _info._showHitCounts = 1;
    display("one\ntwo\n", {{2, 2, 3}, {2, 2, 0}});
    // The two counts and their separators are six wide.
    EXPECT_EQ(text(_viewer, 2, 9, 6, _black), " 3/0  ");
    EXPECT_EQ(text(_viewer, 2, 19, 4, _black), "two ");
}

TEST_F(SrcViewerTest, UntestedLinesAreRedWithTheirPrefix)
{
    display("one\ntwo\nthree\n", {{1, 2, 0}, {3, 3, 1}});
    EXPECT_EQ(text(_viewer, 1, 0, 8, _red), "      1 ");
    EXPECT_EQ(text(_viewer, 1, 9, 3, _red), " ! ");
    EXPECT_EQ(text(_viewer, 1, 17, 3, _red), "one");
    EXPECT_EQ(text(_viewer, 2, 9, 3, _red), " . ");
    EXPECT_EQ(text(_viewer, 2, 17, 3, _red), "two");
    EXPECT_EQ(text(_viewer, 3, 0, 40, _red), std::string(40, ' '));
    EXPECT_EQ(text(_viewer, 3, 17, 5, _black), "three");
}

TEST_F(SrcViewerTest, WholePictureIsKeptForPeopleToLookAt)
{
    display("int sign(int n)\n{\n\tif (n < 0) { return -1; }\n\treturn n > 0;\n}\n",
            {{1, 2, 7}, {3, 3, 7}, {3, 3, 0}, {4, 4, 0}});
    saveScreenshot(display(), XtWindow(_viewer.baseWidget()), "source-viewer");
}

TEST_F(SrcViewerTest, ScrollingSidewaysMovesTheTextAlone)
{
    display("0123456789" + std::string(200, 'x') + "\n");
    _viewer.viewPosition(4, 0);
    _viewer.render();
    settle();
    EXPECT_EQ(text(_viewer, 0, 17, 4, _black), "a.c ");
    EXPECT_EQ(text(_viewer, 1, 0, 8, _black), "      1 ");
    EXPECT_EQ(text(_viewer, 1, 17, 6, _black), "456789");
}

TEST_F(SrcViewerTest, ScrollingPastALineShowsItsNumberAlone)
{
    display("short\n" + std::string(200, 'x') + "\n");
    _viewer.viewPosition(50, 0);
    _viewer.render();
    settle();
    EXPECT_EQ(text(_viewer, 1, 0, 8, _black), "      1 ");
    EXPECT_EQ(text(_viewer, 1, 17, 10, _black), std::string(10, ' '));
    EXPECT_EQ(text(_viewer, 2, 17, 3, _black), "xxx");
}

TEST_F(SrcViewerTest, TabsAreExpandedInTheText)
{
    display("\tx\nabc\ty\n");
    EXPECT_EQ(text(_viewer, 1, 17, 9, _black), "        x");
    EXPECT_EQ(text(_viewer, 2, 17, 9, _black), "abc     y");
}

TEST_F(SrcViewerTest, LineIsShownAtTheTop)
{
    std::string source;
    for (int i = 1; i <= 30; ++i) {
        source += "line" + std::to_string(i) + "\n";
    }
    display(source, {}, 12);
    EXPECT_EQ(_viewer.view()._y, 11);
    EXPECT_EQ(text(_viewer, 1, 17, 6, _black), "line12");
    EXPECT_EQ(_viewer.canvasHeight(), 31);
    EXPECT_EQ(_viewer.canvasWidth(), 4 + 7 + 8);
}

TEST_F(SrcViewerTest, LineBelowOneChangesNothing)
{
    display("old\n");
    display("new\n", {}, 0);
    display("new\n", {}, -1);
    _viewer.display(nullptr, _info, 1);
    const ZEMFileRecord nameless;
    _viewer.display(&nameless, _info, 1);
    EXPECT_EQ(text(_viewer, 1, 17, 3, _black), "old");
}

TEST_F(SrcViewerTest, FileThatCannotBeOpenedIsNamedAndLeavesTheOldOne)
{
    RecordingStatusBar bar;
    CellWindow barWindow(bar);
    barWindow.open();
    XLowerWindow(display(), XtWindow(barWindow.baseWidget()));
    theStatusBar = &bar;
    std::string source;
    for (int i = 0; i < 30; ++i) {
        source += "old\n";
    }
    display(source, {}, 5);
    const SourceRecord missing("no such file.c");
    _viewer.display(&missing.file(), _info, 1);
    settle();
    EXPECT_EQ(bar._shown, "Could not open no such file.c!");
    EXPECT_EQ(_viewer.view()._y, 4);
    EXPECT_EQ(text(_viewer, 1, 17, 3, _black), "old");
    EXPECT_EQ(text(_viewer, 0, 17, 4, _black), "a.c ");
}

TEST_F(SrcViewerTest, FileThatIsTooLargeSaysSo)
{
    RecordingStatusBar bar;
    CellWindow barWindow(bar);
    barWindow.open();
    theStatusBar = &bar;
    const TempDir dir;
    const std::string large = dir.write("large.c", "");
    ASSERT_EQ(truncate(large.c_str(), 0x7fffffff), 0);
    const SourceRecord record(large.c_str());
    _viewer.display(&record.file(), _info, 1);
    settle();
    EXPECT_EQ(bar._shown, "Could not open " + large + "! Too large.");
}

TEST_F(SrcViewerTest, WithoutMemoryItKeepsWhatItShowedAndSaysSo)
{
    RecordingStatusBar bar;
    CellWindow barWindow(bar);
    barWindow.open();
    XLowerWindow(display(), XtWindow(barWindow.baseWidget()));
    display("old\n");
    theStatusBar = &bar;
    _files.write("b.c", "new\n");
    SourceRecord record("b.c");
    record.addFunction({{1, 1, 4}, {1, 1, 0}});
    long n = 1;
    while (FailingNew::run(n, FailingNew::FromThen,
                           [&] { _viewer.display(&record.file(), _info, 1); })) {
        settle();
        EXPECT_TRUE(bar._shown == "Out of memory!" || bar._shown == "Could not open b.c!") << n;
        bar._shown.clear();
        EXPECT_EQ(text(_viewer, 1, 17, 3, _black), "old") << n;
        ++n;
    }
    EXPECT_GT(n, 3);
    settle();
    EXPECT_EQ(text(_viewer, 1, 17, 3, _black), "new");
}

TEST_F(SrcViewerTest, FileThatCannotBeOpenedNeedsNoStatusBar)
{
    const SourceRecord missing("no such file.c");
    _viewer.display(&missing.file(), _info, 1);
    settle();
    EXPECT_EQ(count(_viewer, 0, 0, 100 * Column, 4 * Row, _black), 0);
}

TEST_F(SrcViewerTest, EmptyFileShowsItsOneLine)
{
    display("");
    EXPECT_EQ(text(_viewer, 0, 0, 8, _black), " Line # ");
    EXPECT_EQ(_viewer.canvasHeight(), 1);
}

TEST_F(SrcViewerTest, LongLinesAndZerosAreShown)
{
    std::string source(8 * 1024 * 1024, 'm');
    source += "\n" + std::string("a\0b", 3) + std::string(100000, '\0') + "\n";
    display(source, {{1, 2, 0}});
    EXPECT_EQ(text(_viewer, 1, 17, 5, _red), "mmmmm");
    EXPECT_EQ(text(_viewer, 2, 17, 1, _red), "a");
    EXPECT_EQ(text(_viewer, 2, 19, 1, _red), "b");
    _viewer.viewPosition(8 * 1024 * 1024 - 90, 0);
    _viewer.render();
    settle();
    EXPECT_EQ(text(_viewer, 1, 17, 5, _red), "mmmmm");
}

TEST_F(SrcViewerTest, BytesAbove127AreDrawnAsTheFontHasThem)
{
    display("caf\xe9\n");
    EXPECT_EQ(text(_viewer, 1, 17, 4, _black), "caf\xe9");
}

TEST_F(SrcViewerTest, FileThatShrinksWhileShownIsDrawnSafely)
{
    std::string source;
    for (int i = 0; i < 2000; ++i) {
        source += "a line of the file\n";
    }
    display(source, {{1, 1, 0}});
    ASSERT_EQ(truncate("a.c", 30), 0);
    _viewer.viewPosition(0, 1900);
    _viewer.render();
    settle();
    EXPECT_EQ(text(_viewer, 1, 0, 8, _black), "   1901 ");
    EXPECT_EQ(text(_viewer, 1, 17, 6, _black), "      ");
}

TEST_F(SrcViewerTest, ManyBlocksOnALineAreClippedToTheView)
{
    display("one\n", std::vector<SourceBlock>(100000, SourceBlock{1, 1, 0}));
    EXPECT_EQ(text(_viewer, 1, 9, 6, _red), " !!!!!");
    EXPECT_EQ(text(_viewer, 1, 90, 5, _red), "!!!!!");
}

TEST_F(SrcViewerTest, HiddenAndShownAgainKeepsItsText)
{
    display("old\n");
    _viewer.unmanage();
    settle();
    _viewer.manage();
    settle();
    EXPECT_EQ(text(_viewer, 1, 17, 3, _black), "old");
}
