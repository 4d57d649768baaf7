#include "tests/support/gtest_x.h"

#include "qip/Drawing/makeColorPixel.h"
#include "tests/support/XtFixture.h"

namespace {

using makeColorPixelTest = XtFixture;

TEST_F(makeColorPixelTest, KnownColoursGiveTheirPixel)
{
    EXPECT_EQ(makeColorPixel(appShell(), "red", 0), Pixel(0xff0000));
    EXPECT_EQ(makeColorPixel(appShell(), "#102030", 1), Pixel(0x102030));
}

TEST_F(makeColorPixelTest, ColoursThatTheProgramDrawsInAreKnown)
{
    for (const char* name : {"SeaGreen4", "OrangeRed2", "LightSkyBlue3", "Red3", "Gray80"}) {
        makeColorPixel(appShell(), name, 0);
    }
}

TEST_F(makeColorPixelTest, FailureWarnsAndFallsBackToBlackOrWhite)
{
    expectWarnings();
    const int screen = DefaultScreen(display());
    EXPECT_EQ(makeColorPixel(appShell(), "no such colour", 1), BlackPixel(display(), screen));
    EXPECT_EQ(makeColorPixel(appShell(), "no such colour", 0), WhitePixel(display(), screen));
    EXPECT_EQ(makeColorPixel(appShell(), "", 0), WhitePixel(display(), screen));
    EXPECT_THAT(warnings(),
                ::testing::ElementsAre("Cannot allocate colormap entry for \"no such colour\"",
                                       "Cannot allocate colormap entry for \"no such colour\"",
                                       "Cannot allocate colormap entry for \"\""));
}

TEST_F(makeColorPixelTest, WarningBearsALongNameOfAnyCharacters)
{
    expectWarnings();
    const std::string name = "%s%n" + std::string(5000, 'x');
    makeColorPixel(appShell(), name.c_str(), 0);
    EXPECT_THAT(warnings(),
                ::testing::ElementsAre("Cannot allocate colormap entry for \"" + name + "\""));
}

} // namespace
