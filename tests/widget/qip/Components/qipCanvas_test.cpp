#include "tests/support/gtest_x.h"

#include "qip/Components/qipCanvas.h"
#include "qip/Components/qipScrollBar.h"
#include "tests/support/CellWindow.h"
#include "tests/support/Pixels.h"
#include "tests/support/WidgetTree.h"
#include "tests/support/XInput.h"
#include "tests/support/XtFixture.h"

#include <X11/keysym.h>
#include <Xm/DrawingA.h>
#include <Xm/Xm.h>

#include <vector>

namespace {

constexpr int ColumnPixels = 10;
constexpr int RowPixels = 20;
constexpr int Frame = 2;
constexpr Pixel Ink = 0x123456;   // the first cell
constexpr Pixel Paper = 0xabcdef; // all others

struct Refreshed
{
    Drawable drawable;
    int x;
    int y;
    int dx;
    int dy;
    unsigned width; // pixels
    unsigned height;
};

// Colours the first cell that it is asked for, and the rest otherwise.
class Canvas : public qipCanvas
{
public:
    Canvas(int columns, int rows, int width, int height) : qipCanvas("canvas")
    {
        _hPixels = ColumnPixels;
        _vPixels = RowPixels;
        _view = qipView(0, 0, columns, rows);
        _canvasWidth = width;
        _canvasHeight = height;
    }

    void refresh(Drawable drawable, qipView view) override
    {
        Display* display = XtDisplay(_clientArea);
        Window root = 0;
        int x = 0;
        int y = 0;
        unsigned border = 0;
        unsigned depth = 0;
        Refreshed call = {drawable, view._x, view._y, view._dx, view._dy, 0, 0};
        XGetGeometry(display, drawable, &root, &x, &y, &call.width, &call.height, &border, &depth);
        calls.push_back(call);
        isFilled = isFilled &&
                   Pixels(display, drawable)
                           .count(0, 0, static_cast<int>(call.width), static_cast<int>(call.height),
                                  _bg) == static_cast<int>(call.width * call.height);
        XSetForeground(display, _gc, Paper);
        XFillRectangle(display, drawable, _gc, 0, 0, call.width, call.height);
        XSetForeground(display, _gc, Ink);
        XFillRectangle(display, drawable, _gc, 0, 0, ColumnPixels, RowPixels);
    }

    void center() { _centerWhenOversize = 1; }
    Pixel background() const { return _bg; }
    Pixel light() const { return _topShadow; }
    Pixel dark() const { return _botShadow; }
    Pixmap picture() const { return _currentView; }

    std::vector<Refreshed> calls;
    bool isFilled = true; // with the background, before each call
};

class qipCanvasTest : public XtFixture
{
protected:
    void open(Canvas& canvas)
    {
        _window = std::make_unique<CellWindow>(canvas);
        _window->open();
        ASSERT_TRUE(waitFor([&] { return isViewable(canvas.clientArea()); }));
        settle();
        ASSERT_FALSE(canvas.calls.empty());
    }

    // Gives the drawing area so many pixels, by resizing the whole window.
    void resizeArea(Canvas& canvas, int width, int height)
    {
        Dimension areaWidth = 0;
        Dimension areaHeight = 0;
        Dimension windowWidth = 0;
        Dimension windowHeight = 0;
        XtVaGetValues(canvas.clientArea(), XmNwidth, &areaWidth, XmNheight, &areaHeight, nullptr);
        XtVaGetValues(_window->baseWidget(), XmNwidth, &windowWidth, XmNheight, &windowHeight,
                      nullptr);
        XtVaSetValues(_window->baseWidget(), XmNwidth, windowWidth + width - areaWidth, XmNheight,
                      windowHeight + height - areaHeight, nullptr);
        ASSERT_TRUE(waitFor([&] {
            XtVaGetValues(canvas.clientArea(), XmNwidth, &areaWidth, XmNheight, &areaHeight,
                          nullptr);
            return areaWidth == width && areaHeight == height;
        }));
        settle();
    }

    void expose(Canvas& canvas, int more)
    {
        XEvent event = {};
        event.xexpose.type = Expose;
        event.xexpose.window = XtWindow(canvas.clientArea());
        event.xexpose.count = more;
        XmDrawingAreaCallbackStruct call = {XmCR_EXPOSE, &event, event.xexpose.window};
        XtCallCallbacks(canvas.clientArea(), XmNexposeCallback, &call);
    }

    // What was drawn: a raised frame around the area, and inside it Ink from (x, y) on.
    void expectFrame(Canvas& canvas)
    {
        const Pixels picture(display(), XtWindow(canvas.clientArea()));
        const int w = picture.width();
        const int h = picture.height();
        const auto expected = [&](int x, int y) {
            const bool dark =
                x == w - 1 || y == h - 1 || (x == w - 2 && y >= 1) || (y == h - 2 && x >= 1);
            return dark ? canvas.dark() : canvas.light();
        };
        int wrong = 0;
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < w; ++x) {
                const bool edge = x < Frame || y < Frame || x >= w - Frame || y >= h - Frame;
                wrong += edge && picture.at(x, y) != expected(x, y) ? 1 : 0;
            }
        }
        EXPECT_EQ(wrong, 0) << "of the frame of " << w << " x " << h;
    }

    std::unique_ptr<CellWindow> _window;
};

using qipCanvasDeathTest = qipCanvasTest;

void expectCall(const Refreshed& call, int x, int y, int dx, int dy)
{
    EXPECT_EQ(call.x, x);
    EXPECT_EQ(call.y, y);
    EXPECT_EQ(call.dx, dx);
    EXPECT_EQ(call.dy, dy);
    EXPECT_EQ(call.width, static_cast<unsigned>(dx * ColumnPixels));
    EXPECT_EQ(call.height, static_cast<unsigned>(dy * RowPixels));
}

TEST_F(qipCanvasTest, InstallMakesADrawingAreaOfTheViewsSize)
{
    Canvas canvas(12, 8, 100, 1000);
    open(canvas);
    EXPECT_EQ(widgetTree(canvas.baseWidget()), "canvas XmScrolledWindow\n"
                                               "  canvas_hsb XmScrollBar\n"
                                               "  canvas_vsb XmScrollBar\n"
                                               "  canvas XmDrawingArea\n");
    Dimension width = 0;
    Dimension height = 0;
    Dimension marginWidth = 0;
    Dimension marginHeight = 0;
    unsigned char policy = XmRESIZE_ANY;
    XtVaGetValues(canvas.clientArea(), XmNwidth, &width, XmNheight, &height, XmNmarginWidth,
                  &marginWidth, XmNmarginHeight, &marginHeight, XmNresizePolicy, &policy, nullptr);
    EXPECT_EQ(width, 12 * ColumnPixels);
    EXPECT_EQ(height, 8 * RowPixels);
    EXPECT_EQ(marginWidth, 2);
    EXPECT_EQ(marginHeight, 2);
    EXPECT_EQ(policy, XmRESIZE_NONE);
    Widget workWindow = nullptr;
    XtVaGetValues(canvas.baseWidget(), XmNworkWindow, &workWindow, nullptr);
    EXPECT_EQ(workWindow, canvas.clientArea());
    EXPECT_STREQ(canvas.className(), "qipCanvas");
    saveScreenshot(display(), XtWindow(_window->baseWidget()), "canvas");
}

TEST_F(qipCanvasTest, DrawsTheViewIntoAPixmapOfItsOwnSize)
{
    Canvas canvas(12, 8, 100, 1000);
    open(canvas);
    expectCall(canvas.calls.back(), 0, 0, 12, 8);
    EXPECT_NE(canvas.calls.back().drawable, XtWindow(canvas.clientArea()));
    EXPECT_TRUE(canvas.isFilled);
    EXPECT_EQ(canvas.picture(), Pixmap(None));
    canvas.viewPosition(30, 500);
    canvas.render();
    expectCall(canvas.calls.back(), 30, 500, 12, 8);
}

TEST_F(qipCanvasTest, FirstCellStandsInsideTheFrame)
{
    Canvas canvas(12, 8, 100, 1000);
    open(canvas);
    const Pixels picture(display(), XtWindow(canvas.clientArea()));
    EXPECT_EQ(picture.runRight(Frame, 10, Ink), ColumnPixels);
    EXPECT_EQ(picture.runDown(8, Frame, Ink), RowPixels);
    EXPECT_EQ(picture.runRight(Frame + ColumnPixels, 10, Paper),
              12 * ColumnPixels - ColumnPixels - 2 * Frame);
    expectFrame(canvas);
}

TEST_F(qipCanvasTest, SmallCanvasIsPinnedToTheCorner)
{
    Canvas canvas(20, 10, 4, 3);
    open(canvas);
    expectCall(canvas.calls.back(), 0, 0, 20, 3);
    const Pixels picture(display(), XtWindow(canvas.clientArea()));
    EXPECT_EQ(picture.runDown(50, Frame, Paper), 3 * RowPixels);
    EXPECT_EQ(picture.at(50, Frame + 3 * RowPixels), canvas.background());
    expectFrame(canvas);
}

// The right end is not clipped to the canvas, the lower one is: subclasses draw in columns past the
// last one.
TEST_F(qipCanvasTest, SmallCanvasIsCentredOnDemandAndOpenToTheRight)
{
    Canvas canvas(20, 10, 4, 4);
    canvas.center();
    open(canvas);
    expectCall(canvas.calls.back(), 0, 0, 12, 4);
    const Pixels picture(display(), XtWindow(canvas.clientArea()));
    EXPECT_EQ(picture.find(Frame, 70, Ink), 8 * ColumnPixels);
    EXPECT_EQ(picture.runRight(8 * ColumnPixels, 70, Ink), ColumnPixels);
    EXPECT_EQ(picture.runRight(9 * ColumnPixels, 70, Paper), 11 * ColumnPixels - Frame);
    EXPECT_EQ(picture.at(85, 3 * RowPixels - 1), canvas.background());
    EXPECT_EQ(picture.runDown(85, 3 * RowPixels, Ink), RowPixels);
    EXPECT_EQ(picture.runDown(95, 3 * RowPixels, Paper), 4 * RowPixels);
    EXPECT_EQ(picture.at(95, 7 * RowPixels), canvas.background());
    expectFrame(canvas);
}

TEST_F(qipCanvasTest, OnlyTheLastOfSeveralExposesDraws)
{
    Canvas canvas(12, 8, 100, 1000);
    open(canvas);
    canvas.calls.clear();
    expose(canvas, 2);
    expose(canvas, 1);
    EXPECT_EQ(canvas.calls.size(), 0u);
    expose(canvas, 0);
    EXPECT_EQ(canvas.calls.size(), 1u);
    // The whole view, whatever was exposed.
    expectCall(canvas.calls.back(), 0, 0, 12, 8);
}

TEST_F(qipCanvasTest, ExposeRestoresThePicture)
{
    Canvas canvas(12, 8, 100, 1000);
    open(canvas);
    XClearArea(display(), XtWindow(canvas.clientArea()), 0, 0, 0, 0, True);
    settle();
    const Pixels picture(display(), XtWindow(canvas.clientArea()));
    EXPECT_EQ(picture.runRight(Frame, 10, Ink), ColumnPixels);
    expectFrame(canvas);
}

TEST_F(qipCanvasTest, ShrinkingBringsNoExposeButAFreshFrame)
{
    Canvas canvas(12, 8, 100, 1000);
    open(canvas);
    resizeArea(canvas, 83, 101);
    EXPECT_EQ(canvas.view()._dx, 8);
    EXPECT_EQ(canvas.view()._dy, 5);
    expectCall(canvas.calls.back(), 0, 0, 8, 5);
    expectFrame(canvas);
}

TEST_F(qipCanvasTest, GrowingShowsMoreCellsAndFillsTheRest)
{
    Canvas canvas(12, 8, 100, 1000);
    open(canvas);
    resizeArea(canvas, 205, 219);
    EXPECT_EQ(canvas.view()._dx, 20);
    EXPECT_EQ(canvas.view()._dy, 10);
    expectCall(canvas.calls.back(), 0, 0, 20, 10);
    const Pixels picture(display(), XtWindow(canvas.clientArea()));
    EXPECT_EQ(picture.at(100, 210), canvas.background());
    expectFrame(canvas);
}

TEST_F(qipCanvasTest, GrowingAtTheEndPullsTheViewBack)
{
    Canvas canvas(12, 8, 100, 1000);
    open(canvas);
    canvas.viewPosition(88, 992);
    resizeArea(canvas, 200, 200);
    EXPECT_EQ(canvas.view()._x, 80);
    EXPECT_EQ(canvas.view()._y, 990);
}

TEST_F(qipCanvasTest, AreaSmallerThanACellDrawsNothing)
{
    Canvas canvas(12, 8, 100, 1000);
    open(canvas);
    canvas.viewPosition(88, 992);
    resizeArea(canvas, 9, 19);
    EXPECT_EQ(canvas.view()._dx, 0);
    EXPECT_EQ(canvas.view()._dy, 0);
    canvas.calls.clear();
    canvas.viewPosition(100, 1000);
    canvas.render();
    EXPECT_EQ(canvas.calls.size(), 0u);
    resizeArea(canvas, 120, 160);
    expectCall(canvas.calls.back(), 88, 992, 12, 8);
}

TEST_F(qipCanvasTest, CostDoesNotDependOnTheCanvas)
{
    Canvas canvas(12, 8, 2000000000, 2000000000);
    open(canvas);
    canvas.viewPosition(1999999999, 1999999999);
    canvas.calls.clear();
    canvas.render();
    ASSERT_EQ(canvas.calls.size(), 1u);
    expectCall(canvas.calls.back(), 1999999988, 1999999992, 12, 8);
}

TEST_F(qipCanvasTest, NothingIsDrawnWithoutCellsWidgetsOrWindow)
{
    Canvas canvas(12, 8, 100, 1000);
    canvas.render();
    CellWindow window(canvas);
    window.initialize();
    canvas.render();
    EXPECT_EQ(canvas.calls.size(), 0u);
    window.manage();
    ASSERT_TRUE(waitFor([&] { return isViewable(canvas.clientArea()); }));
    settle();
    canvas.calls.clear();
    canvas.render(qipView(0, 0, 0, 8));
    canvas.render(qipView(0, 0, 12, 0));
    canvas.render(qipView(0, 0, -1, -1));
    EXPECT_EQ(canvas.calls.size(), 0u);
    XtDestroyWidget(window.baseWidget());
    canvas.render();
    EXPECT_EQ(canvas.calls.size(), 0u);
}

TEST_F(qipCanvasTest, CopiesBringNoEvents)
{
    Canvas canvas(12, 8, 100, 1000);
    open(canvas);
    canvas.render();
    XSync(display(), False);
    XEvent event;
    EXPECT_FALSE(XCheckTypedEvent(display(), NoExpose, &event));
    EXPECT_FALSE(XCheckTypedEvent(display(), GraphicsExpose, &event));
}

TEST_F(qipCanvasTest, DeletedCanvasIsNotCalledByItsWidgets)
{
    auto canvas = std::make_unique<Canvas>(12, 8, 100, 1000);
    open(*canvas);
    Widget area = canvas->clientArea();
    Widget bar = findWidget(_window->baseWidget(), "canvas_vsb");
    canvas.reset();
    EXPECT_EQ(XtHasCallbacks(area, XmNexposeCallback), XtCallbackHasNone);
    EXPECT_EQ(XtHasCallbacks(area, XmNresizeCallback), XtCallbackHasNone);
    EXPECT_EQ(XtHasCallbacks(bar, XmNvalueChangedCallback), XtCallbackHasNone);
    EXPECT_EQ(XtHasCallbacks(bar, XmNdragCallback), XtCallbackHasNone);
    XInput::click(display(), XtWindow(area), 5, 5, 1, 5);
    settle();
}

TEST_F(qipCanvasTest, WheelScrollsAndDraws)
{
    Canvas canvas(12, 8, 100, 1000);
    open(canvas);
    canvas.calls.clear();
    const Window area = XtWindow(canvas.clientArea());
    XInput::click(display(), area, 30, 30, 2, 5);
    ASSERT_TRUE(waitFor([&] { return canvas.calls.size() == 2; }));
    const int rows = canvas.view()._y;
    EXPECT_GT(rows, 0);
    expectCall(canvas.calls.back(), 0, rows, 12, 8);
    XInput::click(display(), area, 30, 30, 1, 4);
    ASSERT_TRUE(waitFor([&] { return canvas.view()._y == rows / 2; }));
    XInput::click(display(), area, 30, 30, 1, 7);
    ASSERT_TRUE(waitFor([&] { return canvas.view()._x > 0; }));
    XInput::click(display(), area, 30, 30, 1, 6);
    ASSERT_TRUE(waitFor([&] { return canvas.view()._x == 0; }));
    EXPECT_EQ(canvas.view()._y, rows / 2);
}

TEST_F(qipCanvasTest, WheelAtTheEndDrawsNothing)
{
    Canvas canvas(12, 8, 100, 1000);
    open(canvas);
    canvas.calls.clear();
    XInput::click(display(), XtWindow(canvas.clientArea()), 30, 30, 1, 4);
    settle();
    EXPECT_EQ(canvas.calls.size(), 0u);
    EXPECT_EQ(canvas.view()._y, 0);
}

TEST_F(qipCanvasTest, TheFrameTellsWhereKeysGo)
{
    Canvas canvas(12, 8, 100, 1000);
    open(canvas);
    const auto giveKeysTo = [&](Window window) {
        XSetInputFocus(display(), window, RevertToParent, CurrentTime);
        settle();
    };
    const Window noneOfOurs =
        XCreateSimpleWindow(display(), DefaultRootWindow(display()), 900, 900, 5, 5, 0, 0, 0);
    XMapWindow(display(), noneOfOurs);
    giveKeysTo(noneOfOurs);
    Pixel dark = 0;
    XtVaGetValues(canvas.clientArea(), XmNforeground, &dark, nullptr);
    const auto outline = [&] {
        settle();
        const Pixels picture(display(), XtWindow(canvas.clientArea()));
        return picture.count(0, 0, picture.width(), 1, dark) == picture.width() &&
               picture.count(0, picture.height() - 1, picture.width(), 1, dark) == picture.width();
    };
    EXPECT_FALSE(outline());
    giveKeysTo(XtWindow(_window->baseWidget()));
    XInput::click(display(), XtWindow(canvas.clientArea()), 30, 30);
    EXPECT_TRUE(waitFor(outline));
    // Drawn anew, too.
    canvas.render();
    EXPECT_TRUE(outline());
    giveKeysTo(noneOfOurs);
    EXPECT_TRUE(waitFor([&] { return !outline(); }));
}

TEST_F(qipCanvasTest, KeysScrollOnceTheCanvasHasTheKeyboard)
{
    Canvas canvas(12, 8, 100, 1000);
    open(canvas);
    XSetInputFocus(display(), XtWindow(_window->baseWidget()), RevertToParent, CurrentTime);
    XInput::click(display(), XtWindow(canvas.clientArea()), 30, 30);
    settle();
    struct Step
    {
        KeySym key;
        KeySym modifier;
        int x;
        int y;
    };
    const Step steps[] = {
        {XK_Next, 0, 0, 7},  {XK_Next, 0, 0, 14}, {XK_Prior, 0, 0, 7}, {XK_Down, 0, 0, 8},
        {XK_Up, 0, 0, 7},    {XK_Right, 0, 1, 7}, {XK_Right, 0, 2, 7}, {XK_Left, 0, 1, 7},
        {XK_End, 0, 1, 992}, {XK_Home, 0, 1, 0},
    };
    for (const Step& step : steps) {
        XInput::key(display(), step.key, step.modifier);
        EXPECT_TRUE(waitFor([&] {
            return canvas.view()._x == step.x && canvas.view()._y == step.y;
        })) << XKeysymToString(step.key)
            << " leads to " << canvas.view()._x << ", " << canvas.view()._y;
    }
}

TEST_F(qipCanvasTest, ScrollBarDrawsTheNewPlace)
{
    Canvas canvas(12, 8, 100, 1000);
    open(canvas);
    canvas.calls.clear();
    canvas.vertScroll(10);
    EXPECT_EQ(canvas.calls.size(), 0u) << "moving the view alone draws nothing";
    Widget bar = findWidget(_window->baseWidget(), "canvas_vsb");
    Dimension width = 0;
    Dimension height = 0;
    XtVaGetValues(bar, XmNwidth, &width, XmNheight, &height, nullptr);
    XInput::click(display(), XtWindow(bar), width / 2, height - 6);
    ASSERT_TRUE(waitFor([&] { return canvas.calls.size() == 1; }));
    expectCall(canvas.calls.back(), 0, 11, 12, 8);
}

TEST_F(qipCanvasTest, DraggingAScrollBarDrawsBeforeTheButtonIsLetGo)
{
    Canvas canvas(12, 8, 100, 16); // a slider of half the bar
    open(canvas);
    canvas.calls.clear();
    Widget bar = findWidget(_window->baseWidget(), "canvas_vsb");
    Dimension width = 0;
    Dimension height = 0;
    XtVaGetValues(bar, XmNwidth, &width, XmNheight, &height, nullptr);
    XInput::moveTo(display(), XtWindow(bar), width / 2, height / 3);
    XInput::press(display());
    XInput::moveTo(display(), XtWindow(bar), width / 2, height);
    EXPECT_TRUE(waitFor([&] { return canvas.view()._y == 8; }));
    EXPECT_FALSE(canvas.calls.empty());
    const size_t drawn = canvas.calls.size();
    XInput::release(display());
    settle();
    EXPECT_EQ(canvas.view()._y, 8);
    EXPECT_EQ(canvas.calls.size(), drawn) << "the release brings nothing new";
}

} // namespace
