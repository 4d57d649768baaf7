// SPDX-License-Identifier: MIT
#include "zem/Share/find_vorandel_home.h"

#include "tests/support/TempDir.h"
#include "zem/Share/programShare.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

class FindVorandelHomeTest : public testing::Test
{
protected:
    TempDir _files;

    void TearDown() override { unsetenv("VORANDEL"); }
    void makeDirectory(const char* name) const
    {
        ASSERT_TRUE(std::filesystem::create_directories(_files.path(name)));
    }

    std::string _home = "untouched";
};

TEST_F(FindVorandelHomeTest, VariableIsTaken)
{
    setenv("VORANDEL", "/some/where", 1);
    EXPECT_TRUE(find_vorandel_home("zem", _home));
    EXPECT_EQ(_home, "/some/where");
}

TEST_F(FindVorandelHomeTest, EmptyVariableIsSet)
{
    setenv("VORANDEL", "", 1);
    EXPECT_TRUE(find_vorandel_home("zem", _home));
    EXPECT_EQ(_home, "");
}

TEST_F(FindVorandelHomeTest, WithoutVariableTheBuildTreeHasTheHelp)
{
    unsetenv("VORANDEL");
    EXPECT_TRUE(find_vorandel_home("zem", _home));
    EXPECT_EQ(_home, ZEM_BINARY_DIR "/share");
    for (const char* topic : {"overview", "toolbar", "reports", "about"}) {
        EXPECT_TRUE(std::filesystem::exists(_home + "/zem/help/" + topic + ".hlp")) << topic;
    }
}

TEST_F(FindVorandelHomeTest, ApplicationWithoutHelpHasNoHome)
{
    unsetenv("VORANDEL");
    EXPECT_FALSE(find_vorandel_home("nosuchprogram", _home));
    EXPECT_EQ(_home, "untouched");
}

TEST_F(FindVorandelHomeTest, ShareBesideTheProgramsDirectoryIsTakenFirst)
{
    makeDirectory("share/zem/help");
    makeDirectory("usr/share/zem/help");
    makeDirectory("usr/bin");
    EXPECT_EQ(programShare(_files.path("usr/bin/zem").c_str(), "zem/help"),
              _files.path("usr/share"));
    EXPECT_EQ(programShare(_files.path("opt/bin/zem").c_str(), "zem/help"), _files.path("share"));
}

TEST_F(FindVorandelHomeTest, ShareWithoutTheEntryIsPassedBy)
{
    makeDirectory("share/zem/help");
    makeDirectory("build/share/zem");
    EXPECT_EQ(programShare(_files.path("build/bin/zem").c_str(), "zem/help"), _files.path("share"));
    EXPECT_EQ(programShare(_files.path("build/bin/zem").c_str(), "zem/no such entry"), "");
}

TEST_F(FindVorandelHomeTest, NullAndRelativeProgramsHaveNoShare)
{
    EXPECT_EQ(programShare(nullptr, "zem/help"), "");
    EXPECT_EQ(programShare("bin/zem", "zem/help"), "");
    EXPECT_EQ(programShare("", "zem/help"), "");
}

TEST_F(FindVorandelHomeTest, DefaultResourcesAreFoundInTheBuildTree)
{
    EXPECT_EQ(programDefaults("zem"), ZEM_BINARY_DIR "/share/X11/app-defaults/zem");
    EXPECT_EQ(programDefaults("nosuchprogram"), "");
}
