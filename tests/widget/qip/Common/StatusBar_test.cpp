#include "tests/support/gtest_x.h"

#include "qip/Common/StatusBar.h"

#include "tests/support/CellWindow.h"
#include "tests/support/WidgetTree.h"
#include "tests/support/XtFixture.h"

#include <Xm/Xm.h>

#include <string>

namespace {

class StatusBarTest : public XtFixture
{
protected:
    void SetUp() override
    {
        XtFixture::SetUp();
        if (HasFatalFailure()) {
            return;
        }
        _bar = std::make_unique<StatusBar>("bar");
    }

    void open()
    {
        _window = std::make_unique<CellWindow>(*_bar);
        _window->open();
        ASSERT_TRUE(waitFor([this] { return isViewable(_window->baseWidget()); }));
    }

    std::string text() const
    {
        XmString string = nullptr;
        XtVaGetValues(findWidget(_bar->baseWidget(), "messageArea"), XmNlabelString, &string,
                      nullptr);
        char* text = nullptr;
        XmStringGetLtoR(string, const_cast<char*>("FNT_STATUSBAR_MSG"), &text);
        const std::string result = text == nullptr ? "" : text;
        XtFree(text);
        XmStringFree(string);
        return result;
    }

    std::unique_ptr<StatusBar> _bar;
    std::unique_ptr<CellWindow> _window;
};

TEST_F(StatusBarTest, FormWithOneLabel)
{
    open();
    EXPECT_EQ(widgetTree(_bar->baseWidget()),
              "statusbar_work XmForm\n"
              "  messageArea XmLabel top=form bottom=none left=form right=none\n");
    EXPECT_EQ(_bar->clientArea(), _bar->baseWidget());
}

TEST_F(StatusBarTest, InstallShowsThePermanentMessage)
{
    _bar->setPermanent("Ready");
    open();
    EXPECT_EQ(text(), "Ready");
}

TEST_F(StatusBarTest, WithoutAPermanentMessageItIsEmpty)
{
    open();
    EXPECT_EQ(text(), "");
}

TEST_F(StatusBarTest, ThePermanentMessageShowsAtTheNextRefresh)
{
    open();
    _bar->setPermanent("Later");
    EXPECT_EQ(text(), "");
    _bar->refresh();
    EXPECT_EQ(text(), "Later");
    _bar->setPermanent(nullptr);
    _bar->refresh();
    EXPECT_EQ(text(), "Later");
}

TEST_F(StatusBarTest, AMessageGoesAfterThreeSeconds)
{
    open();
    _bar->setPermanent("Ready");
    EXPECT_EQ(StatusBar::MessageTime, 3000u);
    _bar->displayMessage("Hello");
    EXPECT_EQ(text(), "Hello");
    EXPECT_TRUE(waitFor([this] { return text() == "Ready"; }));
}

TEST_F(StatusBarTest, BeforeInstallNothingHappens)
{
    _bar->refresh();
    _bar->displayMessage("nobody sees it");
    _bar->setPermanent("kept");
    EXPECT_STREQ(_bar->permanent(), "kept");
    _bar->setPermanent(_bar->permanent());
    EXPECT_STREQ(_bar->permanent(), "kept");
}

TEST_F(StatusBarTest, AMessageDoesNotOutliveItsLabel)
{
    open();
    _bar->displayMessage("Hello");
    XtDestroyWidget(_window->baseWidget());
    settle();
    _bar->refresh();
    _bar->displayMessage("again");
    EXPECT_EQ(_bar->baseWidget(), nullptr);
}

} // namespace
