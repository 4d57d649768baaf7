#include "tests/support/gtest_x.h"

#include "qip/Drawing/setWindowIcon.h"
#include "tests/support/XtFixture.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>

namespace {

const char* const Picture[] = {"3 2 2 1", "  s background c None", "r c #ff8001", "r  ", " rr"};
const char* const NoPicture[] = {"3 2"};

class setWindowIconTest : public XtFixture
{
protected:
    void SetUp() override
    {
        XtFixture::SetUp();
        if (!HasFatalFailure()) {
            XtRealizeWidget(appShell());
        }
    }

    // What desktops read; empty without an icon.
    std::vector<unsigned long> icon()
    {
        Atom type = None;
        int format = 0;
        unsigned long nItems = 0;
        unsigned long nLeft = 0;
        unsigned char* data = nullptr;
        XGetWindowProperty(display(), XtWindow(appShell()),
                           XInternAtom(display(), "_NET_WM_ICON", False), 0, 100, False,
                           XA_CARDINAL, &type, &format, &nItems, &nLeft, &data);
        const auto* words = reinterpret_cast<const unsigned long*>(data);
        std::vector<unsigned long> result(words, words + nItems);
        for (unsigned long& word : result) {
            word &= 0xffffffffUL;
        }
        if (data != nullptr) {
            XFree(data);
        }
        return result;
    }
};

TEST_F(setWindowIconTest, DesktopsGetItInTwoSizes)
{
    setWindowIcon(appShell(), Picture);
    const unsigned long red = 0xffff8001UL;
    const std::vector<unsigned long> expected = {
        3, 2, red, 0,   0,   0,   red, red,                          // as it is
        6, 4, red, red, 0,   0,   0,   0,   red, red, 0,   0,  0, 0, // doubled
        0, 0, red, red, red, red, 0,   0,   red, red, red, red};
    EXPECT_EQ(icon(), expected);
}

TEST_F(setWindowIconTest, OlderWindowManagersGetAPixmapWithItsMask)
{
    setWindowIcon(appShell(), Picture);
    XWMHints* hints = XGetWMHints(display(), XtWindow(appShell()));
    ASSERT_NE(hints, nullptr);
    EXPECT_NE(hints->flags & IconPixmapHint, 0);
    EXPECT_NE(hints->flags & IconMaskHint, 0);
    XFree(hints);
}

TEST_F(setWindowIconTest, WhatIsNoPictureLeavesTheWindowWithout)
{
    setWindowIcon(appShell(), NoPicture);
    EXPECT_TRUE(icon().empty());
}

} // namespace
