// SPDX-License-Identifier: MIT
#include "tools/common/InputFile.h"

#include "tests/support/TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

class InputFileTest : public ::testing::Test
{
protected:
    const TempDir _dir;
    InputFile _file;
    std::string _bytes;
};

TEST_F(InputFileTest, GivesItsBytesInPieces)
{
    ASSERT_TRUE(_file.open(_dir.write("a", "one two")));
    EXPECT_EQ(_file.size(), 7u);
    ASSERT_TRUE(_file.append(_bytes, 3));
    EXPECT_EQ(_bytes, "one");
    EXPECT_EQ(_file.position(), 3u);
    ASSERT_TRUE(_file.append(_bytes, 100));
    EXPECT_EQ(_bytes, "one two");
    ASSERT_TRUE(_file.append(_bytes, 100));
    EXPECT_EQ(_bytes, "one two");
    EXPECT_EQ(_file.problem(), "");
}

TEST_F(InputFileTest, GivesItsBytesToAPlaceThatHasRoom)
{
    ASSERT_TRUE(_file.open(_dir.write("a", "one two")));
    char bytes[8] = "-------";
    size_t got = 0;
    ASSERT_TRUE(_file.next(bytes, 3, got));
    EXPECT_EQ(got, 3u);
    EXPECT_STREQ(bytes, "one----");
    ASSERT_TRUE(_file.append(_bytes, 1)); // both go on in one place
    ASSERT_TRUE(_file.next(bytes, 7, got));
    EXPECT_EQ(got, 3u);
    EXPECT_STREQ(bytes, "two----");
    EXPECT_EQ(_file.position(), 7u);
    ASSERT_TRUE(_file.next(bytes, 7, got));
    EXPECT_EQ(got, 0u);
}

TEST_F(InputFileTest, FileThatIsNotThereHasTheSystemsReason)
{
    EXPECT_FALSE(_file.open(_dir.path("none")));
    EXPECT_EQ(_file.problem(), "No such file or directory");
}

TEST_F(InputFileTest, OnlyRegularFilesAreRead)
{
    EXPECT_FALSE(_file.open(_dir.path()));
    EXPECT_EQ(_file.problem(), "Not a regular file");
    ASSERT_EQ(mkfifo(_dir.path("pipe").c_str(), 0600), 0);
    InputFile pipe;
    EXPECT_FALSE(pipe.open(_dir.path("pipe")));
}

TEST_F(InputFileTest, FileThatBecomesShorterIsAnError)
{
    const std::string path = _dir.write("a", "one two");
    ASSERT_TRUE(_file.openToWatch(path));
    std::filesystem::resize_file(path, 2);
    EXPECT_FALSE(_file.append(_bytes, 7));
    EXPECT_EQ(_bytes, "on");
    EXPECT_EQ(_file.problem(), "It became shorter while it was read");
    EXPECT_FALSE(_file.isUnchanged());
}

TEST_F(InputFileTest, FileThatIsWrittenMeanwhileIsNoticed)
{
    const std::string path = _dir.write("a", "one two");
    ASSERT_TRUE(_file.openToWatch(path));
    EXPECT_EQ(_file.size(), 7u);
    ASSERT_TRUE(_file.append(_bytes, 7));
    EXPECT_TRUE(_file.isUnchanged());
    _dir.write("a", "ONE TWO");
    EXPECT_FALSE(_file.isUnchanged());
    EXPECT_EQ(_file.problem(), "It was written to while it was read");
}

} // namespace
