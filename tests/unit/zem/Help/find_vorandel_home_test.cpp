// SPDX-License-Identifier: MIT
#include "zem/Help/find_vorandel_home.h"

#include "tests/unit/zem/Source/SrcTestFiles.h"
#include "zem/Help/programShare.h"

#include <cstdlib>

class FindVorandelHomeTest : public SrcTestFiles
{
protected:
    void TearDown() override
    {
        unsetenv("VORANDEL");
        SrcTestFiles::TearDown();
    }
    void makeDirectory(const char* name) const
    {
        ASSERT_TRUE(std::filesystem::create_directories(path(name)));
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
    EXPECT_EQ(programShare(path("usr/bin/zem").c_str(), "zem/help"), path("usr/share"));
    EXPECT_EQ(programShare(path("opt/bin/zem").c_str(), "zem/help"), path("share"));
}

TEST_F(FindVorandelHomeTest, ShareWithoutTheEntryIsPassedBy)
{
    makeDirectory("share/zem/help");
    makeDirectory("build/share/zem");
    EXPECT_EQ(programShare(path("build/bin/zem").c_str(), "zem/help"), path("share"));
    EXPECT_EQ(programShare(path("build/bin/zem").c_str(), "zem/no such entry"), "");
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
