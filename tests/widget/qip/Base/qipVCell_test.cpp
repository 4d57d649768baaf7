#include "tests/support/gtest_x.h"

#include "qip/Base/qipVCell.h"
#include "qip/Base/qipWindow.h"
#include "tests/support/XtFixture.h"

#include <Xm/Form.h>
#include <Xm/Label.h>
#include <Xm/Xm.h>

namespace {

// A label; says what happened to it.
class Cell : public qipVCell
{
public:
    explicit Cell(const char* name) : qipVCell(name) {}

    void install(qipVCell* parent) override
    {
        _base = XtCreateWidget(_name, xmLabelWidgetClass, parent->clientArea(), nullptr, 0);
        _clientArea = _base;
    }
    void destroyed() override
    {
        ++timesDestroyed;
        qipVCell::destroyed();
    }
    void helpRequested() const override { ++timesHelped; }

    int timesDestroyed = 0;
    mutable int timesHelped = 0;
};

// A window to put cells in.
class FormWindow : public qipWindow
{
public:
    FormWindow() : qipWindow("window") {}

    Widget createWorkArea(Widget parent) override
    {
        _clientArea = XtCreateManagedWidget("form", xmFormWidgetClass, parent, nullptr, 0);
        return _clientArea;
    }
};

class qipVCellTest : public XtFixture
{
protected:
    void SetUp() override
    {
        XtFixture::SetUp();
        if (!HasFatalFailure()) {
            _window = std::make_unique<FormWindow>();
            _window->initialize();
            window = _window.get();
        }
    }

    qipWindow* window = nullptr;

private:
    std::unique_ptr<FormWindow> _window;
};

using qipVCellDeathTest = qipVCellTest;

TEST_F(qipVCellTest, KeepsACopyOfItsName)
{
    char name[] = "cell";
    const qipVCell cell(name);
    name[0] = 'x';
    EXPECT_STREQ(cell.name(), "cell");
    EXPECT_EQ(cell.baseWidget(), nullptr);
    EXPECT_EQ(cell.clientArea(), nullptr);
    EXPECT_STREQ(cell.className(), "qipVCell");
}

TEST_F(qipVCellTest, TakesAnotherNameAndItsOwnText)
{
    qipVCell cell("first");
    cell.name("second and longer");
    EXPECT_STREQ(cell.name(), "second and longer");
    cell.name(cell.name());
    EXPECT_STREQ(cell.name(), "second and longer");
    cell.name(cell.name() + 7);
    EXPECT_STREQ(cell.name(), "and longer");
}

TEST_F(qipVCellDeathTest, NullNameIsABug)
{
    EXPECT_DEATH(qipVCell cell(nullptr), "qip/Base/qipVCell.cpp:.*Assertion `name != 0' failed");
    qipVCell cell("cell");
    EXPECT_DEATH(cell.name(nullptr), "qipVCell.cpp:.*Assertion `name != 0' failed");
}

TEST_F(qipVCellTest, CopyHasItsOwnNameAndSharesTheWidgets)
{
    Cell cell("cell");
    cell.install(window);
    qipVCell copy(cell);
    EXPECT_STREQ(copy.name(), "cell");
    EXPECT_NE(copy.name(), cell.name());
    EXPECT_EQ(copy.baseWidget(), cell.baseWidget());
    EXPECT_EQ(copy.clientArea(), cell.clientArea());

    qipVCell other("other");
    other = cell;
    EXPECT_STREQ(other.name(), "cell");
    EXPECT_NE(other.name(), cell.name());
    EXPECT_EQ(other.baseWidget(), cell.baseWidget());
}

TEST_F(qipVCellTest, AssignmentToItselfDoesNothing)
{
    qipVCell cell("cell");
    const qipVCell& same = cell;
    const char* const before = cell.name();
    cell = same;
    EXPECT_EQ(cell.name(), before);
    EXPECT_STREQ(cell.name(), "cell");
}

TEST_F(qipVCellTest, CopyOfANamelessCellIsNameless)
{
    qipVCell gone("gone");
    gone.destroyed();
    const qipVCell copy(gone);
    EXPECT_EQ(copy.name(), nullptr);
    qipVCell other("other");
    other = gone;
    EXPECT_EQ(other.name(), nullptr);
}

TEST_F(qipVCellTest, BaseOperationsDoNothing)
{
    qipVCell cell("cell");
    cell.install(window);
    cell.helpRequested();
    cell.setDefaultResources(nullptr, nullptr);
    cell.getResources(nullptr, 0);
    EXPECT_EQ(cell.baseWidget(), nullptr);
}

TEST_F(qipVCellTest, ManageAndUnmanageTheBaseWidget)
{
    Cell cell("cell");
    cell.install(window);
    cell.installDestroyHandler();
    cell.manage();
    EXPECT_TRUE(XtIsManaged(cell.baseWidget()));
    cell.unmanage();
    EXPECT_FALSE(XtIsManaged(cell.baseWidget()));
}

TEST_F(qipVCellDeathTest, OperationsWithoutAWidgetAreBugs)
{
    qipVCell cell("cell");
    EXPECT_DEATH(cell.manage(), "qipVCell.cpp:.*Assertion `_base != \\(Widget\\) 0' failed");
    EXPECT_DEATH(cell.unmanage(), "qipVCell.cpp:.*Assertion `_base != \\(Widget\\) 0' failed");
    EXPECT_DEATH(cell.installDestroyHandler(), "qipVCell.cpp:.*Assertion `_base != 0' failed");
    EXPECT_DEATH(cell.installHelpHandler(), "qipVCell.cpp:.*Assertion `_base != 0' failed");
}

TEST_F(qipVCellDeathTest, ManagingWithoutADestroyHandlerIsABug)
{
    Cell cell("cell");
    cell.install(window);
    EXPECT_DEATH(cell.manage(), "qipVCell.cpp:.*Assertion `XtHasCallbacks\\( _base, "
                                "XmNdestroyCallback \\) == XtCallbackHasSome' failed");
}

TEST_F(qipVCellTest, ForgetsADestroyedWidgetAndItsName)
{
    Cell cell("cell");
    cell.install(window);
    cell.installDestroyHandler();
    XtDestroyWidget(cell.baseWidget());
    EXPECT_EQ(cell.timesDestroyed, 1);
    EXPECT_EQ(cell.baseWidget(), nullptr);
    EXPECT_EQ(cell.clientArea(), nullptr);
    EXPECT_EQ(cell.name(), nullptr);
    cell.name("again");
    EXPECT_STREQ(cell.name(), "again");
}

TEST_F(qipVCellTest, HelpKeyReachesTheCell)
{
    Cell cell("cell");
    cell.install(window);
    cell.installHelpHandler();
    XtCallCallbacks(cell.baseWidget(), XmNhelpCallback, nullptr);
    EXPECT_EQ(cell.timesHelped, 1);
}

TEST_F(qipVCellTest, ShellTakesNoHelpHandlerAndNoWarningComes)
{
    window->installHelpHandler();
    EXPECT_EQ(XtHasCallbacks(window->baseWidget(), XmNhelpCallback), XtCallbackNoList);
}

TEST_F(qipVCellTest, DeletedCellIsNotCalledAndItsWidgetLivesOn)
{
    auto* cell = new Cell("cell");
    cell->install(window);
    cell->installDestroyHandler();
    cell->installHelpHandler();
    Widget widget = cell->baseWidget();
    delete cell;
    EXPECT_EQ(XtHasCallbacks(widget, XmNdestroyCallback), XtCallbackHasNone);
    EXPECT_EQ(XtHasCallbacks(widget, XmNhelpCallback), XtCallbackHasNone);
    XtDestroyWidget(widget);
}

TEST_F(qipVCellTest, DeletingAfterTheWidgetIsGoneRemovesNothing)
{
    auto* cell = new Cell("cell");
    cell->install(window);
    cell->installDestroyHandler();
    XtDestroyWidget(cell->baseWidget());
    EXPECT_EQ(cell->baseWidget(), nullptr);
    delete cell;
}

} // namespace
