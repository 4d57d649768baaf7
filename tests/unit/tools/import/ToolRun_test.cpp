// SPDX-License-Identifier: MIT
#include "tools/import/ToolRun.h"

#include "tests/support/KeptFolder.h"
#include "tests/support/TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

class Output : public ToolRun::Receiver
{
public:
    bool receive(const char* bytes, size_t size) override
    {
        _text.append(bytes, size);
        return true;
    }

    std::string _text;
};

// Who names a program means it from where they are, wherever it has to run.
TEST(ToolRunTest, ProgramIsFoundFromTheCurrentFolder)
{
    const TempDir dir;
    const TempDir other;
    dir.write("bin/tool", "#!/bin/sh\npwd -P\n");
    std::filesystem::permissions(dir.path("bin/tool"), std::filesystem::perms::owner_all);
    const std::string folder = std::filesystem::canonical(other.path());
    const KeptFolder kept;
    ASSERT_EQ(chdir(dir.path().c_str()), 0);
    for (const std::string& program : {std::string("bin/tool"), std::string("./bin/tool"),
                                       std::string("bin/../bin/tool"), dir.path("bin/tool")}) {
        Output output;
        EXPECT_EQ(ToolRun().run({program}, output, folder), ToolRun::Ok) << program;
        EXPECT_EQ(output._text, folder + "\n");
    }
    Output output;
    EXPECT_EQ(ToolRun().run({"pwd", "-P"}, output, folder), ToolRun::Ok);
    EXPECT_EQ(output._text, folder + "\n");
    EXPECT_EQ(ToolRun().run({"tool"}, output, dir.path("bin")), ToolRun::NotFound);
}

} // namespace
