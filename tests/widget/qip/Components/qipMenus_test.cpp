#include "tests/support/gtest_x.h"

#include "qip/Base/qipWindow.h"
#include "qip/Components/qipCommand.h"
#include "qip/Components/qipHelpMenuPane.h"
#include "qip/Components/qipMenuBar.h"
#include "qip/Components/qipMenuPane.h"
#include "qip/Components/qipTCmdBtn.h"
#include "qip/Monitors/qipTButton_X.h"
#include "tests/support/WidgetTree.h"
#include "tests/support/XInput.h"
#include "tests/support/XtFixture.h"

#include <X11/keysym.h>
#include <Xm/Form.h>
#include <Xm/Xm.h>

namespace {

class CountingCommand : public qipCommand
{
public:
    explicit CountingCommand(int disabled = 0) : qipCommand("count", disabled) {}
    int doit() override { return ++nDone, 0; }
    int nDone = 0;
};

// A window with a menu bar of two panes.
class MenuWindow : public qipWindow
{
public:
    MenuWindow()
        : qipWindow("menus"), open("openBtn", &openCommand, "Open"),
          save("saveBtn", &saveCommand, "Save"), about("aboutBtn", &aboutCommand, "About"),
          file("File", 'F', "File"), help("Help", 'H', "Help"), bar("menu")
    {
        file.addButton(&open, 'O');
        file.addButton(nullptr, 'N');
        file.addSeparator();
        file.addButton(&save, 'S');
        help.addButton(&about);
        bar.addPane(&file);
        bar.addPane(&help);
    }

    Widget createWorkArea(Widget parent) override
    {
        _clientArea = _main;
        bar.install(this);
        return XtVaCreateManagedWidget("work", xmFormWidgetClass, parent, XmNwidth, 300, XmNheight,
                                       100, nullptr);
    }

    CountingCommand openCommand;
    CountingCommand saveCommand{1};
    CountingCommand aboutCommand;
    qipTCmdBtn open;
    qipTCmdBtn save;
    qipTCmdBtn about;
    qipMenuPane file;
    qipHelpMenuPane help;
    qipMenuBar bar;
};

class qipMenusTest : public XtFixture
{
protected:
    void SetUp() override
    {
        XtFixture::SetUp();
        if (HasFatalFailure()) {
            return;
        }
        startWindowManager();
        _window = std::make_unique<MenuWindow>();
        _window->initialize();
        _window->manage();
        XtRealizeWidget(appShell());
        ASSERT_TRUE(waitFor([this] { return isViewable(_window->baseWidget()); }));
        settle();
    }

    Widget widget(const char* name) const { return findWidget(_window->baseWidget(), name); }

    void click(Widget widget)
    {
        Dimension width = 0;
        Dimension height = 0;
        XtVaGetValues(widget, XmNwidth, &width, XmNheight, &height, nullptr);
        XInput::click(display(), XtWindow(widget), width / 2, height / 2);
    }

    std::unique_ptr<MenuWindow> _window;
};

TEST_F(qipMenusTest, PanesHoldPushButtonsAndSeparators)
{
    const std::string tree = widgetTree(_window->bar.baseWidget());
    EXPECT_EQ(tree, "menu XmRowColumn\n"
                    "  File XmCascadeButton\n"
                    "  Help XmCascadeButton\n"
                    "  popup_File XmMenuShell\n"
                    "    File XmRowColumn\n"
                    "      openBtn XmPushButton\n"
                    "      Separator XmSeparatorGadget\n"
                    "      saveBtn XmPushButton\n"
                    "    Help XmRowColumn\n"
                    "      aboutBtn XmPushButton\n");
}

TEST_F(qipMenusTest, HelpStandsAtTheHelpPosition)
{
    Widget helpWidget = nullptr;
    XtVaGetValues(_window->bar.baseWidget(), XmNmenuHelpWidget, &helpWidget, nullptr);
    EXPECT_EQ(helpWidget, _window->help.cascadeButton());
    EXPECT_STREQ(XtName(helpWidget), "Help");
}

TEST_F(qipMenusTest, TheMainWindowHasTheMenuBar)
{
    Widget bar = nullptr;
    XtVaGetValues(XtParent(_window->bar.baseWidget()), XmNmenuBar, &bar, nullptr);
    EXPECT_EQ(bar, _window->bar.baseWidget());
}

TEST_F(qipMenusTest, MnemonicsAreSet)
{
    KeySym mnemonic = NoSymbol;
    XtVaGetValues(_window->file.cascadeButton(), XmNmnemonic, &mnemonic, nullptr);
    EXPECT_EQ(mnemonic, static_cast<KeySym>('F'));
    XtVaGetValues(_window->save.baseWidget(), XmNmnemonic, &mnemonic, nullptr);
    EXPECT_EQ(mnemonic, static_cast<KeySym>('S'));
    XtVaGetValues(_window->about.baseWidget(), XmNmnemonic, &mnemonic, nullptr);
    EXPECT_GT(mnemonic, 0xffffu); // no letter
}

TEST_F(qipMenusTest, TheMouseExecutesACommand)
{
    click(_window->file.cascadeButton());
    ASSERT_TRUE(waitFor([this] { return isViewable(_window->open.baseWidget()); }));
    click(_window->open.baseWidget());
    EXPECT_TRUE(waitFor([this] { return _window->openCommand.nDone == 1; }));
}

TEST_F(qipMenusTest, MnemonicsExecuteACommand)
{
    click(widget("work"));
    settle();
    XInput::key(display(), XK_f, XK_Alt_L);
    ASSERT_TRUE(waitFor([this] { return isViewable(_window->open.baseWidget()); }));
    XInput::key(display(), XK_o);
    EXPECT_TRUE(waitFor([this] { return _window->openCommand.nDone == 1; }));
}

TEST_F(qipMenusTest, ADisabledCommandsEntryIsInsensitiveUntilItIsEnabled)
{
    EXPECT_FALSE(XtIsSensitive(_window->save.baseWidget()));
    _window->saveCommand.enable();
    EXPECT_TRUE(XtIsSensitive(_window->save.baseWidget()));
    _window->saveCommand.disable();
    EXPECT_FALSE(XtIsSensitive(_window->save.baseWidget()));
}

TEST_F(qipMenusTest, ADestroyedButtonIsOffItsCommand)
{
    {
        const qipTCmdBtn button("extra", &_window->openCommand, "Extra");
        EXPECT_EQ(_window->openCommand.removeServer(const_cast<qipButton*>(button.sensor())), 0);
        _window->openCommand.registerServer(const_cast<qipButton*>(button.sensor()));
    }
    // Nothing is left to be told.
    _window->openCommand.disable();
    _window->openCommand.enable();
}

TEST_F(qipMenusTest, CellsForgetDestroyedWidgets)
{
    XtDestroyWidget(_window->baseWidget());
    settle();
    EXPECT_EQ(_window->bar.baseWidget(), nullptr);
    EXPECT_EQ(_window->file.baseWidget(), nullptr);
    EXPECT_EQ(_window->open.baseWidget(), nullptr);
    EXPECT_EQ(_window->open.deactivate(), -1);
}

TEST_F(qipMenusTest, APanesLabelIsACopyAndMayBeItsOwnText)
{
    qipMenuPane pane("pane", 'P', "A label");
    pane.setLabel(pane.label());
    EXPECT_STREQ(pane.label(), "A label");
    pane.setLabel(pane.label() + 2);
    EXPECT_STREQ(pane.label(), "label");
    pane.setLabel(nullptr);
    EXPECT_EQ(pane.label(), nullptr);
}

TEST_F(qipMenusTest, APaneShowsItsLabelNotItsName)
{
    qipMenuPane pane("pane", 'l', "A label");
    pane.install(&_window->bar);
    EXPECT_EQ(labelText(pane.cascadeButton()), "A label");
    EXPECT_STREQ(XtName(pane.cascadeButton()), "pane");
}

TEST_F(qipMenusTest, ClassNames)
{
    EXPECT_STREQ(_window->bar.className(), "qipMenuBar");
    EXPECT_STREQ(_window->file.className(), "qipMenuPane");
    EXPECT_STREQ(_window->help.className(), "qipHelpMenuPane");
}

} // namespace
