// SPDX-License-Identifier: MIT
#include "tools/common/SourcePath.h"

#include "tests/support/TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

TEST(SourcePathTest, RelativePathCountsFromItsBase)
{
    EXPECT_EQ(absolutePath("/build", "src/a.cc"), "/build/src/a.cc");
}

TEST(SourcePathTest, StepsAreTakenOut)
{
    EXPECT_EQ(absolutePath("/p/build", "../src/./x/../a.cc"), "/p/src/a.cc");
}

TEST(SourcePathTest, AbsolutePathIgnoresItsBase)
{
    EXPECT_EQ(absolutePath("/build", "/src/a.cc"), "/src/a.cc");
}

TEST(SourcePathTest, RelativeBaseCountsFromTheCurrentFolder)
{
    EXPECT_EQ(absolutePath("", "a.cc"), (std::filesystem::current_path() / "a.cc").string());
    EXPECT_EQ(absolutePath("b", "a.cc"), (std::filesystem::current_path() / "b/a.cc").string());
}

// Most paths have nothing to take out, and are put together without a look at their parts.
TEST(SourcePathTest, EveryPathIsWhatTheLibrarySays)
{
    for (const std::string base :
         {"/", "/b", "/b/c/", "//b", "/b/../c", "/b/.", "/b//c", "/.b/..c"}) {
        for (const std::string path :
             {"a.cc", "d/a.cc", "d//a.cc", "./a.cc", "d/..", "d/.", "..", ".", "", "d/", "/a.cc",
              "/d/../a.cc", "/", "//", ".d/..e/f.", "/d/"}) {
            const std::filesystem::path joined = std::filesystem::path(base) / path;
            EXPECT_EQ(absolutePath(base, path), joined.lexically_normal().string())
                << base << " and " << path;
        }
    }
}

TEST(SourcePathTest, TimeOfAMissingFileIsZero)
{
    const TempDir dir;
    EXPECT_EQ(modificationTime(dir.path("none")), 0u);
    EXPECT_NE(modificationTime(dir.write("one", "")), 0u);
}

} // namespace
