// With the program's own start-up: what is there before main().
#include "tests/support/gtest_x.h"

#include "qip/Components/qipQuitCommand.h"
#include "zem/App/ZEMApp.h"
#include "zem/Reports/RptArea.h"
#include "zem/Status/ZEMStsBar.h"
#include "zem/Window/ExitBtn.h"

namespace {

TEST(zemStartupTest, TheProgramsObjectsAreThereWithTheirNames)
{
    ASSERT_NE(zemApp, nullptr);
    EXPECT_EQ(theApplication, zemApp);
    EXPECT_STREQ(zemApp->name(), "zem");
    EXPECT_STREQ(zemApp->className(), "ZEMApp");
    ASSERT_NE(theReportContainer, nullptr);
    EXPECT_STREQ(theReportContainer->name(), "rptArea");
    ASSERT_NE(theStatusBar, nullptr);
    EXPECT_STREQ(theStatusBar->name(), "statusBar");
    ASSERT_NE(theQuitCommand, nullptr);
    EXPECT_STREQ(theQuitCommand->name(), "anotherQuitCommand");
    EXPECT_TRUE(theQuitCommand->isEnabled());
}

} // namespace
