#include "tests/support/gtest_x.h"

#include "qip/Monitors/qipButton.h"
#include "qip/Monitors/qipButton_X.h"
#include "qip/Monitors/qipTButton_X.h"
#include "tests/support/CellWindow.h"
#include "tests/support/WidgetTree.h"
#include "tests/support/XInput.h"
#include "tests/support/XtFixture.h"

#include <Xm/Form.h>
#include <Xm/PushB.h>
#include <Xm/Xm.h>

#include <string>

namespace {

const char* const square_xpm[] = {"4 4 2 1", ". c Black", "  s background c None", "....", ".  .",
                                  ".  .",    "...."};
const char* const broken_xpm[] = {"1 1 1 1", ". c NoSuchColour", "."};

class CountingButton : public qipButton
{
public:
    void triggered() override { ++nTriggered; }
    int nTriggered = 0;
};

class qipButtonTest : public XtFixture
{
protected:
    void open(qipVCell& cell)
    {
        _window = std::make_unique<CellWindow>(cell);
        _window->open();
        ASSERT_TRUE(waitFor([this] { return isViewable(_window->baseWidget()); }));
        settle();
    }

    static std::string labelOf(Widget widget)
    {
        XmString string = nullptr;
        XtVaGetValues(widget, XmNlabelString, &string, nullptr);
        char* text = nullptr;
        XmStringGetLtoR(string, const_cast<char*>("FNT_BUTTON_LBL"), &text);
        const std::string result = text == nullptr ? "" : text;
        XtFree(text);
        XmStringFree(string);
        return result;
    }

    static unsigned char labelType(Widget widget)
    {
        unsigned char type = XmSTRING;
        XtVaGetValues(widget, XmNlabelType, &type, nullptr);
        return type;
    }

    CountingButton _sensor;
    std::unique_ptr<CellWindow> _window;
};

TEST_F(qipButtonTest, APressTriggersTheSensor)
{
    qipButton_X engine("press", &_sensor);
    _sensor.engine(&engine);
    engine.setLabel("Press");
    open(engine);
    EXPECT_TRUE(XmIsPushButton(engine.baseWidget()));
    EXPECT_EQ(engine.baseWidget(), engine.clientArea());
    EXPECT_STREQ(XtName(engine.baseWidget()), "press");
    EXPECT_EQ(labelOf(engine.baseWidget()), "Press");
    XInput::click(display(), XtWindow(engine.baseWidget()), 5, 5);
    EXPECT_TRUE(waitFor([this] { return _sensor.nTriggered == 1; }));
}

TEST_F(qipButtonTest, APictureTakesTheLabelsPlace)
{
    qipButton_X engine("picture", &_sensor);
    engine.setLabel("Not shown");
    engine.setImage(square_xpm, square_xpm);
    open(engine);
    EXPECT_EQ(labelType(engine.baseWidget()), XmPIXMAP);
    Pixmap normal = XmUNSPECIFIED_PIXMAP;
    Pixmap insensitive = XmUNSPECIFIED_PIXMAP;
    XtVaGetValues(engine.baseWidget(), XmNlabelPixmap, &normal, XmNlabelInsensitivePixmap,
                  &insensitive, nullptr);
    EXPECT_NE(normal, static_cast<Pixmap>(XmUNSPECIFIED_PIXMAP));
    EXPECT_NE(insensitive, static_cast<Pixmap>(XmUNSPECIFIED_PIXMAP));
    EXPECT_NE(normal, insensitive);
}

TEST_F(qipButtonTest, WithoutAPixmapTheWidgetsOwnTextShows)
{
    qipTButton_X engine("picture", &_sensor);
    engine.setImage(broken_xpm, broken_xpm);
    open(engine);
    EXPECT_EQ(labelType(findWidget(engine.baseWidget(), "_button")), XmSTRING);
}

TEST_F(qipButtonTest, ActivateAndDeactivateSetTheSensitivity)
{
    qipButton_X engine("press", &_sensor);
    _sensor.engine(&engine);
    open(engine);
    EXPECT_EQ(_sensor.deactivate(), 0);
    EXPECT_FALSE(XtIsSensitive(engine.baseWidget()));
    EXPECT_EQ(_sensor.activate(), 0);
    EXPECT_TRUE(XtIsSensitive(engine.baseWidget()));
}

TEST_F(qipButtonTest, AStateBeforeTheWidgetIsNotLost)
{
    qipButton_X engine("press", &_sensor);
    _sensor.engine(&engine);
    EXPECT_EQ(_sensor.deactivate(), -1);
    open(engine);
    EXPECT_FALSE(XtIsSensitive(engine.baseWidget()));
}

TEST_F(qipButtonTest, AnInsensitiveButtonDoesNotTrigger)
{
    qipButton_X engine("press", &_sensor);
    _sensor.engine(&engine);
    open(engine);
    _sensor.deactivate();
    XInput::click(display(), XtWindow(engine.baseWidget()), 5, 5);
    settle();
    EXPECT_EQ(_sensor.nTriggered, 0);
}

TEST_F(qipButtonTest, NullLabelsAndImagesAreIgnored)
{
    qipButton_X engine("press", &_sensor);
    engine.setLabel("Kept");
    engine.setLabel(nullptr);
    engine.setImage(nullptr, nullptr);
    EXPECT_STREQ(engine.label(), "Kept");
    EXPECT_FALSE(engine.hasImage());
}

TEST_F(qipButtonTest, ALabelMayBeItsOwnText)
{
    qipButton_X engine("press", &_sensor);
    engine.setLabel("Press here");
    engine.setLabel(engine.label());
    EXPECT_STREQ(engine.label(), "Press here");
    engine.setLabel(engine.label() + 6);
    EXPECT_STREQ(engine.label(), "here");
}

TEST_F(qipButtonTest, AToolButtonWithoutATextHidesItsLabel)
{
    qipTButton_X engine("tool", &_sensor);
    engine.setImage(square_xpm, square_xpm);
    open(engine);
    EXPECT_TRUE(XmIsForm(engine.baseWidget()));
    Widget label = findWidget(engine.baseWidget(), "_label");
    EXPECT_FALSE(XtIsManaged(label));
    engine.updateLabel("Now");
    EXPECT_TRUE(XtIsManaged(label));
    EXPECT_EQ(labelOf(label), "Now");
}

TEST_F(qipButtonTest, ADeletedEngineLeavesItsWidgetHarmless)
{
    auto engine = std::make_unique<qipButton_X>("press", &_sensor);
    open(*engine);
    Widget button = engine->baseWidget();
    engine.reset();
    XInput::click(display(), XtWindow(button), 5, 5);
    settle();
    EXPECT_EQ(_sensor.nTriggered, 0);
}

TEST_F(qipButtonTest, AButtonWithoutAnEngineCannotBeSwitched)
{
    EXPECT_DEATH(_sensor.activate(), "_engine != 0");
    EXPECT_DEATH(_sensor.deactivate(), "_engine != 0");
}

} // namespace
