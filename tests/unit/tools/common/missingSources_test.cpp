// SPDX-License-Identifier: MIT
#include "tools/common/missingSources.h"

#include "tests/support/KeptFolder.h"
#include "tests/support/TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

class MissingSourcesTest : public ::testing::Test
{
protected:
    MissingSourcesTest()
    {
        EXPECT_EQ(chdir("/"), 0); // nothing of the test's is below it by chance
    }

    void add(const std::string& path, uint32_t time = 0)
    {
        _model._files.emplace_back();
        _model._files.back()._path = path;
        _model._files.back()._timeModified = time;
    }

    const TempDir _dir;
    const KeptFolder _kept;
    CoverageModel _model;
};

TEST_F(MissingSourcesTest, NothingIsSaidWhenAllAreThere)
{
    add("/ci/a.cc", 1);
    EXPECT_EQ(missingSources(_model, {_dir.path()}), "");
}

TEST_F(MissingSourcesTest, NamesTheFirstOnes)
{
    for (const char* path : {"/ci/a.cc", "/ci/b.cc", "/ci/c.cc"}) {
        add(path);
    }
    EXPECT_EQ(missingSources(_model, {_dir.path()}),
              "3 sources not found: /ci/a.cc, /ci/b.cc, /ci/c.cc; zem shows their numbers without "
              "their text");
    add("/ci/d.cc");
    add("/ci/e.cc", 1);
    EXPECT_EQ(missingSources(_model, {_dir.path()}),
              "4 sources not found: /ci/a.cc, /ci/b.cc, /ci/c.cc, ...; zem shows their numbers "
              "without their text");
}

TEST_F(MissingSourcesTest, SaysUnderWhichFolderMostAre)
{
    _dir.write("proj/src/a.cc", "");
    _dir.write("proj/src/sub/b.cc", "");
    _dir.write("c.cc", ""); // found by its last part alone: chance
    std::filesystem::create_directory(_dir.path("proj/build"));
    add("/none/ci/proj/src/a.cc");
    add("/none/ci/proj/src/sub/b.cc");
    add("/none/ci/proj/src/c.cc");
    EXPECT_EQ(missingSources(_model, {_dir.path("proj/build")}),
              "3 sources not found: /none/ci/proj/src/a.cc, /none/ci/proj/src/sub/b.cc, "
              "/none/ci/proj/src/c.cc; 2 are below " +
                  _dir.path() + "/ instead of /none/ci/ (--map /none/ci=" + _dir.path() +
                  " finds them)");
}

TEST_F(MissingSourcesTest, OptionIsProposedAsAShellReadsIt)
{
    _dir.write("it's new/src/a.cc", "");
    add(_dir.path("old tree/src/a.cc"));
    const std::string told = missingSources(_model, {_dir.path("it's new")});
    const std::string option =
        "(--map '" + _dir.path("old tree") + "=" + _dir.path() + "/it'\\''s new' finds them)";
    EXPECT_NE(told.find(option), std::string::npos) << told;
}

TEST_F(MissingSourcesTest, OptionThatCannotSayItIsNotProposed)
{
    _dir.write("new/src/a.cc", "");
    add(_dir.path("a=b/src/a.cc"));
    const std::string told = missingSources(_model, {_dir.path("new")});
    EXPECT_NE(told.find("; 1 are below " + _dir.path("new") + "/ instead of "), std::string::npos);
    EXPECT_EQ(told.find("--map"), std::string::npos) << told;
}

TEST_F(MissingSourcesTest, SourcesBelowTheRootMoveToo)
{
    _dir.write("gone/a.cc", "");
    add("/gone/a.cc");
    EXPECT_EQ(missingSources(_model, {_dir.path()}),
              "1 sources not found: /gone/a.cc; 1 are below " + _dir.path() +
                  "/ instead of / (--map /=" + _dir.path() + " finds them)");
}

} // namespace
