// SPDX-License-Identifier: MIT
#include "tools/import/isBuildProbe.h"

#include <gtest/gtest.h>

namespace {

TEST(IsBuildProbeTest, NotesOfWhatBuildSystemsTryAreProbes)
{
    for (const char* path :
         {"/b/CMakeFiles/3.25.1/CompilerIdCXX/CMakeCXXCompilerId.gcno",
          "/b/CMakeFiles/CMakeTmp/CMakeFiles/cmTC.dir/test.gcno",
          "/b/CMakeFiles/CMakeScratch/TryCompile-1/a.gcno", "/b/meson-private/tmp1/testfile.gcno",
          "/b/conftest.gcno", "/b/sub/conftest.d/a.gcno", "/b/.conf_check_1a2b/main.gcno"}) {
        EXPECT_TRUE(isBuildProbe(path)) << path;
    }
}

TEST(IsBuildProbeTest, NotesOfTheProgramAreNot)
{
    for (const char* path : {"/b/CMakeFiles/app.dir/a.gcno", "/b/CompilerId/a.gcno",
                             "/b/CMakeTmp/a.gcno", "/b/meson/a.gcno", "/b/myconftest.gcno",
                             "/b/conftests/a.gcno", "/b/conf_check_1/a.gcno"}) {
        EXPECT_FALSE(isBuildProbe(path)) << path;
    }
}

} // namespace
