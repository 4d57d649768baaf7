#include "tests/support/gtest_x.h"

#include "qip/Components/qipToolBar.h"

#include "qip/Base/qipWindow.h"
#include "qip/Components/qipCommand.h"
#include "qip/Components/qipSeparator.h"
#include "qip/Components/qipTCmdBtn.h"
#include "qip/Components/qipToolGroup.h"
#include "tests/support/WidgetTree.h"
#include "tests/support/XInput.h"
#include "tests/support/XtFixture.h"

#include <Xm/Form.h>
#include <Xm/Frame.h>
#include <Xm/RowColumn.h>
#include <Xm/Xm.h>

namespace {

class CountingCommand : public qipCommand
{
public:
    CountingCommand() : qipCommand("count") {}
    int doit() override { return ++nDone, 0; }
    int nDone = 0;
};

// Four groups of two buttons each; A and B left, C and D right.
class ToolWindow : public qipWindow
{
public:
    ToolWindow() : qipWindow("tools"), bar("toolbar")
    {
        for (int i = 0; i < 4; ++i) {
            const std::string name(1, static_cast<char>('A' + i));
            group[i] = std::make_unique<qipToolGroup>(name.c_str());
            for (int k = 0; k < 2; ++k) {
                const std::string button = name + std::to_string(k);
                buttons[i][k] =
                    std::make_unique<qipTCmdBtn>(button.c_str(), &command, button.c_str());
                group[i]->addTool(buttons[i][k].get());
            }
            group[i]->addTool(nullptr);
        }
    }

    Widget createWorkArea(Widget parent) override
    {
        _clientArea =
            XtVaCreateManagedWidget("work", xmFormWidgetClass, parent, XmNwidth, 600, nullptr);
        Widget work = _clientArea;
        bar.install(this);
        XtVaSetValues(bar.baseWidget(), XmNtopAttachment, XmATTACH_FORM, nullptr);
        bar.addGroup(group[0].get());
        bar.addGroup(nullptr);
        bar.addGroup(group[1].get());
        bar.addHelpGroup(group[2].get());
        bar.addHelpGroup(nullptr);
        bar.addHelpGroup(group[3].get());
        return work;
    }

    CountingCommand command;
    std::unique_ptr<qipTCmdBtn> buttons[4][2];
    std::unique_ptr<qipToolGroup> group[4];
    qipToolBar bar;
};

class qipToolBarTest : public XtFixture
{
protected:
    void SetUp() override
    {
        XtFixture::SetUp();
        if (HasFatalFailure()) {
            return;
        }
        _window = std::make_unique<ToolWindow>();
        _window->initialize();
        _window->manage();
        XtRealizeWidget(appShell());
        ASSERT_TRUE(waitFor([this] { return isViewable(_window->baseWidget()); }));
        settle();
    }

    static int left(qipVCell& cell)
    {
        Position x = 0;
        XtVaGetValues(cell.baseWidget(), XmNx, &x, nullptr);
        return x;
    }
    static int right(qipVCell& cell)
    {
        Dimension width = 0;
        XtVaGetValues(cell.baseWidget(), XmNwidth, &width, nullptr);
        return left(cell) + width;
    }
    qipToolGroup& group(int i) { return *_window->group[i]; }

    std::unique_ptr<ToolWindow> _window;
};

TEST_F(qipToolBarTest, NormalGroupsStandFromTheLeftInOrder)
{
    EXPECT_EQ(left(group(0)), 0);
    EXPECT_EQ(left(group(1)), right(group(0)));
}

TEST_F(qipToolBarTest, HelpGroupsStandFromTheRightTheFirstOutermost)
{
    EXPECT_EQ(right(group(2)), right(_window->bar));
    EXPECT_EQ(right(group(3)), left(group(2)));
    EXPECT_GT(left(group(3)), right(group(1)));
}

TEST_F(qipToolBarTest, AGroupIsAFrameWithARowOfButtons)
{
    EXPECT_TRUE(XmIsFrame(group(0).baseWidget()));
    EXPECT_TRUE(XmIsRowColumn(group(0).clientArea()));
    EXPECT_STREQ(XtName(group(0).clientArea()), "A_work");
    EXPECT_LT(left(*_window->buttons[0][0]), left(*_window->buttons[0][1]));
    Position y0 = 0;
    Position y1 = 1;
    XtVaGetValues(_window->buttons[0][0]->baseWidget(), XmNy, &y0, nullptr);
    XtVaGetValues(_window->buttons[0][1]->baseWidget(), XmNy, &y1, nullptr);
    EXPECT_EQ(y0, y1);
}

TEST_F(qipToolBarTest, AButtonHasItsPictureAboveItsLabel)
{
    Widget base = _window->buttons[0][0]->baseWidget();
    EXPECT_TRUE(XmIsForm(base));
    Widget button = findWidget(base, "_button");
    Widget label = findWidget(base, "_label");
    Position buttonY = 0;
    Position labelY = 0;
    XtVaGetValues(button, XmNy, &buttonY, nullptr);
    XtVaGetValues(label, XmNy, &labelY, nullptr);
    EXPECT_LT(buttonY, labelY);
    EXPECT_TRUE(XtIsManaged(label));
}

TEST_F(qipToolBarTest, APressExecutesTheCommand)
{
    Widget button = findWidget(_window->buttons[1][0]->baseWidget(), "_button");
    XInput::click(display(), XtWindow(button), 4, 4);
    EXPECT_TRUE(waitFor([this] { return _window->command.nDone == 1; }));
}

TEST_F(qipToolBarTest, AGroupAddedTwiceIsInstalledOnceAndListedTwice)
{
    Widget before = group(1).baseWidget();
    _window->bar.addGroup(&group(1));
    EXPECT_EQ(group(1).baseWidget(), before);
    // One entry goes, the other keeps the group's place.
    _window->bar.removeGroup(&group(1));
    _window->bar.removeGroup(&group(1));
    _window->bar.removeGroup(&group(1));
}

TEST_F(qipToolBarTest, TheNeighbourTakesARemovedGroupsPlace)
{
    _window->bar.removeGroup(&group(0));
    unsigned char kind = XmATTACH_NONE;
    XtVaGetValues(group(1).baseWidget(), XmNleftAttachment, &kind, nullptr);
    EXPECT_EQ(kind, XmATTACH_FORM);
    _window->bar.removeHelpGroup(&group(2));
    XtVaGetValues(group(3).baseWidget(), XmNrightAttachment, &kind, nullptr);
    EXPECT_EQ(kind, XmATTACH_FORM);
}

TEST_F(qipToolBarTest, ButtonsThatComeAfterInstallAreNotShown)
{
    qipTCmdBtn late("late", &_window->command, "Late");
    group(0).addTool(&late);
    EXPECT_EQ(late.baseWidget(), nullptr);
}

TEST_F(qipToolBarTest, DisabledCommandsButtonsAreInsensitive)
{
    _window->command.disable();
    for (auto& pair : _window->buttons) {
        EXPECT_FALSE(XtIsSensitive(pair[0]->baseWidget()));
    }
    _window->command.enable();
    EXPECT_TRUE(XtIsSensitive(_window->buttons[3][1]->baseWidget()));
}

TEST_F(qipToolBarTest, ClassNames)
{
    EXPECT_STREQ(_window->bar.className(), "qipToolBar");
    EXPECT_STREQ(group(0).className(), "qipToolGroup");
    EXPECT_STREQ(_window->buttons[0][0]->className(), "qipTCmdBtn");
    EXPECT_STREQ(qipSeparator("s").className(), "qipSeparator");
}

} // namespace
