// SPDX-License-Identifier: MIT
#include "tests/widget/zem/ViewerFixture.h"

#include "zem/Help/FileViewer.h"

#include "tests/support/WidgetTree.h"

#include <Xm/Xm.h>

class FileViewerTest : public ViewerFixture
{
protected:
    using ViewerFixture::display;

    void SetUp() override
    {
        ViewerFixture::SetUp();
        show(_viewer);
        _black = color("Black");
    }

    void display(const std::string& help, int line = 1)
    {
        _viewer.display(_files.write("t.hlp", help).c_str(), line);
        settle();
    }

    FileViewer _viewer{"fileViewer"};
    Pixel _black = 0;
};

TEST_F(FileViewerTest, StartsWithRoomForHelpTextsAndNoText)
{
    EXPECT_EQ(_viewer.view()._dx, 100);
    EXPECT_EQ(_viewer.view()._dy, 30);
    EXPECT_EQ(count(_viewer, 0, 0, 600, 500, _black), 0);
    EXPECT_STREQ(_viewer.className(), "FileViewer");
}

TEST_F(FileViewerTest, ShowsTheLinesOfTheFile)
{
    display("first line\na\tb\n\nlast");
    EXPECT_EQ(text(_viewer, 0, 0, 11, _black), "first line ");
    EXPECT_EQ(text(_viewer, 1, 0, 10, _black), "a       b ");
    EXPECT_EQ(text(_viewer, 2, 0, 5, _black), "     ");
    EXPECT_EQ(text(_viewer, 3, 0, 5, _black), "last ");
}

TEST_F(FileViewerTest, CanvasIsTheLongestLineTimesTheLines)
{
    display("12345\n1234567890\n");
    EXPECT_EQ(_viewer.canvasWidth(), 11);
    EXPECT_EQ(_viewer.canvasHeight(), 3);
}

TEST_F(FileViewerTest, StartsAtTheLineAskedFor)
{
    std::string help;
    for (int i = 1; i <= 100; ++i) {
        help += "line" + std::to_string(i) + "\n";
    }
    display(help, 41);
    EXPECT_EQ(text(_viewer, 0, 0, 6, _black), "line41");
    display(help);
    EXPECT_EQ(text(_viewer, 0, 0, 6, _black), "line1 ");
}

TEST_F(FileViewerTest, FileThatCannotBeOpenedLeavesItEmpty)
{
    display("old\n");
    _viewer.display(_files.path("missing.hlp").c_str(), 1);
    settle();
    EXPECT_EQ(count(_viewer, 0, 0, 600, 500, _black), 0);
    EXPECT_EQ(_viewer.browser().filename(), nullptr);
    EXPECT_EQ(_viewer.canvasWidth(), 1);
    EXPECT_EQ(_viewer.canvasHeight(), 1);
}

TEST_F(FileViewerTest, HelpTextsFitTheirWidth)
{
    for (const char* topic : {"overview", "toolbar", "reports", "about"}) {
        _viewer.display((std::string(ZEM_SOURCE_DIR "/help/") + topic + ".hlp").c_str(), 1);
        EXPECT_GT(_viewer.canvasHeight(), 10) << topic;
        // The longest line counts its newline, and of a hundredth character the frame hides a part.
        EXPECT_LE(_viewer.canvasWidth(), 100) << topic;
        int value = 0;
        int slider = 0;
        int most = 0;
        XtVaGetValues(findWidget(_viewer.baseWidget(), "fileViewer_hsb"), XmNvalue, &value,
                      XmNsliderSize, &slider, XmNmaximum, &most, nullptr);
        EXPECT_EQ(slider, most) << topic << ": there is something to scroll to";
        settle();
        saveScreenshot(display(), XtWindow(_viewer.baseWidget()), std::string("help-") + topic);
    }
}
